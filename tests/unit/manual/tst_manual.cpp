#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

#include "unit/manual/shells.h"

namespace
{

QByteArray HelpOf(const char* program, const QStringList& command)
{
    QProcess process;
    process.start(QString::fromLocal8Bit(program), command + QStringList{QStringLiteral("--help")});
    constexpr int Patience = 60000;
    if (!process.waitForFinished(Patience) || process.exitCode() != 0) {
        return {};
    }
    return process.readAllStandardOutput();
}

/// The words that begin the lines of a list in the help.
QStringList Found(const QByteArray& text, const char* pattern)
{
    const QRegularExpression form(QString::fromLatin1(pattern), QRegularExpression::MultilineOption);
    QStringList found;
    for (auto matches = form.globalMatch(QString::fromUtf8(text)); matches.hasNext();) {
        found.append(matches.next().captured(1));
    }
    return found;
}

QStringList OptionsIn(const QByteArray& help)
{
    return Found(help, "^  (?:-h,)?(--[a-z-]+)");
}

QStringList CommandsIn(const QByteArray& help)
{
    const int list = help.indexOf("\nSubcommands:\n");
    return list < 0 ? QStringList()
                    : Found(help.mid(list, help.indexOf("\n\n", list) - list), "^  ([a-z-]+)");
}

QString ManualFile(const QString& name)
{
    return QStringLiteral(MANUAL_FOLDER) + QLatin1Char('/') + name;
}

QByteArray Content(const QString& name)
{
    QFile file(ManualFile(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString VesmarScript()
{
    return ManualFile(QStringLiteral("completions/bash/vesmar"));
}

QString SimulatorScript()
{
    return ManualFile(QStringLiteral("completions/bash/vesmar-simulator"));
}

/// The page has every option of the help. The completion offers every option and every command.
void CompareWithHelp(const QByteArray& help, const QByteArray& page, const QString& script,
                     const QStringList& place)
{
    const QStringList options = OptionsIn(help);
    QVERIFY(!options.isEmpty());
    const QStringList offered = Completed(script, place + QStringList{QString()});
    for (const QString& option : options) {
        QVERIFY2(page.contains("*" + option.toUtf8() + "*"), qPrintable(option));
        QVERIFY2(offered.contains(option), qPrintable(option));
    }
    for (const QString& command : CommandsIn(help)) {
        QVERIFY2(offered.contains(command), qPrintable(command));
    }
}

} // namespace

class TestManual : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryVerbHasAPage();
    void EveryVerbAndOption_data();
    void EveryVerbAndOption();
    void SimulatorsCommandsAndOptions_data();
    void SimulatorsCommandsAndOptions();
    void EveryPageIsMade();
    void Offers_data();
    void Offers();
    void OffersInOtherShells_data();
    void OffersInOtherShells();
    void OffersFiles_data();
    void OffersFiles();
};

void TestManual::EveryVerbHasAPage()
{
    const QByteArray page = Content(QStringLiteral("sources/vesmar.1.scd"));
    const QStringList verbs = CommandsIn(HelpOf(VESMAR_PROGRAM, {}));
    QVERIFY(verbs.contains(QStringLiteral("measure")));
    for (const QString& verb : verbs) {
        QVERIFY2(page.contains("*vesmar-" + verb.toUtf8() + "*(1)\n"), qPrintable(verb));
    }
    QStringList files{QStringLiteral("vesmar.1.scd"), QStringLiteral("vesmar-simulator.1.scd"),
                      QStringLiteral("vesmar-panel.1.scd")};
    for (const QString& verb : verbs) {
        files.append(QStringLiteral("vesmar-%1.1.scd").arg(verb));
    }
    files.sort();
    QCOMPARE(QDir(ManualFile(QStringLiteral("sources"))).entryList(QDir::Files, QDir::Name), files);
}

void TestManual::EveryVerbAndOption_data()
{
    QTest::addColumn<QStringList>("command");
    for (const QString& verb : CommandsIn(HelpOf(VESMAR_PROGRAM, {}))) {
        QTest::newRow(qPrintable(verb)) << QStringList{verb};
        for (const QString& nested : CommandsIn(HelpOf(VESMAR_PROGRAM, {verb}))) {
            QTest::newRow(qPrintable(verb + QLatin1Char(' ') + nested)) << QStringList{verb, nested};
        }
    }
}

void TestManual::EveryVerbAndOption()
{
    QFETCH(const QStringList, command);
    const QByteArray page = Content(QStringLiteral("sources/vesmar-%1.1.scd").arg(command.first()));
    if (command.size() > 1) {
        QVERIFY(page.contains("\n## " + command.last().toUtf8() + "\n"));
    }
    CompareWithHelp(HelpOf(VESMAR_PROGRAM, command), page, VesmarScript(),
                    QStringList{QStringLiteral("vesmar")} + command);
}

void TestManual::SimulatorsCommandsAndOptions_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("none") << QStringList();
    for (const QString& command : CommandsIn(HelpOf(SIMULATOR_PROGRAM, {}))) {
        QTest::newRow(qPrintable(command)) << QStringList{command};
    }
}

void TestManual::SimulatorsCommandsAndOptions()
{
    QFETCH(const QStringList, command);
    const QByteArray page = Content(QStringLiteral("sources/vesmar-simulator.1.scd"));
    for (const QString& name : command) {
        QVERIFY(page.contains("\n## " + name.toUtf8() + "\n"));
    }
    CompareWithHelp(HelpOf(SIMULATOR_PROGRAM, command), page, SimulatorScript(),
                    QStringList{QStringLiteral("vesmar-simulator")} + command);
}

void TestManual::EveryPageIsMade()
{
    const QStringList sources =
        QDir(ManualFile(QStringLiteral("sources"))).entryList(QDir::Files, QDir::Name);
    const QString date = QDateTime::fromSecsSinceEpoch(MANUAL_DATE, Qt::UTC).date().toString(Qt::ISODate);
    QVERIFY(!sources.isEmpty());
    for (const QString& source : sources) {
        const QByteArray page =
            Content(QStringLiteral("pages/") + source.left(source.lastIndexOf(QLatin1Char('.'))));
        for (const char* section : {"NAME", "SYNOPSIS", "OPTIONS", "SEE ALSO"}) {
            QVERIFY2(page.contains(QByteArray("\n.SH ") + section + "\n"), qPrintable(source));
        }
        QVERIFY2(page.contains('"' + date.toUtf8() + '"'), page.constData());
    }
}

void TestManual::Offers_data()
{
    QTest::addColumn<QString>("offered");
    const auto row = [](const char* line, const char* offered) {
        QTest::newRow(line) << QString::fromLatin1(offered);
    };
    row("vesmar me", "measure");
    row("vesmar measure r", "rcd rcd-iec riso rln rpe");
    row("vesmar measure rcd --mode ''", "ia-ta-1 ia-ta-2 ub-re");
    row("vesmar measure rcd --mode = u", "ub-re");
    row("vesmar measure riso --json --mode ''", "1 2 4");
    row("vesmar measure rpe --time u", "unlimited");
    row("vesmar clock s", "set");
    row("vesmar clock set n", "now");
    row("vesmar --js", "--json");
    row("vesmar calibration s", "set");
    row("vesmar calibration set --c", "--confirm-timeout");
    row("vesmar explain 3", "3 300 301 302 303 304 398");
    row("vesmar explain Comm", "CommunicationRecovery");
    row("vesmar info --timeout ''", "");
    row("vesmar-simulator ru", "run");
    row("vesmar-simulator --scenario re",
        "refuse refuses-confirmation refuses-initialize refuses-prepare refuses-sector refuses-update-mode");
    row("vesmar-simulator run --scenario bad", "bad-crc");
    row("vesmar-simulator run --scenario none -- vesmar measure rcd --mode u", "ub-re");
}

void TestManual::Offers()
{
    QFETCH(const QString, offered);
    const QByteArray line = QTest::currentDataTag();
    const QString script = line.startsWith("vesmar-simulator ") ? SimulatorScript() : VesmarScript();
    QCOMPARE(Completed(script, line.constData()).join(QLatin1Char(' ')), offered);
}

void TestManual::OffersInOtherShells_data()
{
    QTest::addColumn<QString>("offered");
    QTest::newRow("vesmar clock set n") << QStringLiteral("now");
    QTest::newRow("vesmar measure rcd --mode ") << QStringLiteral("ia-ta-1 ia-ta-2 ub-re");
    QTest::newRow("vesmar-simulator ru") << QStringLiteral("run");
}

void TestManual::OffersInOtherShells()
{
    QFETCH(const QString, offered);
    const QString line = QString::fromLatin1(QTest::currentDataTag());
    const QString program = line.section(QLatin1Char(' '), 0, 0);
    const QString inZsh = ManualFile(QStringLiteral("completions/zsh/_") + program);
    const QString inFish = ManualFile(QStringLiteral("completions/fish/%1.fish").arg(program));
    QCOMPARE(CompletedInZsh(inZsh, line.split(QLatin1Char(' '))).join(QLatin1Char(' ')), offered);
    QCOMPARE(CompletedInFish(inFish, line).join(QLatin1Char(' ')), offered);
}

void TestManual::OffersFiles_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char* line :
         {"vesmar update vesm", "vesmar update image --confirmation vesm", "vesmar measure rpe --csv vesm",
          "vesmar decode vesm", "vesmar decode log --scenario vesm", "vesmar-simulator confirmation vesm",
          "vesmar-simulator --link vesm", "vesmar-simulator run --faults vesm"}) {
        QTest::newRow(line) << QByteArray(line);
    }
}

void TestManual::OffersFiles()
{
    QFETCH(const QByteArray, line);
    const QString script = line.startsWith("vesmar-simulator ") ? SimulatorScript() : VesmarScript();
    QStringList offered = Completed(script, line.constData(), ManualFile(QStringLiteral("completions/bash")));
    offered.sort();
    QCOMPARE(offered, (QStringList{QStringLiteral("vesmar"), QStringLiteral("vesmar-panel"),
                                   QStringLiteral("vesmar-simulator")}));
}

QTEST_GUILESS_MAIN(TestManual)
#include "tst_manual.moc"
