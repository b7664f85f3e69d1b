#include <array>
#include <memory>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/hvtestsettings.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rperesults.h>
#include <Vesmar/rpesettings.h>

#include "states/measurement/continuousmeasurementrunningstate.h"
#include "states/measurement/hvtestcontinuousmeasurementrunningstate.h"
#include "states/measurement/singlemeasurementrunningstate.h"
#include "unit/states/measurementengine.h"

using namespace Vesmar;

namespace
{

enum Kind { Single, Continuous, HVTest };

const QList<int> All = {Single, Continuous, HVTest};

const char* NameOf(int kind)
{
    return kind == Single ? "single" : kind == Continuous ? "continuous" : "high voltage";
}

std::unique_ptr<State> StateOf(int kind, StateMachineContext* context)
{
    switch (kind) {
    case Single:
        return std::make_unique<SingleMeasurementRunningState>(context, nullptr);
    case Continuous:
        return std::make_unique<ContinuousMeasurementRunningState>(context, nullptr);
    default:
        return std::make_unique<HVTestContinuousMeasurementRunningState>(context, nullptr);
    }
}

MeasurementType FunctionOf(int kind)
{
    return kind == Single       ? MeasurementType::RLN
           : kind == Continuous ? MeasurementType::RPE
                                : MeasurementType::HVTest;
}

MeasurementSettings* SettingsOf(MeasurementType function)
{
    switch (function) {
    case MeasurementType::RLN:
        return new RLNSettings;
    case MeasurementType::IEC:
        return new IECSettings;
    case MeasurementType::RPE:
        return new RPESettings;
    default:
        return new HVTestSettings;
    }
}

/// Settings with a time and, for the high-voltage test, an offset, both in seconds.
MeasurementSettings* TimedSettings(int kind, int time, float offset)
{
    MeasurementSettings* settings = SettingsOf(FunctionOf(kind));
    static_cast<ContinuousMeasurementSettings*>(settings)->SetTime(time);
    if (kind == HVTest) {
        static_cast<HVTestSettings*>(settings)->SetMeasurementTimeOffset(offset);
    }
    return settings;
}

bool IsOfItsClass(MeasurementType function, const MeasurementResults* results)
{
    switch (function) {
    case MeasurementType::RLN:
        return dynamic_cast<const RLNResults*>(results) != nullptr;
    case MeasurementType::IEC:
        return dynamic_cast<const IECResults*>(results) != nullptr;
    case MeasurementType::RPE:
        return dynamic_cast<const RPEResults*>(results) != nullptr;
    default:
        return dynamic_cast<const HVTestResults*>(results) != nullptr;
    }
}

/// A running state that has been entered, with nothing recorded yet.
struct Run : MeasurementEngine {
    Run(int kind, MeasurementSettings* settings)
        : started(&context, &StateMachineContext::StartMeasurementTimerRequested)
    {
        Settings(settings);
        state = StateOf(kind, &context);
        state->OnEntry();
        Restart();
    }

    explicit Run(int kind) : Run(kind, SettingsOf(FunctionOf(kind))) {}

    QSignalSpy started;
    std::unique_ptr<State> state;
};

void AddKinds(const QList<int>& kinds)
{
    QTest::addColumn<int>("kind");
    for (const int kind : kinds) {
        QTest::newRow(NameOf(kind)) << kind;
    }
}

/// Rows for the function states 0 to 15.
void AddFunctionStates()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("functionState");
    for (const int kind : All) {
        for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
            QTest::addRow("%s, function state %d", NameOf(kind), state) << kind << state;
        }
    }
}

} // namespace

/// What the three states do while a measurement runs.
class TestRunningStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FunctionWithoutResultMayHaveEnded_data() { AddFunctionStates(); }
    void FunctionWithoutResultMayHaveEnded()
    {
        QFETCH(const int, kind);
        QFETCH(const int, functionState);
        const bool isOver = QList<int>{0, 3, 4, 6, 9}.contains(functionState);
        Run run(kind);
        run.Report(functionState);
        run.state->OnRunning();
        QCOMPARE(run.Outcome(),
                 isOver ? QStringLiteral("ErrorCode=202 AbortMeasurementRequested=1") : QString());
        QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    }

    void NewResultIsRead_data() { AddFunctionStates(); }
    /// In any function state.
    void NewResultIsRead()
    {
        QFETCH(const int, kind);
        QFETCH(const int, functionState);
        Run run(kind);
        run.Report(functionState, true);
        run.state->OnRunning();
        QCOMPARE(run.Outcome(), kind == Single ? QStringLiteral("TestResults MeasurementStatus=5")
                                               : QStringLiteral("TestResults"));
        QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
    }

    void ResultsAreThoseOfTheSettings_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("function");
        QTest::addColumn<bool>("isBareClass");
        for (const bool isBareClass : {false, true}) {
            const char* ofClass = isBareClass ? "base class" : "own class";
            QTest::addRow("RLN, %s", ofClass) << int(Single) << int(MeasurementType::RLN) << isBareClass;
            QTest::addRow("IEC, %s", ofClass) << int(Single) << int(MeasurementType::IEC) << isBareClass;
            QTest::addRow("RPE, %s", ofClass) << int(Continuous) << int(MeasurementType::RPE) << isBareClass;
            QTest::addRow("high voltage, %s", ofClass)
                << int(HVTest) << int(MeasurementType::HVTest) << isBareClass;
        }
    }

    /// Neither the function that the status names nor the class of the settings decides.
    void ResultsAreThoseOfTheSettings()
    {
        QFETCH(const int, kind);
        QFETCH(const int, function);
        const auto type = static_cast<MeasurementType>(function);
        QFETCH(const bool, isBareClass);
        Run run(kind, isBareClass ? new MeasurementSettings(type, nullptr) : SettingsOf(type));
        run.Report(7, true);
        run.state->OnRunning();
        const MeasurementResults* results = run.context.TestResults.Get();
        QVERIFY(IsOfItsClass(type, results));
        QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F}));
    }

    void EndKeepsAnEarlierError_data() { AddKinds(All); }
    void EndKeepsAnEarlierError()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.Report(9, false, 6);
        run.state->OnRunning();
        QCOMPARE(run.Outcome(), QStringLiteral("ErrorCode=6 AbortMeasurementRequested=1"));
    }

    void FailedStatusEndsTheStep_data() { AddKinds(All); }
    void FailedStatusEndsTheStep()
    {
        QFETCH(const int, kind);
        for (const bool isNewMeasurement : {false, true}) {
            Run run(kind);
            run.RefuseWhileReporting('s', 0);
            run.context.NewMeasurement.Set(isNewMeasurement);
            run.context.MeasurementFunctionStatus.Set(FunctionState::Idle);
            run.Restart();
            run.state->OnRunning();
            QCOMPARE(run.cells.Changes(), QStringList{QStringLiteral("CommunicationError=1")});
            QCOMPARE(run.Commands(), QByteArray("s"));
        }
    }

    void FailedReadIsALostLink_data() { AddKinds(All); }
    void FailedReadIsALostLink()
    {
        QFETCH(const int, kind);
        Run run(kind);
        const MeasurementResults* before = run.context.TestResults.Get();
        run.RefuseWhileReporting('e', 9, true);
        run.state->OnRunning();
        QCOMPARE(run.Outcome(), kind == Single ? QStringLiteral("CommunicationError=1 MeasurementStatus=5")
                                               : QStringLiteral("CommunicationError=1"));
        QCOMPARE(run.context.TestResults.Get(), before);
        QCOMPARE(run.Commands(), QByteArray("se"));
    }

    void TimedFunctionIsReadOnEveryStep_data() { AddKinds({Continuous, HVTest}); }
    void TimedFunctionIsReadOnEveryStep()
    {
        QFETCH(const int, kind);
        Run run(kind);
        run.Report(7, true);
        run.state->OnRunning();
        run.state->OnRunning();
        QCOMPARE(run.Commands(), QByteArray("sese"));
        QCOMPARE(run.Outcome(), QStringLiteral("TestResults TestResults"));
    }

    void EntryStartsTheTimer_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("time");
        QTest::addColumn<int>("msOffset");
        for (const int time : {5, 0, -1, 600}) {
            QTest::addRow("continuous, %d seconds", time) << int(Continuous) << time << 0;
            QTest::addRow("high voltage, %d seconds", time) << int(HVTest) << time << 3500;
        }
        QTest::newRow("high voltage, another offset") << int(HVTest) << 7 << 1250;
    }

    void EntryStartsTheTimer()
    {
        QFETCH(const int, kind);
        QFETCH(const int, time);
        QFETCH(const int, msOffset);
        Run run(kind, TimedSettings(kind, time, static_cast<float>(msOffset) / 1000.0F));
        QCOMPARE(run.started, (QList<QVariantList>{{time, msOffset}}));
        QCOMPARE(run.context.GetMeasurementTimer()->interval(), 1000 + msOffset);
    }

    void TimeElapses_data() { AddKinds({Continuous, HVTest}); }
    void TimeElapses()
    {
        QFETCH(const int, kind);
        constexpr int Patience = 60000;
        QElapsedTimer sinceEntry;
        sinceEntry.start();
        Run run(kind, TimedSettings(kind, 1, 0.5F));
        QTRY_VERIFY_WITH_TIMEOUT(run.context.MeasurementTimeElapsed.Get(), Patience);
        QVERIFY(sinceEntry.elapsed() >= (kind == HVTest ? 1500 : 1000));
        QCOMPARE(run.context.MeasurementTime.Get(), 1);
        QVERIFY(!run.context.GetMeasurementTimer()->isActive());
    }

    void SettingsOfABaseClassHaveTheirOwnTime_data() { AddKinds({Continuous, HVTest}); }
    /// Settings without a time end the measurement with its first tick.
    void SettingsOfABaseClassHaveTheirOwnTime()
    {
        QFETCH(const int, kind);
        const MeasurementType function = FunctionOf(kind);
        for (const bool hasTime : {false, true}) {
            Run run(kind, hasTime ? new ContinuousMeasurementSettings(function, nullptr)
                                  : new MeasurementSettings(function, nullptr));
            QCOMPARE(run.started, (QList<QVariantList>{{hasTime ? 5 : 0, 0}}));
        }
    }
};

QTEST_GUILESS_MAIN(TestRunningStates)
#include "tst_runningstates.moc"
