#include <CLI/CLI.hpp>

#include <QProcess>
#include <QtTest>

#include <memory>

#include "manual/footer.h"
#include "manual/manpage.h"

Q_DECLARE_METATYPE(std::string)

namespace
{

class Formatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override
    {
        return "Usage: tool VERB [OPTIONS]\n       tool VERB --help\n";
    }
};

/// A program with everything that a page can show.
class Tool
{
public:
    Tool()
    {
        app.formatter(std::make_shared<Formatter>());
        app.set_version_flag("--version", "tool 1.2");
        app.footer("\nExit status: 0 done.\n");
        CLI::App* dig = app.add_subcommand("dig", "Dig a hole_");
        dig->footer("Digs on_and on.\n\nExample:\n  tool dig *\n");
        dig->add_option("PLACE", text, "Where")->required()->type_name("");
        dig->add_option("-d,--depth", text, "How deep*")->type_name("METRES");
        dig->add_option("--secret", text, "Not told")->group("");
        dig->add_subcommand("deeper", "Go on")->add_flag("--fast", isFast, "At once");
        dig->add_subcommand("stop", "Stop");
        app.add_subcommand("hidden", "Not told")->group("");
    }

    std::string text;
    bool isFast = false;
    CLI::App app{"Digs and fills.", "tool"};
};

QByteArray Rendered(const std::string& source)
{
    QProcess scdoc;
    scdoc.start(QStringLiteral(SCDOC_PROGRAM), QStringList());
    scdoc.write(QByteArray::fromStdString(source));
    scdoc.closeWriteChannel();
    constexpr int Patience = 60000;
    if (!scdoc.waitForFinished(Patience) || scdoc.exitCode() != 0) {
        return "failed: " + scdoc.readAllStandardError();
    }
    return scdoc.readAllStandardOutput();
}

constexpr char DigPage[] = R"(tool-dig(1) "tool 1.2"

# NAME

tool-dig - Dig a hole\_

# SYNOPSIS

```
tool VERB [OPTIONS]
tool VERB --help
```

# DESCRIPTION

Digs on\_and on.

# OPTIONS

*-h*, *--help*
	Print this help message and exit

_PLACE_
	Where; required

*-d*, *--depth* _METRES_
	How deep\*

# SUBCOMMANDS

## deeper

Go on

*--fast*
	At once

## stop

Stop

# EXAMPLES

```
tool dig *
```

# SEE ALSO

*tool*(1)
)";

constexpr char ToolPage[] = R"(tool(1) "tool 1.2"

# NAME

tool - Digs and fills

# SYNOPSIS

```
tool VERB [OPTIONS]
tool VERB --help
```

# OPTIONS

*-h*, *--help*
	Print this help message and exit

*--version*
	Display program version information and exit

# SUBCOMMANDS

*tool-dig*(1)
	Dig a hole\_

# EXIT STATUS

0 done.

# SEE ALSO

*other*(1)
)";

} // namespace

class TestManualPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PageOfACommand();
    void PageOfAProgram();
    void WholePageHasTheCommands();
    void ScdocShowsTextsAsTheyStand_data();
    void ScdocShowsTextsAsTheyStand();
    void ParagraphsBeforeTheFirstTitleDescribe();
    void Titles_data();
    void Titles();
    void SectionGoesOnUntilTheNext();
    void NothingIsNoSection();
};

void TestManualPages::PageOfACommand()
{
    const Tool tool;
    const auto pages = Manual::PagePerCommand(tool.app, "other");
    QCOMPARE(pages.size(), size_t(2));
    QCOMPARE(pages.at(1).name, std::string("tool-dig"));
    QCOMPARE(pages.at(1).text.c_str(), DigPage);
}

void TestManualPages::PageOfAProgram()
{
    const Tool tool;
    const auto pages = Manual::PagePerCommand(tool.app, "other");
    QCOMPARE(pages.front().name, std::string("tool"));
    QCOMPARE(pages.front().text.c_str(), ToolPage);
}

void TestManualPages::WholePageHasTheCommands()
{
    const Tool tool;
    const Manual::ManPage page = Manual::WholePage(tool.app, "other");
    const QByteArray text = QByteArray::fromStdString(page.text);
    QVERIFY2(text.contains("# SUBCOMMANDS\n\n## dig\n\nDig a hole\\_\n\n_PLACE_\n\tWhere; required\n"),
             text.constData());
    QVERIFY2(!text.contains("hidden"), text.constData());
}

void TestManualPages::ScdocShowsTextsAsTheyStand_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("roff");
    const auto row = [](const QByteArray& text, const QByteArray& roff) {
        QTest::newRow(text.constData()) << text << roff;
    };
    const auto same = [&row](const QByteArray& text) { row(text, text); };
    same("_start a_b end_");
    same("*star");
    same("a++");
    same("# no heading");
    same("- no list");
    same("| no table");
    same("[ no table");
    same("``` no literal");
    same("; no comment");
    row("Ctrl-\\ and", "Ctrl-\\\\ and");
    row("'quoted'", "\\&'\\&quoted'\\&");
}

void TestManualPages::ScdocShowsTextsAsTheyStand()
{
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, roff);
    const std::string plain = text.toStdString();
    CLI::App app(plain, "tool");
    app.set_version_flag("--version", "tool 1.2");
    app.footer(plain + "\n\nExample:\n  " + plain + "\n");
    app.add_flag("--flag", plain);
    const QByteArray page = Rendered(Manual::WholePage(app, "other").text);
    QVERIFY2(page.contains("\n.P\n" + roff + "\n.P\n"), page.constData());
    QVERIFY2(page.contains(".RS 4\n" + roff + "\n.P\n"), page.constData());
}

void TestManualPages::ParagraphsBeforeTheFirstTitleDescribe()
{
    const auto sections = Manual::SectionsOf("\nConnects, and shows\nit_all.\n\nMore: a *star*.\n");
    QCOMPARE(sections.size(), size_t(1));
    QCOMPARE(sections.front().title, std::string("DESCRIPTION"));
    QCOMPARE(sections.front().text, std::string("Connects, and shows it\\_all.\n\nMore: a \\*star\\*.\n"));
}

void TestManualPages::Titles_data()
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

void TestManualPages::Titles()
{
    QFETCH(const std::string, footer);
    QFETCH(const std::string, title);
    QFETCH(const std::string, text);
    const auto sections = Manual::SectionsOf(footer);
    QCOMPARE(sections.size(), size_t(1));
    QCOMPARE(sections.front().title, title);
    QCOMPARE(sections.front().text, text);
}

void TestManualPages::SectionGoesOnUntilTheNext()
{
    const auto sections = Manual::SectionsOf("Shows.\n\nJSON: a.\n\nMore of it.\n\nExit status: 0.\n");
    QCOMPARE(sections.size(), size_t(3));
    QCOMPARE(sections.at(0).text, std::string("Shows.\n"));
    QCOMPARE(sections.at(1).text, std::string("A.\n\nMore of it.\n"));
    QCOMPARE(sections.at(2).title, std::string("EXIT STATUS"));
}

void TestManualPages::NothingIsNoSection()
{
    QVERIFY(Manual::SectionsOf("").empty());
    QVERIFY(Manual::SectionsOf("\n\n").empty());
}

QTEST_GUILESS_MAIN(TestManualPages)
#include "tst_manualpages.moc"
