#include <QtTest>

#include <memory>
#include <vector>

#include "integration/measurerun.h"

namespace
{

struct Mode {
    const char* arguments;
    int number;           ///< What the instrument reports.
    const char* prepare;  ///< The prepare request without its checksum.
    int prepares;         ///< How often it is sent: the Ub/Re test is watched before it is started.
    QStringList readings; ///< In the order of JSON, which is that of the alphabet.
    QStringList absent;   ///< Those of them that the test does not have.
};

const std::vector<Mode>& Modes()
{
    static const QString Ia = QStringLiteral("Ia");
    static const QString Re = QStringLiteral("Re");
    static const QString Ta = QStringLiteral("Ta");
    static const std::vector<Mode> All{
        {"rcd --mode ub-re --quantity 1 --phase 2 --current 3 --type 1",
         10,
         "500a004027ffffffff",
         2,
         {Ia, Re, Ta},
         {Ia, Ta}},
        {"rcd --mode ia-ta-1 --quantity 2 --current 3 --type 1 --re 100",
         10,
         "500a00404b0000c842",
         1,
         {Ia, Re, Ta},
         {}},
        {"rcd --mode ia-ta-2 --phase 3", 10, "500a0000b000000000", 1, {Ia, Re, Ta}, {}},
        {"rcd-iec --mode ia-ta-1 --type 1", 11, "500b00404000000000", 1, {Ia, Ta}, {}},
        {"rcd-iec --mode ia-ta-2 --current 1 --swap-ln", 11, "500b00808100000000", 1, {Ia, Ta}, {}},
        {"rcd-iec --mode clean-up --quantity 1 --clean-up-time 3", 11, "500b0000c400000000", 1, {}, {}},
    };
    return All;
}

QByteArrayList PrepareRequestsIn(const QByteArrayList& log)
{
    QByteArrayList requests;
    for (const QByteArray& line : log) {
        if (line.startsWith("50")) {
            requests.append(line.left(18));
        }
    }
    return requests;
}

void CheckMode(MeasureRun& run, const Mode& mode)
{
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(), QByteArray());
    const QJsonObject result = ResultOf(run);
    QCOMPARE(result.value(QLatin1String("outcome")).toString(), QStringLiteral("done"));
    QCOMPARE(result.value(QLatin1String("stopped")).toBool(), true);
    QVERIFY(result.value(QLatin1String("error")).isNull());
    const QJsonObject readings = result.value(QLatin1String("readings")).toObject();
    QCOMPARE(readings.keys(), mode.readings);
    for (const QString& name : mode.readings) {
        QCOMPARE(readings.value(name).isNull(), mode.absent.contains(name));
    }
    const QByteArrayList log = run.Log();
    QCOMPARE(PrepareRequestsIn(log),
             QByteArrayList(QVector<QByteArray>(mode.prepares, mode.prepare).toList()));
    const QByteArray function = "function " + QByteArray::number(mode.number);
    const int completed = log.indexOf(function + " completed"); // it is not cut short
    QVERIFY2(completed >= 0, log.join('\n').constData());
    QVERIFY2(log.indexOf(function + " deselected") > completed, log.join('\n').constData());
}

} // namespace

/// The programs as they are built: `measure rcd` and `measure rcd-iec`.
class TestRcdProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryMode();
    void AsText();
    void OnATerminal();
    void ReIsTakenFromTheTestBefore();
    void AbsentReading();
    void BadUse_data();
    void BadUse();
};

void TestRcdProgram::EveryMode()
{
    MeasureRuns runs; // side by side
    for (const Mode& mode : Modes()) {
        runs.push_back(
            std::make_unique<MeasureRun>(QLatin1String(mode.arguments) + QStringLiteral(" --json")));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        CheckMode(*runs.at(i), Modes().at(i));
        if (QTest::currentTestFailed()) {
            QFAIL(Modes().at(i).arguments);
        }
    }
}

/// A line for each phase, then the readings, and in the end the result.
void TestRcdProgram::AsText()
{
    MeasureRun run(QStringLiteral("rcd-iec --mode ia-ta-1"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(), QByteArray());
    const QRegularExpression time(QStringLiteral("^ *\\d+\\.\\d s  "), QRegularExpression::MultilineOption);
    const QRegularExpression number(QStringLiteral("0\\.0[-0-9e.]+"));
    QString shown = QString::fromUtf8(run->Output());
    QCOMPARE(shown.count(time), 5);
    QCOMPARE(shown.count(number), 4);
    QCOMPARE(shown.remove(time).replace(number, QStringLiteral("X")),
             QStringLiteral("ia-ta-1: preparing\n"
                            "ia-ta-1: starting\n"
                            "ia-ta-1: running\n"
                            "Ia X, Ta X\n"
                            "ia-ta-1: waiting until the instrument has stopped\n"
                            "Measurement rcd-iec ia-ta-1 done. The instrument is confirmed to have stopped.\n"
                            "  Ia                X\n"
                            "  Ta                X\n"));
}

void TestRcdProgram::OnATerminal()
{
    const QString command = QStringLiteral("'%1' run -- '%2' measure rcd --mode ia-ta-1 --re 2.5")
                                .arg(QStringLiteral(SIMULATOR_PROGRAM), QStringLiteral(VESMAR_PROGRAM));
    ProgramRun terminal(QStringLiteral("script"),
                        {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"),
                         command, QStringLiteral("/dev/null")});
    QCOMPARE(terminal.Finish(), 0);
    const QByteArray shown = terminal.Output();
    QVERIFY2(shown.contains("\r   0.0 s  ia-ta-1: preparing\033[K"), shown.constData());
    QVERIFY2(shown.contains(" s  ia-ta-1: running\033[K"), shown.constData());
    QVERIFY2(shown.contains("Re                2.5\r\n"), shown.constData());
}

void TestRcdProgram::ReIsTakenFromTheTestBefore()
{
    MeasureRun run(QStringLiteral("rcd --mode ia-ta-2 --quantity 3 --with-ub-re --json"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(), QByteArray());
    const QByteArrayList log = run.Log();
    const int completed = log.indexOf("function 10 completed");
    QVERIFY2(completed > 0, log.join('\n').constData());
    QByteArray re;
    for (const QByteArray& line : log.mid(0, completed)) {
        if (line.startsWith("unasked ")) {
            re = line.mid(8, 8); // of the last one, which is the result
        }
    }
    QCOMPARE(PrepareRequestsIn(log),
             (QByteArrayList{"500a00000cffffffff", "500a00000cffffffff", "500a00008c" + re}));

    const QByteArrayList readings = EventsOf(run->Lines(), "reading");
    QCOMPARE(readings.size(), 2);
    const QJsonObject before = ObjectOf(readings.at(0)).value(QLatin1String("readings")).toObject();
    const QJsonObject result = ResultOf(run).value(QLatin1String("readings")).toObject();
    QVERIFY(before.value(QLatin1String("Re")).isDouble());
    QCOMPARE(result.value(QLatin1String("Re")), before.value(QLatin1String("Re")));
    QVERIFY(before.value(QLatin1String("Ia")).isNull());
    QVERIFY(result.value(QLatin1String("Ia")).isDouble());
    QVERIFY(result.value(QLatin1String("Ta")).isDouble());
}

void TestRcdProgram::AbsentReading()
{
    MeasureRun text(QStringLiteral("rcd --mode ia-ta-1"), InScenario("rcd-no-ta"));
    MeasureRun json(QStringLiteral("rcd-iec --mode ia-ta-1 --json"), InScenario("rcd-no-ta"));
    QCOMPARE(text->Finish(), 0);
    QVERIFY2(text->Output().endsWith("  Ta                -\n"), text->Output().constData());
    QCOMPARE(json->Finish(), 0);
    const QJsonObject readings = ResultOf(json).value(QLatin1String("readings")).toObject();
    QVERIFY(readings.value(QLatin1String("Ia")).isDouble());
    QVERIFY(readings.value(QLatin1String("Ta")).isNull());
}

void TestRcdProgram::BadUse_data()
{
    QTest::addColumn<QByteArray>("complaint");
    const std::pair<const char*, const char*> uses[]{
        {"rcd", "--mode: none given; it is one of ub-re, ia-ta-1, ia-ta-2"},
        {"rcd --mode clean-up", "--mode: \"clean-up\" is not one of ub-re, ia-ta-1, ia-ta-2"},
        {"rcd --mode ub-re --re 5", "--re: ub-re measures Re itself; leave this option out"},
        {"rcd --mode ia-ta-1 --re -1", "--re: \"-1\" is not a number from 0 to 1000000"},
        {"rcd --mode ia-ta-1 --phase 4", "--phase: \"4\" is not one of 0, 1, 2, 3"},
        {"rcd --mode ub-re --time 5", "not expected: "},
        {"rcd-iec --swap-ln", "--mode: none given; it is one of ia-ta-1, ia-ta-2, clean-up"},
        {"rcd-iec --mode ia-ta-1 --csv readings", "--csv: rcd-iec gives a single result"},
        {"rcd-iec --mode clean-up --clean-up-time 0", "--clean-up-time: \"0\" is not a number of seconds"},
    };
    for (const auto& [arguments, complaint] : uses) {
        QTest::addRow("%s", arguments) << QByteArray(complaint);
    }
}

void TestRcdProgram::BadUse()
{
    QFETCH(QByteArray, complaint);
    MeasureRun run(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(run->Finish(), 1);
    QCOMPARE(run->Output(), QByteArray());
    const QByteArrayList lines = run->Errors().split('\n');
    QVERIFY2(lines.value(0).startsWith("vesmar: ") && lines.value(0).contains(complaint),
             run->Errors().constData());
    QVERIFY2(lines.value(1).startsWith("Usage: vesmar measure "), run->Errors().constData());
    QCOMPARE(run.Log(), QByteArrayList()); // nothing was sent
}

QTEST_GUILESS_MAIN(TestRcdProgram)
#include "tst_rcdprogram.moc"
