#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include "states/rcd/rcdmonitoringstate.h"
#include "unit/states/rcdrun.h"

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::RCDMonitoringState;
using Vesmar::StartTestResult;

namespace
{

// What `MeasurementStatus` says about the preparation.
constexpr int NotAskedFor = -1;
constexpr int Watching = 0;
constexpr int Awaiting = 1;
constexpr int Preparing = 2;

const QString NoChange;
const QString Pause = QStringLiteral("400");
const QString NoPause;
const QString StopPauses = QStringLiteral("200 200");

/// A state that has been entered with the settings of the Ub/Re test.
struct Monitoring : RCDRun {
    explicit Monitoring(MeasurementSettings* settings = RCDSettingsOfMode(0))
        : RCDRun(Create<RCDMonitoringState>, settings)
    {
    }

    /// One step of a preparation that has been asked for.
    QString StepOfARequest(int status)
    {
        context.PrepareMeasurementRequested.Set(true);
        return StepIn(status);
    }

    /// The lines that tell how far a step came, the number that follows without what follows it.
    QStringList Progress() const
    {
        const QString beginning = Plain("RUNING RCD MONITORING STATE");
        QStringList progress;
        for (const QString& text : log.Texts()) {
            if (text.startsWith(QLatin1String("\033[0;34m<<<"))) {
                progress.append(text);
            } else if (text.startsWith(beginning)) {
                progress.append(text.mid(beginning.size() + 1, 1));
            }
        }
        return progress;
    }

    static QString Plain(const char* text)
    {
        return QLatin1String("<<<") + QString(30, QLatin1Char(' ')) + QLatin1String(text);
    }
};

const QString Running = Banner("RUNING RCD MONITORING STATE");
const QString RunningAbort = Banner("RUNING RCD MONITORING STATE is abort");
const QString RunningAbortIEC = Banner("RUNING RCD MONITORING STATE rcdiec");
const QString RunningAbortIECError = Banner("RUNING RCD MONITORING STATE rcdiec no error");

QStringList Steps(const QString& numbers)
{
    return QStringList(Running) + numbers.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The whole line of the log that begins so.
QString LineWith(const LogCapture& log, const char* beginning)
{
    for (const QString& text : log.Texts()) {
        if (text.startsWith(Monitoring::Plain(beginning))) {
            return text;
        }
    }
    return {};
}

} // namespace

class TestRCDMonitoringState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryResetsTheBudgets();

    void StepTellsHowFarItCame_data();
    void StepTellsHowFarItCame();
    void StepTellsWhatItFound();
    void NothingIsSentButForTheUbReTest_data();
    void NothingIsSentButForTheUbReTest();
    void StartRequestedEndsTheStep_data();
    void StartRequestedEndsTheStep();
    void OtherStatusesDoNothing_data();
    void OtherStatusesDoNothing();

    void RCDAbortWithoutAPreparationStaysPending_data();
    void RCDAbortWithoutAPreparationStaysPending();
    void RCDAbortOfAPreparationStopsTheFunction_data();
    void RCDAbortOfAPreparationStopsTheFunction();
    void RCDAbortOfAnIdleInstrumentSendsNothing();
    void RCDAbortStopsUntilTheFunctionIsOver();
    void RCDAbortThatFailsStaysPending_data();
    void RCDAbortThatFailsStaysPending();
    void RCDAbortIsResumed_data();
    void RCDAbortIsResumed();
    void RCDIECAbortIsForgotten();
    void RCDIECAbortWithAnErrorWithdrawsThePreparation();
    void RCDIECAbortGoesOnWithTheStep();
    void AbortWithOtherSettingsStaysPending();

    void NothingBeginsUnasked_data();
    void NothingBeginsUnasked();
    void RequestBeginsAPreparation();
    void RequestAfterAnErrorStopsTheFunctionFirst();
    void RequestAfterAnErrorOnAnIdleInstrumentSendsNothing();
    void StopThatFailsBeforeAPreparationIsResumed_data();
    void StopThatFailsBeforeAPreparationIsResumed();
    void RequestBeginsWithFullBudgets_data();
    void RequestBeginsWithFullBudgets();
    void RequestDoesNotRenewTheStarts();

    void AwaitsTheInstrument_data();
    void AwaitsTheInstrument();
    void AwaitingGivesUpAfterNineStatuses();
    void AwaitingTellsWhatItFound();

    void PreparesTheTest_data();
    void PreparesTheTest();
    void SettingsPreparedMeanwhileStayRequested();
    void PreparingGivesUpAfterThreeRequests();

    void WatchesThePreparedTest_data();
    void WatchesThePreparedTest();
    void WatchedTestIsCheckedWhenPrepareFailed_data();
    void WatchedTestIsCheckedWhenPrepareFailed();
    void WatchingGivesUpAfterSixFailures();
    void WatchingCountsFromTheLastAnswer();
    void AcknowledgedWatchIsNotCounted();
    void NewRequestBeginsThePreparationAnew_data();
    void NewRequestBeginsThePreparationAnew();
    void ExhaustedWatchWithdrawsANewRequest();

    void RequestsWaitHalfASecond_data();
    void RequestsWaitHalfASecond();
    void PreparationRunsThrough();
};

void TestRCDMonitoringState::EntryResetsTheBudgets()
{
    Monitoring run;
    for (int visit = 0; visit < 2; ++visit) {
        run.state->OnEntry();
        run.peer.AnswerAlways(Wire::IdleStatus);
        for (int status = 0; status < 9; ++status) {
            QCOMPARE(run.StepOfARequest(Awaiting), NoChange);
        }
        QVERIFY(run.StepOfARequest(Awaiting).startsWith(QStringLiteral("ErrorCode=400")));
        run.SetError(15);
        run.peer.AnswerAlways(Wire::StartTest0Status);
        for (int prepare = 0; prepare < 3; ++prepare) {
            QCOMPARE(run.StepOfARequest(Preparing), NoChange);
        }
        QVERIFY(run.StepOfARequest(Preparing).startsWith(QStringLiteral("ErrorCode=200")));
        run.SetError(15);
        run.peer.AnswerAlways(Wire::Refusal);
        for (int poll = 0; poll < 6; ++poll) {
            QCOMPARE(run.StepIn(Watching), NoChange);
        }
        QVERIFY(run.StepIn(Watching).startsWith(QStringLiteral("ErrorCode=401")));
        run.SetError(15);
    }
}

void TestRCDMonitoringState::StepTellsHowFarItCame_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("isStartRequested");
    QTest::addColumn<QString>("numbers");
    const auto row = [](const char* name, int function, int mode, bool isStart, const char* numbers) {
        QTest::newRow(name) << function << mode << isStart << QString(QLatin1String(numbers));
    };
    row("Ub/Re", 10, 0, false, "1 3 4 5");
    row("Ub/Re, start", 10, 0, true, "1 2");
    row("Ia/Ta", 10, 1, false, "1 3 4");
    row("Ia/Ta, other mode", 10, 2, false, "1 3 4");
    row("Ia/Ta, start", 10, 1, true, "1 2");
    row("mode not set", 10, -1, false, "1 3 4");
    row("IEC Ia/Ta", 11, 1, false, "1 3");
    row("IEC clean-up", 11, 3, false, "1 3");
    row("IEC clean-up, start", 11, 3, true, "1 2");
    row("another function", 1, 0, false, "1 3");
}

void TestRCDMonitoringState::StepTellsHowFarItCame()
{
    QFETCH(const int, function);
    QFETCH(const int, mode);
    QFETCH(const bool, isStartRequested);
    QFETCH(const QString, numbers);
    Monitoring run(SettingsOf(function, mode));
    run.context.StartMeasurementRequested.Set(isStartRequested);
    QCOMPARE(run.Step(), NoChange);
    QCOMPARE(run.Progress(), Steps(numbers));
    QCOMPARE(run.log.Messages().constLast().type, QtWarningMsg);
    QCOMPARE(run.log.Messages().constLast().category, QByteArray("default"));
}

void TestRCDMonitoringState::StepTellsWhatItFound()
{
    Monitoring run;
    run.peer.AnswerAlways(Wire::IdleStatus);
    run.StepOfARequest(Awaiting);
    const QString status = LineWith(run.log, "RUNING RCD MONITORING STATE 1 - status=");
    const QRegularExpression values(QStringLiteral("status=\\W*(true|1)\\W+(false|0)\\W+1\\W*$"));
    QVERIFY2(values.match(status).hasMatch(), qPrintable(status));
    QVERIFY(run.log.Texts().contains(Monitoring::Plain("RUNING RCD MONITORING STATE 4")));
    QCOMPARE(LineWith(run.log, "RUNING RCD MONITORING STATE 3 - measurmentTyp=").simplified(),
             QStringLiteral("<<< RUNING RCD MONITORING STATE 3 - measurmentTyp= 10"));
    QCOMPARE(LineWith(run.log, "RUNING RCD MONITORING STATE 5 - mesurmentState: ").simplified(),
             QStringLiteral("<<< RUNING RCD MONITORING STATE 5 - mesurmentState: 1"));
    run.context.StartMeasurementRequested.Set(true);
    run.Step();
    QCOMPARE(run.log.Texts().constLast(), Monitoring::Plain("RUNING RCD MONITORING STATE 2"));
}

void TestRCDMonitoringState::NothingIsSentButForTheUbReTest_data()
{
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("mode");
    for (const int mode : {-1, 1, 2, 3}) {
        QTest::addRow("RCD, mode %d", mode) << 10 << mode;
    }
    for (const int mode : {-1, 0, 1, 3}) {
        QTest::addRow("RCD IEC, mode %d", mode) << 11 << mode;
    }
    QTest::newRow("another function") << 1 << 0;
    QTest::newRow("no function") << -1 << 0;
}

void TestRCDMonitoringState::NothingIsSentButForTheUbReTest()
{
    QFETCH(const int, function);
    QFETCH(const int, mode);
    Monitoring run(SettingsOf(function, mode));
    for (const int status : {NotAskedFor, Watching, Awaiting, Preparing}) {
        QCOMPARE(run.StepOfARequest(status), NoChange);
        QCOMPARE(run.Commands(), QByteArray());
    }
}

void TestRCDMonitoringState::StartRequestedEndsTheStep_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {NotAskedFor, Watching, Awaiting, Preparing}) {
        QTest::addRow("status %d", status) << status;
    }
}

void TestRCDMonitoringState::StartRequestedEndsTheStep()
{
    QFETCH(const int, status);
    Monitoring run;
    run.context.StartMeasurementRequested.Set(true);
    QCOMPARE(run.StepOfARequest(status), NoChange);
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Progress(), Steps(QStringLiteral("1 2")));
}

void TestRCDMonitoringState::OtherStatusesDoNothing_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {-2, 3, 4, 5, 6, 7, 8}) {
        QTest::addRow("status %d", status) << status;
    }
}

void TestRCDMonitoringState::OtherStatusesDoNothing()
{
    QFETCH(const int, status);
    Monitoring run;
    QCOMPARE(run.StepOfARequest(status), NoChange);
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDMonitoringState::RCDAbortWithoutAPreparationStaysPending_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("Ub/Re") << 0;
    QTest::newRow("Ia/Ta") << 1;
}

void TestRCDMonitoringState::RCDAbortWithoutAPreparationStaysPending()
{
    QFETCH(const int, mode);
    Monitoring run(RCDSettingsOfMode(mode));
    run.context.AbortMeasurementRequested.Set(true);
    for (const int status : {NotAskedFor, Watching, Awaiting}) {
        QCOMPARE(run.StepIn(status), NoChange);
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.Progress(), (QStringList{Running, RunningAbort}));
    }
    QVERIFY(run.context.AbortMeasurementRequested.Get());
}

void TestRCDMonitoringState::RCDAbortOfAPreparationStopsTheFunction_data()
{
    RCDAbortWithoutAPreparationStaysPending_data();
}

void TestRCDMonitoringState::RCDAbortOfAPreparationStopsTheFunction()
{
    QFETCH(const int, mode);
    Monitoring run(RCDSettingsOfMode(mode));
    run.context.AbortMeasurementRequested.Set(true);
    run.context.StartMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    run.AnswerByCommand({{'h', Wire::Acknowledge}, {'s', Wire::StartTest0Status}});
    QCOMPARE(run.StepOfARequest(Awaiting),
             QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.peer.RequestBytes(),
             (QList<QByteArray>{Wire::StopMeasurement, Wire::ReadStatus, Wire::ReadStatus}));
    QCOMPARE(run.Pauses(), StopPauses);
    QCOMPARE(run.Progress(), (QStringList{Running, RunningAbort}));
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
    QVERIFY(run.context.StartMeasurementRequested.Get());
}

void TestRCDMonitoringState::RCDAbortOfAnIdleInstrumentSendsNothing()
{
    Monitoring run;
    run.context.AbortMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::Monitoring);
    QCOMPARE(run.StepOfARequest(Awaiting),
             QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDMonitoringState::RCDAbortStopsUntilTheFunctionIsOver()
{
    Monitoring run;
    run.context.AbortMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    const QByteArray stopping = RCDWire::Status(8);
    run.peer.AnswerInTurn({Wire::Acknowledge, stopping, stopping, Wire::Acknowledge, Wire::StartTest0Status,
                           stopping, Wire::Acknowledge, stopping, Wire::StartTest0Status});
    run.StepOfARequest(Watching);
    QCOMPARE(run.Commands(), QByteArray("hsshsshss")); // It is the second status that counts.
    QCOMPARE(run.Pauses(), QStringLiteral("200 200 200 200 200 200"));
    QVERIFY(!run.context.AbortMeasurementRequested.Get());
    QCOMPARE(run.Phase(), -1);
}

void TestRCDMonitoringState::RCDAbortThatFailsStaysPending_data()
{
    QTest::addColumn<QList<QByteArray>>("answers");
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<QString>("pauses");
    const QByteArray running = RCDWire::Status(7);
    const auto row = [](const char* name, const QList<QByteArray>& answers, const char* commands,
                        const char* pauses) {
        QTest::newRow(name) << answers << QByteArray(commands) << QString(QLatin1String(pauses));
    };
    row("stop refused", {Wire::Refusal}, "h", "");
    row("first status refused", {Wire::Acknowledge, Wire::Refusal}, "hs", "200");
    row("second status refused", {Wire::Acknowledge, running, Wire::Refusal}, "hss", "200 200");
    row("second status damaged, the function over",
        {Wire::Acknowledge, Wire::StartTest0Status, Wire::DamagedStatus}, "hss", "200 200");
    row("second stop refused", {Wire::Acknowledge, running, running, Wire::Refusal}, "hssh", "200 200");
}

void TestRCDMonitoringState::RCDAbortThatFailsStaysPending()
{
    QFETCH(const QList<QByteArray>, answers);
    QFETCH(const QByteArray, commands);
    QFETCH(const QString, pauses);
    Monitoring run;
    run.context.AbortMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    run.peer.AnswerInTurn(answers);
    QCOMPARE(run.StepOfARequest(Awaiting), QStringLiteral("CommunicationError=1"));
    QCOMPARE(run.Commands(), commands);
    QCOMPARE(run.Pauses(), pauses);
    QVERIFY(run.context.AbortMeasurementRequested.Get());
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::RCDAbortIsResumed_data()
{
    QTest::addColumn<QList<QByteArray>>("answers");
    QTest::addColumn<QByteArray>("commands");
    QTest::newRow("function still there") << QList<QByteArray>{Wire::Refusal} << QByteArray("hss");
    QTest::newRow("function over meanwhile")
        << QList<QByteArray>{Wire::Acknowledge, Wire::StartTest0Status, Wire::Refusal} << QByteArray();
}

void TestRCDMonitoringState::RCDAbortIsResumed()
{
    QFETCH(const QList<QByteArray>, answers);
    QFETCH(const QByteArray, commands);
    Monitoring run;
    run.context.AbortMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    run.peer.AnswerInTurn(answers);
    run.StepOfARequest(Awaiting);
    run.AnswerByCommand({{'h', Wire::Acknowledge}, {'s', Wire::StartTest0Status}});
    QCOMPARE(run.Step(), QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.Commands(), commands);
}

void TestRCDMonitoringState::RCDIECAbortIsForgotten()
{
    Monitoring run(RCDIECSettingsOfMode(1));
    run.context.AbortMeasurementRequested.Set(true);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCDIEC);
    QCOMPARE(run.StepOfARequest(Awaiting),
             QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.Progress(),
             (QStringList{Running, RunningAbort, RunningAbortIEC, QStringLiteral("1"), QStringLiteral("3")}));
    QCOMPARE(run.Commands(), QByteArray());
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::RCDIECAbortWithAnErrorWithdrawsThePreparation()
{
    Monitoring run(RCDIECSettingsOfMode(3));
    run.context.AbortMeasurementRequested.Set(true);
    run.SetError(521);
    QCOMPARE(
        run.StepOfARequest(Awaiting),
        QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1 PrepareMeasurementRequested=0"));
    QCOMPARE(run.Progress(), (QStringList{Running, RunningAbort, RunningAbortIEC, RunningAbortIECError,
                                          QStringLiteral("1"), QStringLiteral("3")}));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDMonitoringState::RCDIECAbortGoesOnWithTheStep()
{
    Monitoring run(RCDIECSettingsOfMode(1));
    run.context.AbortMeasurementRequested.Set(true);
    run.context.StartMeasurementRequested.Set(true);
    QCOMPARE(run.Step(), QStringLiteral("AbortMeasurementRequested=0"));
    QCOMPARE(run.Progress(),
             (QStringList{Running, RunningAbort, RunningAbortIEC, QStringLiteral("1"), QStringLiteral("2")}));
    QVERIFY(run.context.StartMeasurementRequested.Get());
}

void TestRCDMonitoringState::AbortWithOtherSettingsStaysPending()
{
    Monitoring run(new MeasurementSettings(MeasurementType::RLN, nullptr));
    run.context.AbortMeasurementRequested.Set(true);
    QCOMPARE(run.StepOfARequest(Awaiting), NoChange);
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Progress().mid(0, 2), (QStringList{Running, RunningAbort}));
}

void TestRCDMonitoringState::NothingBeginsUnasked_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("no error") << 15;
    QTest::newRow("an error") << 521;
}

void TestRCDMonitoringState::NothingBeginsUnasked()
{
    QFETCH(const int, error);
    Monitoring run;
    run.SetError(error);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    QCOMPARE(run.Step(), NoChange);
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.Pauses(), NoPause);
}

void TestRCDMonitoringState::RequestBeginsAPreparation()
{
    Monitoring run;
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD); // Of no concern without an error.
    QCOMPARE(run.StepOfARequest(NotAskedFor), QStringLiteral("MeasurementStatus=1"));
    QCOMPARE(run.Commands(), QByteArray());
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::RequestAfterAnErrorStopsTheFunctionFirst()
{
    Monitoring run;
    run.SetError(521);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    run.AnswerByCommand({{'h', Wire::Acknowledge}, {'s', RCDWire::StartTest(0, false, 3)}});
    QCOMPARE(run.StepOfARequest(NotAskedFor), QStringLiteral("ErrorCode=3 MeasurementStatus=1"));
    QCOMPARE(run.peer.RequestBytes(),
             (QList<QByteArray>{Wire::StopMeasurement, Wire::ReadStatus, Wire::ReadStatus}));
    QCOMPARE(run.Pauses(), StopPauses);
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::RequestAfterAnErrorOnAnIdleInstrumentSendsNothing()
{
    Monitoring run;
    run.SetError(521);
    run.context.CurrentMeasurementType.Set(MeasurementType::Monitoring);
    QCOMPARE(run.StepOfARequest(NotAskedFor), QStringLiteral("MeasurementStatus=1"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDMonitoringState::StopThatFailsBeforeAPreparationIsResumed_data()
{
    RCDAbortThatFailsStaysPending_data();
}

void TestRCDMonitoringState::StopThatFailsBeforeAPreparationIsResumed()
{
    QFETCH(const QList<QByteArray>, answers);
    QFETCH(const QByteArray, commands);
    QFETCH(const QString, pauses);
    Monitoring run;
    run.SetError(3);
    run.context.CurrentMeasurementType.Set(MeasurementType::RCD);
    run.peer.AnswerInTurn(answers);
    run.StepOfARequest(NotAskedFor);
    QCOMPARE(run.Commands(), commands);
    QCOMPARE(run.Pauses(), pauses);
    QVERIFY(run.context.CommunicationError.Get());
    QCOMPARE(run.Phase(), NotAskedFor);
    run.SetError(3);
    run.AnswerByCommand({{'h', Wire::Acknowledge}, {'s', Wire::StartTest0Status}});
    run.Step();
    QCOMPARE(run.Phase(), Awaiting);
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::RequestBeginsWithFullBudgets_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("no error") << 15;
    QTest::newRow("an error") << 521;
}

void TestRCDMonitoringState::RequestBeginsWithFullBudgets()
{
    QFETCH(const int, error);
    Monitoring run;
    run.context.CurrentMeasurementType.Set(MeasurementType::Monitoring);
    for (int round = 0; round < 2; ++round) { // Together more than each budget allows.
        run.SetError(error);
        QCOMPARE(run.StepOfARequest(NotAskedFor), QStringLiteral("MeasurementStatus=1"));
        run.SetError(15);
        run.peer.AnswerAlways(Wire::IdleStatus);
        for (int status = 0; status < 6; ++status) {
            QCOMPARE(run.StepOfARequest(Awaiting), NoChange);
        }
        run.peer.AnswerAlways(Wire::StartTest0Status);
        for (int prepare = 0; prepare < 2; ++prepare) {
            QCOMPARE(run.StepOfARequest(Preparing), NoChange);
        }
        run.context.PrepareMeasurementRequested.Set(false);
        run.peer.AnswerAlways(Wire::Refusal);
        for (int poll = 0; poll < 4; ++poll) {
            QCOMPARE(run.StepIn(Watching), NoChange);
        }
    }
}

/// The fourth counter is reset on entry alone.
void TestRCDMonitoringState::RequestDoesNotRenewTheStarts()
{
    struct Counting : RCDMonitoringState {
        using RCDMonitoringState::_startAttempts;
        using RCDMonitoringState::RCDMonitoringState;
    };
    RCDRun run(Create<Counting>, RCDSettingsOfMode(0));
    auto& state = static_cast<Counting&>(*run.state);
    state._startAttempts = 2;
    run.context.PrepareMeasurementRequested.Set(true);
    run.StepIn(NotAskedFor);
    QCOMPARE(state._startAttempts, 2);
    run.state->OnEntry();
    QCOMPARE(state._startAttempts, 0);
}

void TestRCDMonitoringState::AwaitsTheInstrument_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    const QString ready = QStringLiteral("MeasurementStatus=2");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) { QTest::newRow(name) << answer << outcome << pauses; };
    for (int test = 0; test < 16; ++test) {
        const bool isPassed = test == 14 || test == 15;
        QTest::addRow("start test %d, new", test)
            << RCDWire::StartTest(test, true) << (isPassed ? ready : NoChange)
            << (isPassed ? NoPause : Pause);
    }
    row("start test 14, not new", RCDWire::StartTest(14, false), NoChange, Pause);
    row("start test 15, not new", RCDWire::StartTest(15, false), NoChange, Pause);
    row("start test 14, error 0", RCDWire::StartTest(14, true, 0), QStringLiteral("ErrorCode=0"), Pause);
    row("start test 15, error 14", RCDWire::StartTest(15, true, 14), QStringLiteral("ErrorCode=14"), Pause);
    row("RCD", RCDWire::Status(0), ready, NoPause);
    row("RCD, error 3", RCDWire::Status(0, false, 3), QStringLiteral("ErrorCode=523 MeasurementStatus=2"),
        NoPause);
    row("RCD IEC", RCDWire::IECStatus(0), ready, NoPause);
    row("another function, error 4", MeasurementEngine::Status(MeasurementType::RPE, 7, false, 4),
        QStringLiteral("ErrorCode=4 MeasurementStatus=2"), NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("silence", Wire::Silence, NoChange, NoPause);
}

void TestRCDMonitoringState::AwaitsTheInstrument()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Monitoring run;
    run.peer.AnswerAlways(answer);
    QCOMPARE(run.StepOfARequest(Awaiting), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    QCOMPARE(run.Pauses(), pauses);
    QVERIFY(run.context.PrepareMeasurementRequested.Get());
}

void TestRCDMonitoringState::AwaitingGivesUpAfterNineStatuses()
{
    Monitoring run;
    run.context.PrepareMeasurementRequested.Set(true);
    run.SetPhase(Awaiting);
    run.peer.AnswerInTurn({Wire::IdleStatus, RCDWire::StartTest(13, true), Wire::Refusal, Wire::DamagedStatus,
                           Wire::Acknowledge, Wire::IdleStatus, Wire::Acknowledge, Wire::IdleStatus,
                           Wire::IdleStatus, Wire::ReadyStatus});
    for (int status = 0; status < 9; ++status) {
        QCOMPARE(run.Step(), NoChange);
        QCOMPARE(run.Commands(), QByteArray("s"));
    }
    QCOMPARE(run.context.StartTestStatus.Get(), StartTestResult::Status14);
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=400 PrepareMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.Commands(), QByteArray());
    QCOMPARE(run.context.StartTestStatus.Get(), StartTestResult::Unknown);
}

void TestRCDMonitoringState::AwaitingTellsWhatItFound()
{
    Monitoring run;
    run.peer.AnswerInTurn(
        {RCDWire::StartTest(12, true), RCDWire::StartTest(12, true, 3), RCDWire::Status(0)});
    const auto lastLine = [&run] { return run.log.Texts().constLast().simplified(); };
    run.StepOfARequest(Awaiting);
    QVERIFY2(lastLine().contains(QRegularExpression(QStringLiteral("no Error, status: ?12$"))),
             qPrintable(lastLine()));
    run.Step();
    QVERIFY2(lastLine().contains(QStringLiteral("Error else, status:")), qPrintable(lastLine()));
    run.Step();
    QVERIFY2(lastLine().contains(QStringLiteral("currentMesuarment type != monitoringMode:")),
             qPrintable(lastLine()));
}

void TestRCDMonitoringState::PreparesTheTest_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    QTest::newRow("acknowledged") << Wire::Acknowledge
                                  << QStringLiteral("MeasurementStatus=0 PrepareMeasurementRequested=0")
                                  << NoPause;
    QTest::newRow("refused") << Wire::Refusal << NoChange << Pause;
    QTest::newRow("damaged") << Wire::DamagedStatus << NoChange << Pause;
    QTest::newRow("data") << Wire::StartTest0Status << NoChange << NoPause;
    QTest::newRow("silence") << Wire::Silence << NoChange << NoPause;
}

void TestRCDMonitoringState::PreparesTheTest()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Monitoring run;
    run.peer.AnswerAlways(answer);
    QCOMPARE(run.StepOfARequest(Preparing), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{RCDWire::PrepareUbRe});
    QCOMPARE(run.Pauses(), pauses);
}

void TestRCDMonitoringState::SettingsPreparedMeanwhileStayRequested()
{
    Monitoring run;
    run.PrepareWhilePreparing(RCDSettingsOfMode(1));
    QCOMPARE(run.StepOfARequest(Preparing),
             QStringLiteral("TestSettings MeasurementStatus=0 PrepareMeasurementRequested=0 "
                            "PrepareMeasurementRequested=1"));
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{RCDWire::PrepareUbRe});
}

void TestRCDMonitoringState::PreparingGivesUpAfterThreeRequests()
{
    Monitoring run;
    run.context.PrepareMeasurementRequested.Set(true);
    run.SetPhase(Preparing);
    run.peer.AnswerInTurn({Wire::Refusal, Wire::StartTest0Status, Wire::DamagedStatus, Wire::Acknowledge});
    for (int prepare = 0; prepare < 3; ++prepare) {
        QCOMPARE(run.Step(), NoChange);
        QCOMPARE(run.Commands(), QByteArray("P"));
    }
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=200 PrepareMeasurementRequested=0 MeasurementStatus=-1"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDMonitoringState::WatchesThePreparedTest_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QString>("pauses");
    const QString otherFunction = QStringLiteral("ErrorCode=398 MeasurementStatus=-1");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) { QTest::newRow(name) << answer << outcome << pauses; };
    for (const bool isNew : {false, true}) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            if (state == 3 && isNew) {
                continue; // Asks for more.
            }
            QTest::addRow("function state %d, %s", state, isNew ? "new" : "not new")
                << RCDWire::Status(state, isNew) << (state == 4 ? QStringLiteral("ErrorCode=15") : NoChange)
                << (state == 4 || state == 2 ? Pause : NoPause);
        }
    }
    row("error 0", RCDWire::Status(4, false, 0), QStringLiteral("ErrorCode=520 MeasurementStatus=-1"),
        NoPause);
    row("error 14", RCDWire::Status(3, true, 14), QStringLiteral("ErrorCode=534 MeasurementStatus=-1"),
        NoPause);
    row("error 5", RCDWire::Status(2, false, 5), QStringLiteral("ErrorCode=525 MeasurementStatus=-1"),
        NoPause);
    row("RCD IEC", RCDWire::IECStatus(4), otherFunction, NoPause);
    row("RCD IEC, error 5", RCDWire::IECStatus(4, false, 5), otherFunction, NoPause);
    row("RCD IEC, check", RCDWire::IECStatus(3, true), otherFunction, NoPause);
    row("no function", Wire::StartTest0Status,
        QStringLiteral("ErrorCode=15 ErrorCode=398 MeasurementStatus=-1"), NoPause);
    row("another function, error 4", MeasurementEngine::Status(MeasurementType::RPE, 4, false, 4),
        QStringLiteral("ErrorCode=4 ErrorCode=398 MeasurementStatus=-1"), NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("silence", Wire::Silence, NoChange, NoPause);
}

void TestRCDMonitoringState::WatchesThePreparedTest()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Monitoring run;
    run.peer.AnswerAlways(answer);
    run.SetError(501);
    QCOMPARE(run.StepIn(Watching), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    QCOMPARE(run.Pauses(), pauses);
}

void TestRCDMonitoringState::WatchedTestIsCheckedWhenPrepareFailed_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    QTest::newRow("clean") << RCDWire::ObjectCheck(0) << QStringLiteral("ErrorCode=15");
    QTest::newRow("code 2") << RCDWire::ObjectCheck(2) << NoChange; // It is 501 already.
    QTest::newRow("code 3") << RCDWire::ObjectCheck(3) << QStringLiteral("ErrorCode=502");
    QTest::newRow("code 10") << RCDWire::ObjectCheck(10) << QStringLiteral("ErrorCode=507");
    QTest::newRow("code 11") << RCDWire::ObjectCheck(11) << QStringLiteral("ErrorCode=500");
    QTest::newRow("acknowledged") << Wire::Acknowledge << NoChange;
    QTest::newRow("refused") << Wire::Refusal << NoChange;
    QTest::newRow("damaged") << Wire::DamagedStatus << NoChange;
    QTest::newRow("silence") << Wire::Silence << NoChange;
}

void TestRCDMonitoringState::WatchedTestIsCheckedWhenPrepareFailed()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    Monitoring run;
    run.AnswerByCommand({{'s', RCDWire::Status(3, true)}, {'e', answer}});
    run.SetError(501);
    QCOMPARE(run.StepIn(Watching), outcome);
    QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
    QCOMPARE(run.Phase(), Watching);
}

void TestRCDMonitoringState::WatchingGivesUpAfterSixFailures()
{
    Monitoring run;
    run.SetPhase(Watching);
    run.peer.AnswerInTurn({Wire::Refusal, Wire::DamagedStatus, Wire::Refusal, Wire::Silence, Wire::Refusal,
                           Wire::DamagedStatus, RCDWire::Status(4)});
    for (int poll = 0; poll < 6; ++poll) {
        QCOMPARE(run.Step(), NoChange);
        QCOMPARE(run.Commands(), QByteArray("s"));
    }
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=-1"));
    QCOMPARE(run.Commands(), QByteArray());
}

void TestRCDMonitoringState::WatchingCountsFromTheLastAnswer()
{
    Monitoring run;
    run.SetPhase(Watching);
    const auto fail = [&run](int times) {
        run.peer.AnswerAlways(Wire::Refusal);
        for (int poll = 0; poll < times; ++poll) {
            QCOMPARE(run.Step(), NoChange);
            QCOMPARE(run.Commands(), QByteArray("s"));
        }
    };
    fail(5);
    run.peer.AnswerAlways(RCDWire::Status(4));
    QCOMPARE(run.Step(), NoChange);
    fail(6);
    QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=-1"));
}

void TestRCDMonitoringState::AcknowledgedWatchIsNotCounted()
{
    Monitoring run;
    run.SetPhase(Watching);
    run.peer.AnswerAlways(Wire::Acknowledge);
    for (int poll = 0; poll < 12; ++poll) {
        QCOMPARE(run.Step(), NoChange);
        QCOMPARE(run.Commands(), QByteArray("s"));
    }
}

void TestRCDMonitoringState::NewRequestBeginsThePreparationAnew_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    const QString anew = QStringLiteral("MeasurementStatus=-1");
    const QString lost = QStringLiteral(" PrepareMeasurementRequested=0 MeasurementStatus=-1");
    QTest::newRow("prepared") << RCDWire::Status(4) << anew;
    QTest::newRow("waiting") << RCDWire::Status(2) << anew;
    QTest::newRow("another state") << RCDWire::Status(7) << anew;
    QTest::newRow("check") << RCDWire::Status(3, true) << QStringLiteral("ErrorCode=502 ") + anew;
    QTest::newRow("refused") << Wire::Refusal << anew;
    QTest::newRow("damaged") << Wire::DamagedStatus << anew;
    QTest::newRow("silence") << Wire::Silence << anew;
    QTest::newRow("error 3") << RCDWire::Status(4, false, 3) << QStringLiteral("ErrorCode=523") + lost;
    QTest::newRow("RCD IEC") << RCDWire::IECStatus(4) << QStringLiteral("ErrorCode=398") + lost;
}

void TestRCDMonitoringState::NewRequestBeginsThePreparationAnew()
{
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    Monitoring run;
    run.AnswerByCommand({{'s', answer}, {'e', RCDWire::ObjectCheck(3)}});
    QCOMPARE(run.StepOfARequest(Watching), outcome);
}

void TestRCDMonitoringState::ExhaustedWatchWithdrawsANewRequest()
{
    Monitoring run;
    run.SetPhase(Watching);
    run.peer.AnswerAlways(Wire::Refusal);
    for (int poll = 0; poll < 6; ++poll) {
        QCOMPARE(run.Step(), NoChange);
    }
    QCOMPARE(run.StepOfARequest(Watching),
             QStringLiteral("ErrorCode=401 PrepareMeasurementRequested=0 MeasurementStatus=-1"));
}

void TestRCDMonitoringState::RequestsWaitHalfASecond_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("awaiting") << Awaiting << QByteArray("s");
    QTest::newRow("preparing") << Preparing << QByteArray("P");
    QTest::newRow("watching") << Watching << QByteArray("s");
}

void TestRCDMonitoringState::RequestsWaitHalfASecond()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, command);
    constexpr int OrdinaryTimeout = 4000;
    Monitoring run;
    run.transciever.SetMaxRetransmissions(2); // Of no concern to a request that is sent once.
    QElapsedTimer time;
    time.start();
    QCOMPARE(run.StepIn(status), NoChange);
    QVERIFY(time.elapsed() >= 500);
    QVERIFY(time.elapsed() < OrdinaryTimeout);
    QCOMPARE(run.Commands(), command);
}

void TestRCDMonitoringState::PreparationRunsThrough()
{
    Monitoring run;
    run.context.PrepareMeasurementRequested.Set(true);
    run.peer.AnswerInTurn(
        {Wire::IdleStatus, Wire::ReadyStatus, Wire::Acknowledge, RCDWire::Status(2), RCDWire::Status(4)});
    QStringList outcomes;
    for (int step = 0; step < 6; ++step) {
        outcomes.append(run.Step());
    }
    QCOMPARE(outcomes, (QStringList{QStringLiteral("MeasurementStatus=1"), NoChange,
                                    QStringLiteral("MeasurementStatus=2"),
                                    QStringLiteral("MeasurementStatus=0 PrepareMeasurementRequested=0"),
                                    NoChange, NoChange}));
}

QTEST_GUILESS_MAIN(TestRCDMonitoringState)
#include "tst_rcdmonitoringstate.moc"
