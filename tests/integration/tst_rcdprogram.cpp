#include "integration/measurerun.h"

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

constexpr int NoError = -1;
constexpr char StopRequest[] = "68aeed 06c660";

struct Failure {
    const char* arguments;
    QStringList simulator;
    int error = NoError;
    bool isLate = false; ///< The program, not the library, gives up.
};

const char* const UbRe = "rcd --mode ub-re";
const char* const IaTa = "rcd --mode ia-ta-1";
const char* const IecIaTa = "rcd-iec --mode ia-ta-2";
const char* const CleanUp = "rcd-iec --mode clean-up";

std::vector<Failure> CheckFailures()
{
    return {
        {UbRe, InScenario("rcd-check 1"), 500},
        {UbRe, InScenario("rcd-check 2"), 501},
        {UbRe, InScenario("rcd-check 3"), 502},
        {UbRe, InScenario("rcd-check 4"), 503},
        {UbRe, InScenario("rcd-check 7"), 504},
        {UbRe, InScenario("rcd-check 8"), 505},
        {UbRe, InScenario("rcd-check 9"), 506},
        {UbRe, InScenario("rcd-check 10"), 507},
        {IaTa, InScenario("rcd-check 3"), 401},
        {IecIaTa, InScenario("rcd-check 3"), 502},
        {IecIaTa, InScenario("rcd-check-lost"), 500},
        {UbRe, InScenario("rcd-check-lost"), 401},
        {"rcd --mode ia-ta-2 --with-ub-re", InScenario("rcd-check 9"), 506},
    };
}

std::vector<Failure> PreparationFailures()
{
    return {
        {UbRe, InScenario("refuses-prepare"), 200},
        {IaTa, InScenario("refuses-prepare"), 200},
        {CleanUp, InScenario("refuses-prepare"), 200},
        {UbRe, InScenario("rcd-other-function"), 398},
        {IaTa, InScenario("rcd-other-function"), 398},
        {IecIaTa, InScenario("rcd-other-function"), 398},
        {UbRe, InScenario("start-test 3"), 400},
        {IaTa, InScenario("start-test 3"), 400},
        {CleanUp, InScenario("start-test 3"), 400},
        {UbRe, InScenario("prepare-error"), 401},
        {IaTa, InScenario("never-prepared"), 401},
        {IecIaTa, InScenario("prepare-error"), 401},
        {"rcd --mode ub-re --prepare-timeout 2", InScenario("never-prepared"), NoError, true},
        {"rcd-iec --mode clean-up --prepare-timeout 3", InScenario("rcd-check 3"), NoError, true},
    };
}

std::vector<Failure> RunFailures()
{
    return {
        {UbRe, InScenario("start-error"), 201},
        {IaTa, InScenario("start-error"), 201},
        {IecIaTa, InScenario("rcd-silent"), 201},
        {CleanUp, InScenario("start-error"), 201},
        {UbRe, InScenario("rcd-silent"), 520},
        {IaTa, InScenario("rcd-silent"), 201},
        {UbRe, InScenario("rcd-garbage"), 520},
        {UbRe, InScenario("ends-without-result"), 521},
        {IaTa, InScenario("ends-without-result"), 521},
        {IecIaTa, InScenario("rcd-error-once 7"), 521},
        {IaTa, InScenario("rcd-error 0"), 520},
        {UbRe, InScenario("rcd-error 14"), 534},
        {IecIaTa, InScenario("rcd-error 4")},
        {CleanUp, InScenario("rcd-error 4")},
        {UbRe, AtOnce("error 6"), 6},
        {IaTa, AtOnce("error 0"), 0},
    };
}

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

void CheckFailure(MeasureRun& run, const Failure& failure)
{
    QCOMPARE(run->Finish(), 4);
    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("failed"));
    QCOMPARE(NumberOf(result, "status"), 4);
    QCOMPARE(ValueOf(result, "stopped").toBool(), true);
    QVERIFY(ValueOf(result, "readings").isNull());
    const QJsonValue error = ValueOf(result, "error");
    QCOMPARE(ValueOf(error.toObject(), "number").toInt(NoError), failure.error);
    QCOMPARE(error.isNull(), failure.error == NoError);
    const QByteArray message = TextOf(result, "message");
    QCOMPARE(message.contains("did not prepare it in time"), failure.isLate);
    QCOMPARE(run->Errors(), "vesmar: " + message + '\n');
    QVERIFY2(!IsAnyTestSelected(run.Log()), run.Log().join('\n').constData());
}

void VerifyFailures(const std::vector<Failure>& failures)
{
    CheckSideBySide(
        failures, [](const Failure& failure) { return StartJson(failure.arguments, failure.simulator); },
        CheckFailure,
        [](const Failure& failure) {
            return failure.arguments + failure.simulator.join(QLatin1Char(' ')).toLatin1();
        });
}

/// A signal, and the moment at which it comes.
struct Interruption {
    const char* arguments;
    QStringList simulator;
    QByteArray moment; ///< A line of the log.
    int signalNumber;
};

std::vector<Interruption> Interruptions()
{
    return {
        {UbRe, InScenario("never-prepared"), "function 10 preparing", SIGINT},
        {UbRe, InScenario("rcd-check 3"), "function 10 checked: 3", SIGTERM},
        {UbRe, {}, "function 10 running", SIGHUP},
        {IaTa, {}, "function 10 prepared", SIGTERM},
        {IaTa, {}, "function 10 running", SIGINT},
        {IaTa, InScenario("rcd-silent"), "function 10 does not start", SIGHUP},
        {IecIaTa, {}, "function 11 running", SIGTERM},
        {IecIaTa, InScenario("rcd-check 10"), "function 11 checked: 10", SIGINT},
        {CleanUp, {}, "function 11 running", SIGINT},
        {"rcd --mode ia-ta-1 --with-ub-re", {}, "function 10 running", SIGTERM},
    };
}

void CheckInterruption(MeasureRun& run, const Interruption& interruption)
{
    QCOMPARE(run->Finish(), 5);
    VERIFY_CONTAINS(run->Errors(), "Aborting the measurement (signal " +
                                       QByteArray::number(interruption.signalNumber) + ')');
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
    void ObjectUnderTestFails() { VerifyFailures(CheckFailures()); }
    void PreparationFails() { VerifyFailures(PreparationFailures()); }
    void RunFails() { VerifyFailures(RunFailures()); }
    void UnsuitableMainsAreReported();
    void SignalAbortsTheTest();
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
    VERIFY_CONTAINS(shown, "\r   0.0 s  ia-ta-1: preparing\033[K");
    VERIFY_CONTAINS(shown, " s  ia-ta-1: running\033[K");
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
    using Trouble = std::pair<const char*, const char*>;
    const Trouble troubles[]{{UbRe, "rcd-check 0"},         {UbRe, "rcd-check-once 3"},
                             {IaTa, "rcd-check-once 3"},    {IaTa, "rcd-silent-once"},
                             {IecIaTa, "rcd-silent-once"},  {IecIaTa, "rcd-check-once 4"},
                             {IecIaTa, "rcd-error-once 5"}, {CleanUp, "rcd-check-once 3"},
                             {UbRe, "rcd-glued"},           {IaTa, "rcd-pieces 2000"}};
    CheckSideBySide(
        troubles, [](const Trouble& trouble) { return StartJson(trouble.first, InScenario(trouble.second)); },
        [](MeasureRun& run, const Trouble&) {
            QCOMPARE(run->Finish(), 0);
            QVERIFY(ValueOf(ResultOf(run), "error").isNull());
            QCOMPARE(run->Errors(), QByteArray());
        },
        [](const Trouble& trouble) { return trouble.second; });
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
    const std::vector<Interruption> interruptions = Interruptions();
    MeasureRuns runs; // side by side
    for (const Interruption& interruption : interruptions) {
        runs.push_back(std::make_unique<MeasureRun>(QLatin1String(interruption.arguments),
                                                    interruption.simulator, Time::Real));
    }
    QVector<bool> isInterrupted(static_cast<int>(runs.size()));
    const auto interruptInTime = [&] {
        for (size_t i = 0; i < runs.size(); ++i) {
            bool& isDone = isInterrupted[static_cast<int>(i)];
            isDone = isDone || (runs.at(i)->Log().contains(interruptions.at(i).moment) &&
                                (*runs.at(i))->Signal(interruptions.at(i).signalNumber));
        }
        return !isInterrupted.contains(false);
    };
    AWAIT(interruptInTime());
    for (size_t i = 0; i < runs.size(); ++i) {
        CheckInterruption(*runs.at(i), interruptions.at(i));
        if (QTest::currentTestFailed()) {
            QFAIL(interruptions.at(i).arguments + interruptions.at(i).moment);
        }
    }
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
