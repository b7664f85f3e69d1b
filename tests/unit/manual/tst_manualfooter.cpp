#include "manual/footer.h"

#include <QtTest>

Q_DECLARE_METATYPE(std::string)

class TestManualFooter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ParagraphsBeforeTheFirstTitleDescribe();
    void Titles_data();
    void Titles();
    void SectionGoesOnUntilTheNext();
    void NothingIsNoSection();
};

void TestManualFooter::ParagraphsBeforeTheFirstTitleDescribe()
{
    const auto sections = Manual::SectionsOf("\nConnects, and shows\nit_all.\n\nMore: a *star*.\n");
    QCOMPARE(sections.size(), size_t(1));
    QCOMPARE(sections.front().title, std::string("DESCRIPTION"));
    QCOMPARE(sections.front().text, std::string("Connects, and shows it\\_all.\n\nMore: a \\*star\\*.\n"));
}

void TestManualFooter::Titles_data()
{
    QTest::addColumn<std::string>("footer");
    QTest::addColumn<std::string>("title");
    QTest::addColumn<std::string>("text");
    const auto row = [](const char* name, std::string footer, std::string title, std::string text) {
        QTest::newRow(name) << std::move(footer) << std::move(title) << std::move(text);
    };
    row("prose", "Exit status: 0 shown; 1 bad\nusage.\n", "EXIT STATUS", "0 shown; 1 bad usage.\n");
    row("list", "Exit status:\n  0  shown\n  6  the stop\n     is not\n", "EXIT STATUS",
        "```\n0  shown\n6  the stop\n   is not\n```\n");
    row("fields", "JSON fields: name, number.\n", "JSON", "Fields: name, number.\n");
    row("objects", "JSON: an object per event.\n", "JSON", "An object per event.\n");
    row("example", "Example, without one:\n  vesmar info \\\n", "EXAMPLES",
        "Without one:\n\n```\nvesmar info \\\\\n```\n");
    row("example on two lines", "Example, unplugged\nand back:\n  vesmar info\n", "EXAMPLES",
        "Unplugged and back:\n\n```\nvesmar info\n```\n");
    row("examples", "Examples:\n  a\n  b\n", "EXAMPLES", "```\na\nb\n```\n");
    row("two lists", "Commands (of it):\n  a: b\nElse:\n  c\n", "COMMANDS",
        "(of it):\n\n```\na: b\n```\n\nElse:\n\n```\nc\n```\n");
}

void TestManualFooter::Titles()
{
    QFETCH(const std::string, footer);
    QFETCH(const std::string, title);
    QFETCH(const std::string, text);
    const auto sections = Manual::SectionsOf(footer);
    QCOMPARE(sections.size(), size_t(1));
    QCOMPARE(sections.front().title, title);
    QCOMPARE(sections.front().text, text);
}

void TestManualFooter::SectionGoesOnUntilTheNext()
{
    const auto sections = Manual::SectionsOf("Shows.\n\nJSON: a.\n\nMore of it.\n\nExit status: 0.\n");
    QCOMPARE(sections.size(), size_t(3));
    QCOMPARE(sections.at(0).text, std::string("Shows.\n"));
    QCOMPARE(sections.at(1).text, std::string("A.\n\nMore of it.\n"));
    QCOMPARE(sections.at(2).title, std::string("EXIT STATUS"));
}

void TestManualFooter::NothingIsNoSection()
{
    QVERIFY(Manual::SectionsOf("").empty());
    QVERIFY(Manual::SectionsOf("\n\n").empty());
}

QTEST_GUILESS_MAIN(TestManualFooter)
#include "tst_manualfooter.moc"
