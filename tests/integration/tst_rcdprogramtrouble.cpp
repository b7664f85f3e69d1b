#include <QtTest>

#include <memory>
#include <vector>

#include "integration/measurerun.h"

namespace
{

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

/// The last thing that a test did was to leave the status.
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
    QCOMPARE(result.value(QLatin1String("outcome")).toString(), QStringLiteral("failed"));
    QCOMPARE(result.value(QLatin1String("status")).toInt(), 4);
    QCOMPARE(result.value(QLatin1String("stopped")).toBool(), true);
    QVERIFY(result.value(QLatin1String("readings")).isNull());
    const QJsonValue error = result.value(QLatin1String("error"));
    QCOMPARE(error.toObject().value(QLatin1String("number")).toInt(NoError), failure.error);
    QCOMPARE(error.isNull(), failure.error == NoError);
    const QByteArray message = result.value(QLatin1String("message")).toString().toUtf8();
    QCOMPARE(message.contains("did not prepare it in time"), failure.isLate);
    QCOMPARE(run->Errors(), "vesmar: " + message + '\n');
    QVERIFY2(!IsAnyTestSelected(run.Log()), run.Log().join('\n').constData());
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
    QVERIFY2(run->Errors().contains("Aborting the measurement (signal " +
                                    QByteArray::number(interruption.signalNumber) + ')'),
             run->Errors().constData());
    QVERIFY2(run->Errors().endsWith(" aborted. The instrument is confirmed to have stopped.\n"),
             run->Errors().constData());
    const QByteArrayList log = run.Log();
    QVERIFY2(log.lastIndexOf(StopRequest) > log.indexOf(interruption.moment), log.join('\n').constData());
    QVERIFY2(!IsAnyTestSelected(log), log.join('\n').constData());
}

} // namespace

/// `measure rcd` and `measure rcd-iec` at an instrument, or with people, that do not let a test come to its
/// end.
class TestRcdProgramTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TroubleThatIsOvercome();
    void FailedByTheInstrument_data();
    void FailedByTheInstrument();
    void MainsThatDoNotSuitAreTold();
    void Interrupted();
    void StopNotConfirmed();
};

void TestRcdProgramTrouble::TroubleThatIsOvercome()
{
    const std::pair<const char*, const char*> troubles[]{
        {UbRe, "rcd-check 0"},         {UbRe, "rcd-check-once 3"},    {IaTa, "rcd-check-once 3"},
        {IaTa, "rcd-silent-once"},     {IecIaTa, "rcd-silent-once"},  {IecIaTa, "rcd-check-once 4"},
        {IecIaTa, "rcd-error-once 5"}, {CleanUp, "rcd-check-once 3"}, {UbRe, "rcd-glued"},
        {IaTa, "rcd-pieces 2000"}};
    MeasureRuns runs; // side by side
    for (const auto& [arguments, scenario] : troubles) {
        runs.push_back(std::make_unique<MeasureRun>(QLatin1String(arguments) + QStringLiteral(" --json"),
                                                    InScenario(scenario)));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        MeasureRun& run = *runs.at(i);
        QVERIFY2(run->Finish() == 0, run->Errors() + troubles[i].second);
        QVERIFY2(ResultOf(run).value(QLatin1String("error")).isNull(), troubles[i].second);
        QCOMPARE(run->Errors(), QByteArray());
    }
}

void TestRcdProgramTrouble::FailedByTheInstrument_data()
{
    QTest::addColumn<int>("group");
    QTest::newRow("the object under test") << 0;
    QTest::newRow("the preparation") << 1;
    QTest::newRow("the run") << 2;
}

void TestRcdProgramTrouble::FailedByTheInstrument()
{
    QFETCH(int, group);
    const std::vector<Failure> groups[]{CheckFailures(), PreparationFailures(), RunFailures()};
    MeasureRuns runs; // side by side
    for (const Failure& failure : groups[group]) {
        runs.push_back(std::make_unique<MeasureRun>(
            QLatin1String(failure.arguments) + QStringLiteral(" --json"), failure.simulator));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        const Failure& failure = groups[group].at(i);
        CheckFailure(*runs.at(i), failure);
        if (QTest::currentTestFailed()) {
            QFAIL(failure.arguments + failure.simulator.join(QLatin1Char(' ')).toLatin1());
        }
    }
}

void TestRcdProgramTrouble::MainsThatDoNotSuitAreTold()
{
    MeasureRun run(QStringLiteral("rcd-iec --mode ia-ta-1"), InScenario("rcd-check-once 10"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(),
             QByteArray("vesmar: RCDCheckObjectULNIECInvalid (507): the mains voltage does not suit the IEC "
                        "RCD test; waiting until it does. Ctrl-C aborts the measurement.\n"));
    QVERIFY2(run->Output().contains("ia-ta-1: waiting for a suitable mains voltage\n"),
             run->Output().constData());
}

void TestRcdProgramTrouble::Interrupted()
{
    const std::vector<Interruption> interruptions = Interruptions();
    MeasureRuns runs; // side by side
    for (const Interruption& interruption : interruptions) {
        runs.push_back(
            std::make_unique<MeasureRun>(QLatin1String(interruption.arguments), interruption.simulator));
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

void TestRcdProgramTrouble::StopNotConfirmed()
{
    MeasureRun run(QStringLiteral("rcd --mode ia-ta-1 --stop-timeout 0.1 --json"));
    QCOMPARE(run->Finish(), 6);
    QVERIFY2(run->Errors().contains("STOP NOT CONFIRMED"), run->Errors().constData());
    QCOMPARE(ResultOf(run).value(QLatin1String("stopped")).toBool(true), false);
}

QTEST_GUILESS_MAIN(TestRcdProgramTrouble)
#include "tst_rcdprogramtrouble.moc"
