#include "manual/completion.h"

#include <CLI/CLI.hpp>

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "unit/manual/shells.h"

namespace
{

class Formatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override
    {
        return "Usage: my-tool dig PLACE\n       my-tool run [OPTIONS] -- PROGRAM [ARG...]\n";
    }
};

/// A program with everything that can be completed.
class Tool
{
public:
    Tool()
    {
        app.formatter(std::make_shared<Formatter>());
        app.add_option("-l,--log", text, "")->type_name("FILE");
        app.add_option("--count", text, "")->type_name("N");
        CLI::App* dig = app.add_subcommand("dig");
        dig->add_option("place", text, "")->type_name("PLACE|anywhere");
        dig->add_option("--how", text, "")->type_name("by-hand|by-2");
        dig->add_option("--secret", text, "")->group("");
        dig->add_subcommand("deeper")->fallthrough()->add_flag("--fast", isFast);
        app.add_subcommand("run")->fallthrough();
        app.add_subcommand("hidden")->group("");
    }

    std::string text;
    bool isFast = false;
    CLI::App app{"", "my-tool"};
};

const Manual::Placeholders Placeholders{{"FILE"}, {{"PLACE", {"garden", "garage"}}}};

constexpr char Beginning[] =
    R"(# Completes the command line of my-tool in bash; made from what its help tells.

# What can be typed at a place. Status 1 where there is no such place.
_my_tool_place()
{
    offered= are_files_wanted= is_program_wanted=
    case "$1" in
    'my-tool --count' | \
    'my-tool run --count')
        offered=''
        ;;
    'my-tool run')
        offered='-- --count --help --log -h -l'
        ;;
    'my-tool')
        offered='--count --help --log -h -l dig run'
        ;;
    'my-tool dig deeper')
        offered='--fast --help --how -h'
        ;;
    'my-tool dig')
        offered='--help --how -h anywhere deeper garage garden'
        ;;
    'my-tool dig --how' | \
    'my-tool dig deeper --how')
        offered='by-2 by-hand'
        ;;
    'my-tool --log' | \
    'my-tool -l' | \
    'my-tool run --log' | \
    'my-tool run -l')
        offered=''
        are_files_wanted=yes
        ;;
    'my-tool run --')
        offered=''
        is_program_wanted=yes
        ;;
    *)
        return 1
        ;;
    esac
}
)";

constexpr char OtherScript[] = R"(_other() { COMPREPLY=("$1 $2 $3 $COMP_CWORD ${COMP_WORDS[*]}"); }
complete -F _other other
)";

} // namespace

class TestManualCompletion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void Places();
    void Offers_data();
    void Offers();
    void OffersTheSameInOtherShells_data();
    void OffersTheSameInOtherShells();

private:
    void Write(const char* name, const QByteArray& text) const;

    QTemporaryDir _folder;
    std::string _script;
};

void TestManualCompletion::initTestCase()
{
    QVERIFY(_folder.isValid());
    const Tool tool;
    _script = Manual::BashCompletion(tool.app, Placeholders);
    Write("my-tool", QByteArray::fromStdString(_script));
    Write("zsh", QByteArray::fromStdString(Manual::ZshCompletion(tool.app, Placeholders)));
    Write("fish", QByteArray::fromStdString(Manual::FishCompletion(tool.app, Placeholders)));
    Write("other", OtherScript);
    Write("a file", "");
}

void TestManualCompletion::Write(const char* name, const QByteArray& text) const
{
    QFile file(_folder.filePath(QString::fromLatin1(name)));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

void TestManualCompletion::Places()
{
    QCOMPARE(_script.substr(0, sizeof(Beginning) - 1).c_str(), Beginning);
}

void TestManualCompletion::Offers_data()
{
    QTest::addColumn<QStringList>("offered");
    const auto row = [](const char* line, const char* offered) {
        QTest::newRow(line) << QString::fromLatin1(offered).split(QLatin1Char(','), Qt::SkipEmptyParts);
    };
    row("my-tool d", "dig");
    row("my-tool h", "");
    row("my-tool dig gar", "garage,garden");
    row("my-tool dig a", "anywhere");
    row("my-tool dig --how ''", "by-2,by-hand");
    row("my-tool dig --how = by-h", "by-hand");
    row("my-tool dig --how =", "by-2,by-hand");
    row("my-tool dig --how dig --", "--help,--how");
    row("my-tool dig deeper --", "--fast,--help,--how");
    row("my-tool --count dig --", "--count,--help,--log");
    row("my-tool --count 3 dig de", "deeper");
    row("my-tool --count ''", "");
    row("my-tool -l a", "a file");
    row("my-tool run --log o", "other");
    row("my-tool run -- other dig x", "other x dig 2 other dig x");
    row("my-tool run -- /bin/other x", "other x /bin/other 1 /bin/other x");
    row("my-tool run --count 1 -- true a", "a file");
    row("my-tool run -- my-tool di", "dig");
    row("my-tool run -- bas", "bash");
    row("my-tool -- d", "dig");
}

void TestManualCompletion::Offers()
{
    QFETCH(QStringList, offered);
    const QString script = _folder.filePath(QStringLiteral("my-tool"));
    QStringList completed = Completed(script, QTest::currentDataTag(), _folder.path());
    if (offered == QStringList{QStringLiteral("bash")}) { // and whatever else there is
        completed = completed.filter(QRegularExpression(QStringLiteral("^bash$")));
        completed.removeDuplicates();
    }
    QCOMPARE(completed, offered);
}

void TestManualCompletion::OffersTheSameInOtherShells_data()
{
    QTest::addColumn<QStringList>("offered");
    const auto row = [](const char* line, const char* offered) {
        QTest::newRow(line) << QString::fromLatin1(offered).split(QLatin1Char(','), Qt::SkipEmptyParts);
    };
    row("my-tool d", "dig");
    row("my-tool dig gar", "garage,garden");
    row("my-tool dig --how ", "by-2,by-hand");
    row("my-tool dig --how=by-h", "by-hand");
    row("my-tool dig --how dig --", "--help,--how");
    row("my-tool dig deeper --", "--fast,--help,--how");
    row("my-tool --count 3 dig de", "deeper");
    row("my-tool --count ", "");
    row("my-tool -l a", "a file");
    row("my-tool -- d", "dig");
}

void TestManualCompletion::OffersTheSameInOtherShells()
{
    QFETCH(const QStringList, offered);
    const QString line = QString::fromLatin1(QTest::currentDataTag());
    QStringList inZsh =
        CompletedInZsh(_folder.filePath(QStringLiteral("zsh")), line.split(QLatin1Char(' ')), _folder.path());
    QStringList inFish = CompletedInFish(_folder.filePath(QStringLiteral("fish")), line, _folder.path());
    for (QString& word : inFish) {
        word.remove(QStringLiteral("--how="));
    }
    QCOMPARE(inZsh, offered);
    QCOMPARE(inFish, offered);
}

QTEST_GUILESS_MAIN(TestManualCompletion)
#include "tst_manualcompletion.moc"
