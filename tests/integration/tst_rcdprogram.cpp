#include <QTemporaryFile>

#include "integration/measurerun.h"
#include "integration/rcdtrouble.h"

namespace
{

std::unique_ptr<MeasureRun> StartJson(const char* arguments, const QStringList& simulatorOptions = {})
{
    return std::make_unique<MeasureRun>(QLatin1String(arguments) + QStringLiteral(" --json"),
                                        simulatorOptions);
}

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
    run->VerifySuccess();
    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("done"));
    QCOMPARE(ValueOf(result, "stopped").toBool(), true);
    QVERIFY(ValueOf(result, "error").isNull());
    const QJsonObject readings = PartOf(result, "readings");
    QCOMPARE(readings.keys(), mode.readings);
    for (const QString& name : mode.readings) {
        QCOMPARE(readings.value(name).isNull(), mode.absent.contains(name));
    }
    const QByteArrayList log = run.Log();
    QCOMPARE(PrepareRequestsIn(log),
             QByteArrayList(QVector<QByteArray>(mode.prepares, mode.prepare).toList()));
    const QByteArray function = "function " + QByteArray::number(mode.number);
    const int completed = log.indexOf(function + " completed"); // The test is not cut short.
    QVERIFY2(completed >= 0, log.join('\n').constData());
    QVERIFY2(log.indexOf(function + " deselected") > completed, log.join('\n').constData());
}

constexpr char StopRequest[] = "68aeed 06c660";

/// Whether a test is still selected in the status when the log ends.
bool IsAnyTestSelected(const QByteArrayList& log)
{
    for (auto line = log.crbegin(); line != log.crend(); ++line) {
        if (line->startsWith("function ")) {
            return !line->endsWith(" deselected") && !line->endsWith(" stopped by request");
        }
    }
    return false;
}

void CheckFailure(MeasureRun& run, const RcdTrouble& failure)
{
    QCOMPARE(run->Finish(), 4);
    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("failed"));
    QCOMPARE(NumberOf(result, "status"), 4);
    QCOMPARE(ValueOf(result, "stopped").toBool(), true);
    QVERIFY(ValueOf(result, "readings").isNull());
    const QJsonValue error = ValueOf(result, "error");
    QCOMPARE(ValueOf(error.toObject(), "number").toInt(NoRcdError), failure.error);
    QCOMPARE(error.isNull(), failure.error == NoRcdError);
    const QByteArray message = TextOf(result, "message");
    QCOMPARE(message.contains("did not prepare the measurement in time"), failure.isLate);
    QCOMPARE(run->Errors(), "vesmar: " + message + '\n');
    QVERIFY2(!IsAnyTestSelected(run.Log()), run.Log().join('\n').constData());
}

void VerifyFailures(const std::vector<RcdTrouble>& failures)
{
    CheckSideBySide(
        failures, [](const RcdTrouble& failure) { return StartJson(failure.words, AtOnce(failure.command)); },
        CheckFailure, [](const RcdTrouble& failure) { return QByteArray(failure.words) + failure.command; });
}

void CheckInterruption(MeasureRun& run, const RcdInterruption& interruption)
{
    QCOMPARE(run->Finish(), 5);
    VERIFY_CONTAINS(run->Errors(), "Aborting the measurement (signal 2)");
    VERIFY_ENDS(run->Errors(), " aborted. The instrument is confirmed to have stopped.\n");
    const QByteArrayList log = run.Log();
    QVERIFY2(log.lastIndexOf(StopRequest) > log.indexOf(interruption.moment), log.join('\n').constData());
    QVERIFY2(!IsAnyTestSelected(log), log.join('\n').constData());
}

} // namespace

/// `measure rcd` and `measure rcd-iec` of the program as it is built.
class TestRcdProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryModeBringsItsReadings();
    void PhasesAreShownAsText();
    void LineIsRedrawnOnATerminal();
    void ReComesFromTheTestBefore();
    void AbsentReadingIsShownAsAbsent();
    void TroubleThatEndsIsOvercome();
    void ObjectUnderTestFails() { VerifyFailures(RcdCheckFailures()); }
    void PreparationFails() { VerifyFailures(RcdPreparationFailures()); }
    void RunFails() { VerifyFailures(RcdRunFailures()); }
    void UnsuitableMainsAreReported();
    void SignalAbortsTheTest();
    void AbortOfTheFirstTestIsTheEnd();
    void UnconfirmedStopIsReported();
};

void TestRcdProgram::EveryModeBringsItsReadings()
{
    CheckSideBySide(
        Modes(), [](const Mode& mode) { return StartJson(mode.arguments); }, CheckMode,
        [](const Mode& mode) { return mode.arguments; });
}

/// A line for each phase, then the readings, and in the end the result.
void TestRcdProgram::PhasesAreShownAsText()
{
    MeasureRun run(QStringLiteral("rcd-iec --mode ia-ta-1"));
    run->VerifySuccess();
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

void TestRcdProgram::LineIsRedrawnOnATerminal()
{
    const QString command = QStringLiteral("'%1' run -- '%2' measure rcd --mode ia-ta-1 --re 2.5")
                                .arg(SimulatorIn(Time::Virtual), QStringLiteral(VESMAR_PROGRAM));
    ProgramRun terminal(QStringLiteral("script"),
                        {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"),
                         command, QStringLiteral("/dev/null")});
    QCOMPARE(terminal.Finish(), 0);
    const QByteArray shown = terminal.Output();
    VERIFY_CONTAINS(shown, "\r   0.0 s  ia-ta-1: preparing\033[J");
    VERIFY_CONTAINS(shown, " s  ia-ta-1: running\033[J");
    VERIFY_CONTAINS(shown, "Re                2.5\r\n");
}

void TestRcdProgram::ReComesFromTheTestBefore()
{
    MeasureRun run(QStringLiteral("rcd --mode ia-ta-2 --quantity 3 --with-ub-re --json"));
    run->VerifySuccess();
    const QByteArrayList log = run.Log();
    const int completed = log.indexOf("function 10 completed");
    QVERIFY2(completed > 0, log.join('\n').constData());
    QByteArray re;
    for (const QByteArray& line : log.mid(0, completed)) {
        if (line.startsWith("unasked ")) {
            re = line.mid(8, 8); // The last one is the result.
        }
    }
    QCOMPARE(PrepareRequestsIn(log),
             (QByteArrayList{"500a00000cffffffff", "500a00000cffffffff", "500a00008c" + re}));

    const QByteArrayList readings = EventsOf(run->Lines(), "reading");
    QCOMPARE(readings.size(), 2);
    const QJsonObject before = PartOf(ObjectOf(readings.at(0)), "readings");
    const QJsonObject result = PartOf(ResultOf(run), "readings");
    QVERIFY(ValueOf(before, "Re").isDouble());
    QCOMPARE(ValueOf(result, "Re"), ValueOf(before, "Re"));
    QVERIFY(ValueOf(before, "Ia").isNull());
    QVERIFY(ValueOf(result, "Ia").isDouble());
    QVERIFY(ValueOf(result, "Ta").isDouble());
}

void TestRcdProgram::AbsentReadingIsShownAsAbsent()
{
    MeasureRun text(QStringLiteral("rcd --mode ia-ta-1"), InScenario("rcd-no-ta"));
    MeasureRun json(QStringLiteral("rcd-iec --mode ia-ta-1 --json"), InScenario("rcd-no-ta"));
    QCOMPARE(text->Finish(), 0);
    VERIFY_ENDS(text->Output(), "  Ta                -\n");
    QCOMPARE(json->Finish(), 0);
    const QJsonObject readings = PartOf(ResultOf(json), "readings");
    QVERIFY(ValueOf(readings, "Ia").isDouble());
    QVERIFY(ValueOf(readings, "Ta").isNull());
}

void TestRcdProgram::TroubleThatEndsIsOvercome()
{
    CheckSideBySide(
        RcdTroubleThatEnds(),
        [](const RcdTrouble& trouble) { return StartJson(trouble.words, AtOnce(trouble.command)); },
        [](MeasureRun& run, const RcdTrouble&) {
            QCOMPARE(run->Finish(), 0);
            QVERIFY(ValueOf(ResultOf(run), "error").isNull());
            QCOMPARE(run->Errors(), QByteArray());
        },
        [](const RcdTrouble& trouble) { return QByteArray(trouble.words) + trouble.command; });
}

void TestRcdProgram::UnsuitableMainsAreReported()
{
    MeasureRun run(QStringLiteral("rcd-iec --mode ia-ta-1"), InScenario("rcd-check-once 10"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(),
             QByteArray("vesmar: RCDCheckObjectULNIECInvalid (507): the mains voltage does not suit the IEC "
                        "RCD test; waiting until it does. Ctrl-C aborts the measurement.\n"));
    VERIFY_CONTAINS(run->Output(), "ia-ta-1: waiting for a suitable mains voltage\n");
}

void TestRcdProgram::SignalAbortsTheTest()
{
    CheckSideBySide(
        RcdInterruptions(),
        [](const RcdInterruption& interruption) {
            qputenv("VESMAR_TEST_INTERRUPTION", QByteArray("2 ") + interruption.moment);
            return std::make_unique<MeasureRun>(QLatin1String(interruption.words),
                                                AtOnce(interruption.command));
        },
        CheckInterruption,
        [](const RcdInterruption& interruption) {
            return QByteArray(interruption.words) + interruption.moment;
        });
    qunsetenv("VESMAR_TEST_INTERRUPTION");
}

/// The proof that the first test has stopped takes its time, and the second one must not begin after it.
void TestRcdProgram::AbortOfTheFirstTestIsTheEnd()
{
    QTemporaryFile faults;
    QVERIFY(faults.open());
    faults.write(R"({"faults": [{"fault": "slow", "delay": 3000, "when": {"request": "W", "from": 2}}]})");
    faults.close();
    MeasureRun run(QStringLiteral("rcd --mode ia-ta-1 --with-ub-re"),
                   {QStringLiteral("--faults"), faults.fileName()}, Time::Real);
    AWAIT(run->Output().contains("ub-re: waiting until the instrument has stopped"));
    QVERIFY(run->Signal(SIGINT));
    QCOMPARE(run->Finish(), 5);
    VERIFY_CONTAINS(run->Errors(), "Aborting the measurement (signal 2)");
    VERIFY_ENDS(run->Errors(),
                "Measurement rcd ub-re aborted. The instrument is confirmed to have stopped.\n");
    QCOMPARE(PrepareRequestsIn(run.Log()).size(), 2); // Both are those of the first test.
}

void TestRcdProgram::UnconfirmedStopIsReported()
{
    MeasureRun run(QStringLiteral("rcd --mode ia-ta-1 --stop-timeout 0.1 --json"));
    QCOMPARE(run->Finish(), 6);
    VERIFY_CONTAINS(run->Errors(), "STOP NOT CONFIRMED");
    QCOMPARE(ValueOf(ResultOf(run), "stopped").toBool(true), false);
}

QTEST_GUILESS_MAIN(TestRcdProgram)
#include "tst_rcdprogram.moc"
