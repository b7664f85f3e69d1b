#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include "states/rcd/rcdmonitoringstate.h"
#include "unit/machine/conditions.h"
#include "unit/states/rcdrun.h"

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
    Monitoring() : RCDRun(Create<RCDMonitoringState>, RCDSettingsOfMode(0)) {}

    /// One step of a preparation that has been asked for.
    QString StepOfARequest(int status)
    {
        context.PrepareMeasurementRequested.Set(true);
        return StepIn(status);
    }

    /// How far a step came, by the lines that tell it: a word for each banner, and the numbers.
    QString Progress() const
    {
        const QString beginning = Plain("RUNING RCD MONITORING STATE");
        const QMap<QString, QString> banners{
            {Banner("RUNING RCD MONITORING STATE"), QStringLiteral("running")},
            {Banner("RUNING RCD MONITORING STATE is abort"), QStringLiteral("abort")},
            {Banner("RUNING RCD MONITORING STATE rcdiec"), QStringLiteral("rcdiec")},
            {Banner("RUNING RCD MONITORING STATE rcdiec no error"), QStringLiteral("error")}};
        QStringList progress;
        for (const QString& text : log.Texts()) {
            if (text.startsWith(QLatin1String("\033[0;34m<<<"))) {
                progress.append(banners.value(text, text));
            } else if (text.startsWith(beginning)) {
                progress.append(text.mid(beginning.size() + 1, 1));
            }
        }
        return progress.join(QLatin1Char(' '));
    }

    static QString Plain(const char* text)
    {
        return QLatin1String("<<<") + QString(30, QLatin1Char(' ')) + QLatin1String(text);
    }
};

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

/// A row of a step that begins with these cells: what the instrument answers, the changes of cells that come
/// of it, the commands, and the pauses.
void AddStep(const QByteArray& cells, const char* name, const QList<QByteArray>& answers,
             const QString& outcome, const QByteArray& commands, const QString& pauses = NoPause)
{
    QTest::addRow("%s: %s", cells.constData(), name) << cells << answers << outcome << commands << pauses;
}

void AddStepsThatDoNothing()
{
    for (const char* settings : {"RCD=-1", "RCD=1", "RCD=2", "RCD=3", "RCDIEC=-1", "RCDIEC=0", "RCDIEC=1",
                                 "RCDIEC=3", "Settings=1", "Settings=-1", "StartMeasurementRequested"}) {
        for (const char* status : {"-1", "0", "1", "2"}) {
            AddStep(QByteArray(settings) + " PrepareMeasurementRequested MeasurementStatus=" + status,
                    "nothing", {}, NoChange, {});
        }
    }
    for (const int status : {-2, 3, 4, 5, 6, 7, 8}) {
        AddStep("PrepareMeasurementRequested MeasurementStatus=" + QByteArray::number(status), "nothing", {},
                NoChange, {});
    }
    for (const char* settings : {"RCD=0", "RCD=1"}) {
        for (const char* status : {"-1", "0", "1"}) {
            AddStep(QByteArray(settings) + " AbortMeasurementRequested MeasurementStatus=" + status,
                    "stays pending", {}, NoChange, {});
        }
    }
    AddStep("Settings=1 AbortMeasurementRequested PrepareMeasurementRequested MeasurementStatus=1",
            "stays pending", {}, NoChange, {});
    for (const char* error : {"15", "521"}) {
        AddStep(QByteArray("CurrentMeasurementType=10 ErrorCode=") + error, "nothing begins unasked", {},
                NoChange, {});
    }
}

void AddAborts()
{
    const QString aborted = QStringLiteral("AbortMeasurementRequested=0 MeasurementStatus=-1");
    const QByteArray abort = "AbortMeasurementRequested PrepareMeasurementRequested MeasurementStatus=1 ";
    for (const char* settings : {"RCD=0", "RCD=1"}) {
        AddStep(abort + "StartMeasurementRequested CurrentMeasurementType=10 " + settings,
                "the function is stopped",
                {Wire::Acknowledge, Wire::StartTest0Status, Wire::StartTest0Status}, aborted, "hss",
                StopPauses);
    }
    AddStep(abort + "CurrentMeasurementType=0", "no function", {}, aborted, {});
    const QByteArray stopping = RCDWire::Status(8);
    AddStep(abort + "CurrentMeasurementType=10", "until the second status tells that the function is over",
            {Wire::Acknowledge, stopping, stopping, Wire::Acknowledge, Wire::StartTest0Status, stopping,
             Wire::Acknowledge, stopping, Wire::StartTest0Status},
            aborted, "hsshsshss", QStringLiteral("200 200 200 200 200 200"));
    AddStep(abort + "RCDIEC=1 CurrentMeasurementType=11", "forgotten", {}, aborted, {});
    AddStep(abort + "RCDIEC=3 ErrorCode=521", "the preparation is withdrawn", {},
            aborted + QStringLiteral(" PrepareMeasurementRequested=0"), {});
    AddStep("RCDIEC=1 AbortMeasurementRequested StartMeasurementRequested", "forgotten", {},
            QStringLiteral("AbortMeasurementRequested=0"), {});
}

void AddBeginnings()
{
    const QString begun = QStringLiteral("MeasurementStatus=1");
    const QByteArray stopped = RCDWire::StartTest(0, false, 3);
    AddStep("PrepareMeasurementRequested CurrentMeasurementType=10", "begins", {}, begun, {});
    AddStep("PrepareMeasurementRequested CurrentMeasurementType=10 ErrorCode=521", "stops the function first",
            {Wire::Acknowledge, stopped, stopped}, QStringLiteral("ErrorCode=3 ") + begun, "hss", StopPauses);
    AddStep("PrepareMeasurementRequested CurrentMeasurementType=0 ErrorCode=521", "begins", {}, begun, {});
}

void AddAwaitingSteps()
{
    const QString ready = QStringLiteral("MeasurementStatus=2");
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) {
        AddStep("PrepareMeasurementRequested MeasurementStatus=1", name, {answer}, outcome, "s", pauses);
    };
    for (int test = 0; test < 16; ++test) {
        const bool isPassed = test == 14 || test == 15;
        row(("start test, new " + QByteArray::number(test)).constData(), RCDWire::StartTest(test, true),
            isPassed ? ready : NoChange, isPassed ? NoPause : Pause);
    }
    row("start test 14, not new", RCDWire::StartTest(14, false), NoChange, Pause);
    row("start test 15, not new", RCDWire::StartTest(15, false), NoChange, Pause);
    row("start test 14, error 0", RCDWire::StartTest(14, true, 0), QStringLiteral("ErrorCode=0"), Pause);
    row("start test 15, error 14", RCDWire::StartTest(15, true, 14), QStringLiteral("ErrorCode=14"), Pause);
    row("RCD", RCDWire::Status(0), ready, NoPause);
    row("RCD, error 3", RCDWire::Status(0, false, 3), QStringLiteral("ErrorCode=523 ") + ready, NoPause);
    row("RCD IEC", RCDWire::IECStatus(0), ready, NoPause);
    row("another function, error 4", Wire::Status(2, 7, false, 4), QStringLiteral("ErrorCode=4 ") + ready,
        NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("silence", Wire::Silence, NoChange, NoPause);
}

void AddPreparingSteps()
{
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) {
        AddStep("PrepareMeasurementRequested MeasurementStatus=2", name, {answer}, outcome, "P", pauses);
    };
    row("acknowledged", Wire::Acknowledge,
        QStringLiteral("MeasurementStatus=0 PrepareMeasurementRequested=0"), NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
    row("data", Wire::StartTest0Status, NoChange, NoPause);
    row("silence", Wire::Silence, NoChange, NoPause);
}

void AddWatchingSteps()
{
    const QString end = QStringLiteral(" MeasurementStatus=-1");
    const QString otherFunction = QStringLiteral("ErrorCode=398") + end;
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome,
                        const QString& pauses) {
        AddStep("ErrorCode=501 MeasurementStatus=0", name, {answer}, outcome, "s", pauses);
    };
    for (const bool isNew : {false, true}) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            if (state == 3 && isNew) {
                continue; // Asks for more.
            }
            row(((isNew ? "new, function state " : "function state ") + QByteArray::number(state))
                    .constData(),
                RCDWire::Status(state, isNew), state == 4 ? QStringLiteral("ErrorCode=15") : NoChange,
                state == 4 || state == 2 ? Pause : NoPause);
        }
    }
    row("error 0", RCDWire::Status(4, false, 0), QStringLiteral("ErrorCode=520") + end, NoPause);
    row("error 14", RCDWire::Status(3, true, 14), QStringLiteral("ErrorCode=534") + end, NoPause);
    row("error 5", RCDWire::Status(2, false, 5), QStringLiteral("ErrorCode=525") + end, NoPause);
    row("RCD IEC", RCDWire::IECStatus(4), otherFunction, NoPause);
    row("RCD IEC, error 5", RCDWire::IECStatus(4, false, 5), otherFunction, NoPause);
    row("RCD IEC, check", RCDWire::IECStatus(3, true), otherFunction, NoPause);
    row("no function", Wire::StartTest0Status, QStringLiteral("ErrorCode=15 ") + otherFunction, NoPause);
    row("another function, error 4", Wire::Status(2, 4, false, 4),
        QStringLiteral("ErrorCode=4 ") + otherFunction, NoPause);
    row("refused", Wire::Refusal, NoChange, Pause);
    row("damaged", Wire::DamagedStatus, NoChange, Pause);
    row("acknowledged", Wire::Acknowledge, NoChange, NoPause);
    row("silence", Wire::Silence, NoChange, NoPause);
}

void AddChecks()
{
    const auto row = [](const char* name, const QByteArray& answer, const QString& outcome) {
        AddStep("ErrorCode=501 MeasurementStatus=0", name, {RCDWire::Status(3, true), answer}, outcome, "se");
    };
    row("clean", RCDWire::ObjectCheck(0), QStringLiteral("ErrorCode=15"));
    row("code 2", RCDWire::ObjectCheck(2), NoChange); // It is 501 already.
    row("code 3", RCDWire::ObjectCheck(3), QStringLiteral("ErrorCode=502"));
    row("code 10", RCDWire::ObjectCheck(10), QStringLiteral("ErrorCode=507"));
    row("code 11", RCDWire::ObjectCheck(11), QStringLiteral("ErrorCode=500"));
    row("acknowledged", Wire::Acknowledge, NoChange);
    row("refused", Wire::Refusal, NoChange);
    row("damaged", Wire::DamagedStatus, NoChange);
    row("silence", Wire::Silence, NoChange);
}

/// A new request begins the preparation anew.
void AddWatchingStepsWithARequest()
{
    const QString anew = QStringLiteral("MeasurementStatus=-1");
    const QString lost = QStringLiteral(" PrepareMeasurementRequested=0 ") + anew;
    const auto row = [](const char* name, const QList<QByteArray>& answers, const QString& outcome,
                        const char* commands, const QString& pauses) {
        AddStep("PrepareMeasurementRequested MeasurementStatus=0", name, answers, outcome, commands, pauses);
    };
    row("prepared", {RCDWire::Status(4)}, anew, "s", Pause);
    row("waiting", {RCDWire::Status(2)}, anew, "s", Pause);
    row("another state", {RCDWire::Status(7)}, anew, "s", NoPause);
    row("check", {RCDWire::Status(3, true), RCDWire::ObjectCheck(3)}, QStringLiteral("ErrorCode=502 ") + anew,
        "se", NoPause);
    row("refused", {Wire::Refusal}, anew, "s", Pause);
    row("damaged", {Wire::DamagedStatus}, anew, "s", Pause);
    row("silence", {Wire::Silence}, anew, "s", NoPause);
    row("error 3", {RCDWire::Status(4, false, 3)}, QStringLiteral("ErrorCode=523") + lost, "s", NoPause);
    row("RCD IEC", {RCDWire::IECStatus(4)}, QStringLiteral("ErrorCode=398") + lost, "s", NoPause);
}

} // namespace

class TestRCDMonitoringState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryResetsTheBudgets()
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

    void StepTellsHowFarItCame_data()
    {
        QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<QString>("progress");
        const auto row = [](const char* cells, const char* progress) {
            QTest::newRow(cells) << QByteArray(cells) << QString(QLatin1String(progress));
        };
        row("RCD=0", "running 1 3 4 5");
        row("RCD=0 StartMeasurementRequested", "running 1 2");
        row("RCD=1", "running 1 3 4");
        row("RCD=2", "running 1 3 4");
        row("RCD=1 StartMeasurementRequested", "running 1 2");
        row("RCD=-1", "running 1 3 4");
        row("RCDIEC=1", "running 1 3");
        row("RCDIEC=3", "running 1 3");
        row("RCDIEC=3 StartMeasurementRequested", "running 1 2");
        row("Settings=1", "running 1 3");
        row("RCD=0 AbortMeasurementRequested", "running abort");
        row("RCD=1 AbortMeasurementRequested PrepareMeasurementRequested", "running abort");
        row("RCDIEC=1 AbortMeasurementRequested", "running abort rcdiec 1 3");
        row("RCDIEC=1 AbortMeasurementRequested StartMeasurementRequested", "running abort rcdiec 1 2");
        row("RCDIEC=3 AbortMeasurementRequested ErrorCode=521", "running abort rcdiec error 1 3");
        row("Settings=1 AbortMeasurementRequested", "running abort 1 3");
    }

    void StepTellsHowFarItCame()
    {
        QFETCH(const QByteArray, cells);
        Monitoring run;
        SetCells(run.context, cells);
        run.Step();
        QTEST(run.Progress(), "progress");
        QCOMPARE(run.log.Messages().constLast().type, QtWarningMsg);
        QCOMPARE(run.log.Messages().constLast().category, QByteArray("default"));
    }

    void StepTellsWhatItFound()
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

    void Step_data()
    {
        QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QByteArray>("commands");
        QTest::addColumn<QString>("pauses");
        AddStepsThatDoNothing();
        AddAborts();
        AddBeginnings();
        AddAwaitingSteps();
        AddPreparingSteps();
        AddWatchingSteps();
        AddChecks();
        AddWatchingStepsWithARequest();
    }

    void Step()
    {
        QFETCH(const QByteArray, cells);
        QFETCH(const QList<QByteArray>, answers);
        const QMap<char, QByteArray> frames{{'h', Wire::StopMeasurement},
                                            {'s', Wire::ReadStatus},
                                            {'e', Wire::ReadMeasurement},
                                            {'P', RCDWire::PrepareUbRe}};
        Monitoring run;
        SetCells(run.context, cells);
        run.peer.AnswerInTurn(answers);
        QTEST(run.Step(), "outcome");
        QTEST(run.Commands(), "commands");
        QTEST(run.Pauses(), "pauses");
        for (const QByteArray& request : run.peer.RequestBytes()) {
            QCOMPARE(request, frames.value(request.at(0)));
        }
    }

    void StopThatFailsIsResumed_data()
    {
        QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<QList<QByteArray>>("answers");
        QTest::addColumn<QByteArray>("commands");
        QTest::addColumn<QString>("pauses");
        QTest::addColumn<QByteArray>("commandsThen");
        const QByteArray running = RCDWire::Status(7);
        for (const char* cells : {"AbortMeasurementRequested", "ErrorCode=3"}) {
            const auto row = [cells](const char* name, const QList<QByteArray>& answers, const char* commands,
                                     const char* pauses, const char* commandsThen) {
                QTest::addRow("%s, %s", cells, name)
                    << QByteArray(cells) << answers << QByteArray(commands) << QString(QLatin1String(pauses))
                    << QByteArray(commandsThen);
            };
            row("stop refused", {Wire::Refusal}, "h", "", "hss");
            row("first status refused", {Wire::Acknowledge, Wire::Refusal}, "hs", "200", "hss");
            row("second status refused", {Wire::Acknowledge, running, Wire::Refusal}, "hss", "200 200",
                "hss");
            row("second status refused, the function over",
                {Wire::Acknowledge, Wire::StartTest0Status, Wire::Refusal}, "hss", "200 200", "");
            row("second status damaged, the function over",
                {Wire::Acknowledge, Wire::StartTest0Status, Wire::DamagedStatus}, "hss", "200 200", "");
            row("second stop refused", {Wire::Acknowledge, running, running, Wire::Refusal}, "hssh",
                "200 200", "hss");
        }
    }

    void StopThatFailsIsResumed()
    {
        QFETCH(const QByteArray, cells);
        QFETCH(const QList<QByteArray>, answers);
        Monitoring run;
        const bool isAbort = cells.startsWith("Abort");
        SetCells(run.context, cells + " PrepareMeasurementRequested CurrentMeasurementType=10");
        run.peer.AnswerInTurn(answers);
        const QString outcome = run.Step();
        QVERIFY2(outcome == QStringLiteral("CommunicationError=1") ||
                     (!isAbort && outcome == QStringLiteral("ErrorCode=15 CommunicationError=1")),
                 qPrintable(outcome));
        QTEST(run.Commands(), "commands");
        QTEST(run.Pauses(), "pauses");
        if (!isAbort) {
            run.SetError(3);
        }
        run.AnswerByCommand({{'h', Wire::Acknowledge}, {'s', Wire::StartTest0Status}});
        run.Step();
        QTEST(run.Commands(), "commandsThen");
        QVERIFY(!run.context.AbortMeasurementRequested.Get());
        QVERIFY(run.context.PrepareMeasurementRequested.Get());
        QCOMPARE(run.Phase(), isAbort ? NotAskedFor : Awaiting);
    }

    void RequestBeginsWithFullBudgets_data()
    {
        QTest::addColumn<int>("error");
        QTest::newRow("no error") << 15;
        QTest::newRow("an error") << 521;
    }

    void RequestBeginsWithFullBudgets()
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
    void RequestDoesNotRenewTheStarts()
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

    void AwaitingGivesUpAfterNineStatuses()
    {
        Monitoring run;
        run.context.PrepareMeasurementRequested.Set(true);
        run.SetPhase(Awaiting);
        run.peer.AnswerInTurn({Wire::IdleStatus, RCDWire::StartTest(13, true), Wire::Refusal,
                               Wire::DamagedStatus, Wire::Acknowledge, Wire::IdleStatus, Wire::Acknowledge,
                               Wire::IdleStatus, Wire::IdleStatus, Wire::ReadyStatus});
        for (int status = 0; status < 9; ++status) {
            QCOMPARE(run.Step(), NoChange);
            QCOMPARE(run.Commands(), QByteArray("s"));
        }
        QCOMPARE(run.context.StartTestStatus.Get(), StartTestResult::Status14);
        QCOMPARE(run.Step(),
                 QStringLiteral("ErrorCode=400 PrepareMeasurementRequested=0 MeasurementStatus=-1"));
        QCOMPARE(run.Commands(), QByteArray());
        QCOMPARE(run.context.StartTestStatus.Get(), StartTestResult::Unknown);
    }

    void AwaitingTellsWhatItFound()
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

    void SettingsPreparedMeanwhileStayRequested()
    {
        Monitoring run;
        run.PrepareWhilePreparing(RCDSettingsOfMode(1));
        QCOMPARE(run.StepOfARequest(Preparing),
                 QStringLiteral("TestSettings MeasurementStatus=0 PrepareMeasurementRequested=0 "
                                "PrepareMeasurementRequested=1"));
        QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{RCDWire::PrepareUbRe});
    }

    void PreparingGivesUpAfterThreeRequests()
    {
        Monitoring run;
        run.context.PrepareMeasurementRequested.Set(true);
        run.SetPhase(Preparing);
        run.peer.AnswerInTurn(
            {Wire::Refusal, Wire::StartTest0Status, Wire::DamagedStatus, Wire::Acknowledge});
        for (int prepare = 0; prepare < 3; ++prepare) {
            QCOMPARE(run.Step(), NoChange);
            QCOMPARE(run.Commands(), QByteArray("P"));
        }
        QCOMPARE(run.Step(),
                 QStringLiteral("ErrorCode=200 PrepareMeasurementRequested=0 MeasurementStatus=-1"));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void WatchingGivesUpAfterSixFailures()
    {
        Monitoring run;
        run.SetPhase(Watching);
        run.peer.AnswerInTurn({Wire::Refusal, Wire::DamagedStatus, Wire::Refusal, Wire::Silence,
                               Wire::Refusal, Wire::DamagedStatus, RCDWire::Status(4)});
        for (int poll = 0; poll < 6; ++poll) {
            QCOMPARE(run.Step(), NoChange);
            QCOMPARE(run.Commands(), QByteArray("s"));
        }
        QCOMPARE(run.Step(), QStringLiteral("ErrorCode=401 MeasurementStatus=-1"));
        QCOMPARE(run.Commands(), QByteArray());
    }

    void WatchingCountsFromTheLastAnswer()
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

    void AcknowledgedWatchIsNotCounted()
    {
        Monitoring run;
        run.SetPhase(Watching);
        run.peer.AnswerAlways(Wire::Acknowledge);
        for (int poll = 0; poll < 12; ++poll) {
            QCOMPARE(run.Step(), NoChange);
            QCOMPARE(run.Commands(), QByteArray("s"));
        }
    }

    void ExhaustedWatchWithdrawsANewRequest()
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

    void RequestsWaitHalfASecond_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("awaiting") << Awaiting << QByteArray("s");
        QTest::newRow("preparing") << Preparing << QByteArray("P");
        QTest::newRow("watching") << Watching << QByteArray("s");
    }

    void RequestsWaitHalfASecond()
    {
        QFETCH(const int, status);
        QFETCH(const QByteArray, command);
        Monitoring run;
        run.transciever.SetMaxRetransmissions(2); // Of no concern to a request that is sent once.
        QElapsedTimer time;
        time.start();
        QCOMPARE(run.StepIn(status), NoChange);
        QCOMPARE(time.elapsed(), 10 + 500 + 200);
        QCOMPARE(run.Commands(), command);
    }

    void PreparationRunsThrough()
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
};

QTEST_GUILESS_MAIN(TestRCDMonitoringState)
#include "tst_rcdmonitoringstate.moc"
