#include <array>
#include <memory>
#include <vector>

#include <QTest>

#include "unit/machine/conditions.h"
#include "unit/machine/guardtable.h"
#include "unit/states/celllog.h"

namespace Guards = Vesmar::Transitions;

using Vesmar::Guard;
using Vesmar::StateMachineContext;

Q_DECLARE_METATYPE(Guard)
Q_DECLARE_METATYPE(std::vector<int>)

namespace
{

using Numbers = std::vector<int>;

const Numbers Flag = {0, 1};
const Numbers EveryMode = {-1, 0, 1, 2, 3, 4};
const Numbers EveryFunction = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 97};
const Numbers EveryStatus = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8};
const Numbers EveryFunctionState = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15};

/// The values that a rule tries for its cell.
const Numbers& RangeOf(const QByteArray& cell)
{
    static const QMap<QByteArray, Numbers> ranges = {{"TesterMode", EveryMode},
                                                     {"RCD", EveryMode},
                                                     {"RCDIEC", EveryMode},
                                                     {"Settings", EveryFunction},
                                                     {"CurrentMeasurementType", EveryFunction},
                                                     {"MeasurementStatus", EveryStatus},
                                                     {"MeasurementFunctionStatus", EveryFunctionState}};
    const auto range = ranges.constFind(cell);
    return range != ranges.constEnd() ? *range : Flag;
}

Numbers Without(Numbers range, const Numbers& values)
{
    for (const int value : values) {
        range.erase(std::find(range.begin(), range.end(), value));
    }
    return range;
}

const Numbers Never;
const Numbers NotRCD = Without(EveryFunction, {10, 11});

/// Under these conditions the guard holds for these values of the cell, and for no others.
struct Rule {
    Guard guard;
    QByteArray conditions;
    QByteArray cell;
    Numbers values;
};

const QByteArrayList ConfigurationRequests = {
    "DeviceInformationRequested", "CurrentDateTimeRequested", "CalibrationDateTimeRequested",
    "CurrentDateTimeConfigurationRequested", "CalibrationDateTimeConfigurationRequested"};

/// Every cell that a guard could read by mistake has a value other than its first.
const QByteArray Noise =
    ConfigurationRequests.join(' ') +
    " CommunicationError RestartRequested UpdateRequested IsMeasurementModeActive "
    "IsMeasurementRunning PrepareMeasurementRequested StartMeasurementRequested "
    "AbortMeasurementRequested MeasurementTimeElapsed NewMeasurement TesterMode=2 "
    "MeasurementStatus=7 MeasurementFunctionStatus=4 CurrentMeasurementType=9 ErrorCode=3 "
    "RCD=0 IECResult=1";

void AddRules(const QList<Rule>& rules)
{
    for (const Rule& rule : rules) {
        QTest::addRow("%s: %s, by %s", qPrintable(NameOfGuard(rule.guard)), rule.conditions.constData(),
                      rule.cell.constData())
            << rule.guard << rule.conditions << rule.cell << rule.values;
    }
}

void AddConnectionRules()
{
    const QByteArray cell = "CommunicationError";
    const QByteArray mode = "TesterMode";
    AddRules({
        {&Guards::TesterOperationsToInitializationTransition, {}, cell, Flag},
        {&Guards::RestartingTesterToTesterOperationsTransition, {}, cell, Flag},
        {&Guards::InitializationToMonitoringTransition, {}, cell, Flag},
        {&Guards::MeasurementModeToPreparingMeasurementTransition, {}, cell, Flag},
        {&Guards::RCDMeasurementModeToRCDMonitoringTransition, {}, cell, Flag},
        {&Guards::TesterOperationsToCommunicationRecoveryTransition, {}, cell, {1}},
        {&Guards::CommunicationRecoveryToTesterOperationsTransition, {}, cell, {0}},
        {&Guards::TesterOperationsToRestartingTesterTransition, "RestartRequested=0", mode, {-1, 1, 2, 4}},
        {&Guards::TesterOperationsToRestartingTesterTransition, "RestartRequested", mode, EveryMode},
    });
}

void AddUpdateRules()
{
    const QByteArray none = "UpdateRequested=0";
    const QByteArray requested = "UpdateRequested";
    const QByteArray mode = "TesterMode";
    AddRules({
        {&Guards::InitializationToAwaitUpdateActionTransition, none, mode, {3}},
        {&Guards::InitializationToAwaitUpdateActionTransition, requested, mode, EveryMode},
        {&Guards::MonitoringToAwaitUpdateActionTransition, none, mode, {3}},
        {&Guards::MonitoringToAwaitUpdateActionTransition, requested, mode, EveryMode},
        {&Guards::AwaitUpdateActionToUpdatingTransition, none, mode, Never},
        {&Guards::AwaitUpdateActionToUpdatingTransition, requested, mode, {3}},
        {&Guards::UpdatingToAwaitUpdateActionTransition, {}, mode, {3}},
        {&Guards::UpdatingToInitializationTransition, {}, mode, {0}},
    });
}

void AddConfigurationRules()
{
    const QByteArray all = ConfigurationRequests.join(' ');
    const QByteArray none = ConfigurationRequests.join("=0 ") + "=0";
    for (const QByteArray& request : ConfigurationRequests) {
        AddRules({{&Guards::MonitoringToTesterConfigurationTransition, none, request, {1}},
                  {&Guards::MonitoringToTesterConfigurationTransition, all, request, Flag},
                  {&Guards::TesterConfigurationToMonitoringTransition, none, request, {0}},
                  {&Guards::TesterConfigurationToMonitoringTransition, all, request, Never}});
    }
}

void AddModeRules()
{
    const QByteArray active = "IsMeasurementModeActive";
    const QByteArray left = "IsMeasurementModeActive=0";
    const QByteArray prepare = "PrepareMeasurementRequested";
    const QByteArray none = "PrepareMeasurementRequested=0";
    const QByteArray function = "Settings";
    AddRules({
        {&Guards::MonitoringToRCDMeasurementModeTransition, active, function, {10, 11}},
        {&Guards::MonitoringToRCDMeasurementModeTransition, left, function, Never},
        {&Guards::MonitoringToMeasurementModeTransition, active, function, NotRCD},
        {&Guards::MonitoringToMeasurementModeTransition, left, function, Never},
        {&Guards::MeasurementModeToMonitoringTransition, {}, active, {0}},
        {&Guards::RCDMeasurementModeToMonitoringTransition, {}, active, {0}},
        {&Guards::PreparingMeasurementToRCDMeasurementModeTransition, prepare, function, EveryFunction},
        {&Guards::PreparingMeasurementToRCDMeasurementModeTransition, none, function, Never},
        {&Guards::RCDMeasurementModeToMeasurementModeTransition, prepare, function, NotRCD},
        {&Guards::RCDMeasurementModeToMeasurementModeTransition, none, function, Never},
    });
}

void AddMeasurementRules()
{
    const QByteArray status = "MeasurementStatus";
    const QByteArray start = "StartMeasurementRequested PrepareMeasurementRequested=0";
    const QByteArray function = "Settings";
    AddRules({
        {&Guards::MeasurementModeToAbortingMeasurementTransition, "AbortMeasurementRequested", status,
         Without(EveryStatus, {2})},
        {&Guards::MeasurementModeToAbortingMeasurementTransition, "AbortMeasurementRequested=0", status,
         Never},
        {&Guards::AbortingMeasurementToMeasurementModeTransition, {}, status, {7}},
        {&Guards::StoppingMeasurementToMeasurementModeTransition, {}, status, {7}},
        {&Guards::PreparingMeasurementToStartingMeasurementTransition, start, status, {2}},
        {&Guards::PreparingMeasurementToStartingMeasurementTransition,
         start + " MeasurementStatus=2",
         "StartMeasurementRequested",
         {1}},
        {&Guards::PreparingMeasurementToStartingMeasurementTransition,
         start + " MeasurementStatus=2",
         "PrepareMeasurementRequested",
         {0}},
        {&Guards::ContinuousMeasurementRunningToStoppingMeasurementTransition,
         {},
         "MeasurementTimeElapsed",
         {1}},
    });
    for (const int value : EveryStatus) {
        const QByteArray in = "MeasurementStatus=" + QByteArray::number(value);
        const bool isRunning = value == 4;
        AddRules({{&Guards::StartingMeasurementToSingleMeasurementRunningTransition, in, function,
                   isRunning ? Numbers{1, 97} : Never},
                  {&Guards::StartingMeasurementToContinuousMeasurementRunningTransition, in, function,
                   isRunning ? Without(EveryFunction, {1, 9, 97}) : Never},
                  {&Guards::StartingMeasurementToHVTestContinuousMeasurementRunningTransition, in,
                   "CurrentMeasurementType", isRunning ? Numbers{9} : Never}});
    }
}

/// While the instrument measures RLN, a single measurement ends with its result; otherwise it ends with the
/// function. A first value of 0.5 is a result, although its whole number is 0.
void AddSingleMeasurementRules()
{
    const Guard guard = &Guards::SingleMeasurementRunningToStoppingMeasurementTransition;
    const QByteArray status = "MeasurementStatus";
    const QByteArray rln = "CurrentMeasurementType=1 MeasurementFunctionStatus=0 ";
    AddRules({{guard, rln + "Results=1 NewMeasurement", status, {5}},
              {guard, rln + "Results=1 NewMeasurement=0", status, Never},
              {guard, rln + "IECResult=0 NewMeasurement", status, Never},
              {guard, rln + "IECResult=0.5 NewMeasurement=0", status, {5}},
              {guard, rln + "IECResult=-1", status, {5}},
              {guard, rln + "IECResult=1e-30", status, {5}}});
    for (const int function : {-1, 0, 1, 2, 9, 97}) {
        for (const int results : {-1, 0, 1, 97}) {
            if (function != 1 || results < 1) {
                AddRules({{guard,
                           "CurrentMeasurementType=" + QByteArray::number(function) +
                               " Results=" + QByteArray::number(results),
                           "MeasurementFunctionStatus", Without(EveryFunctionState, {7})}});
            }
        }
    }
}

void AddRCDStartRules()
{
    struct Start {
        Guard guard;
        QByteArray settings;
        Numbers modes;
    };
    const QByteArray rcd = "RCD";
    const QByteArray iec = "RCDIEC";
    for (const Start& start : QList<Start>{
             {&Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition, rcd, {0}},
             {&Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition, rcd, {1, 2}},
             {&Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition, iec, {1, 2}},
             {&Guards::RCDMonitoringToRCDIECCleanUpTransition, iec, {3}},
         }) {
        const QByteArray requested = "StartMeasurementRequested";
        AddRules({{start.guard, requested, start.settings, start.modes},
                  {start.guard, requested, start.settings == rcd ? iec : rcd, Never},
                  {start.guard, requested, "Settings", Never},
                  {start.guard, "StartMeasurementRequested=0", start.settings, Never}});
    }
}

void AddRCDEndRules()
{
    const QByteArray status = "MeasurementStatus";
    const QByteArray going = "AbortMeasurementRequested=0 MeasurementStatus=4";
    const Guard iec = &Guards::RCDIECIaTaMeasurementRunningToRCDMonitoringTransition;
    AddRules({
        {&Guards::RCDIECCleanUpToRCDMonitoringTransition, {}, status, {7}},
        {iec, going, "RCDIEC", {3}},
        {iec, going, "RCD", Never},
        {iec, "AbortMeasurementRequested=0 RCDIEC=3", status, EveryStatus},
    });
    for (const Guard guard : {&Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition,
                              &Guards::RCDIaTaMeasurementRunningToRCDMonitoringTransition, iec}) {
        AddRules({{guard, "AbortMeasurementRequested=0 RCDIEC=1", status, {7}}});
    }
}

} // namespace

class TestTransitions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void GuardHoldsForTheseValuesAlone_data()
    {
        QTest::addColumn<Guard>("guard");
        QTest::addColumn<QByteArray>("conditions");
        QTest::addColumn<QByteArray>("cell");
        QTest::addColumn<std::vector<int>>("values");
        AddConnectionRules();
        AddUpdateRules();
        AddConfigurationRules();
        AddModeRules();
        AddMeasurementRules();
        AddSingleMeasurementRules();
        AddRCDStartRules();
        AddRCDEndRules();
    }

    void GuardHoldsForTheseValuesAlone()
    {
        QFETCH(const Guard, guard);
        QFETCH(const QByteArray, conditions);
        QFETCH(const QByteArray, cell);
        QFETCH(const std::vector<int>, values);
        for (const QByteArray& others : {QByteArray(), Noise}) {
            for (const int value : RangeOf(cell)) {
                StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
                SetCells(context, others + ' ' + conditions);
                SetCell(context, cell, static_cast<float>(value));
                const CellLog cells(context);
                const bool isListed = std::find(values.begin(), values.end(), value) != values.end();
                QVERIFY2(guard(context) == isListed, cell + '=' + QByteArray::number(value) + ' ' + others);
                QCOMPARE(cells.Changes(), QStringList{});
            }
        }
    }

    void StartOfAnRCDTestReadsTheSettingsOnlyWhenItIsRequested_data()
    {
        QTest::addColumn<Guard>("guard");
        for (const Guard guard : {&Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition,
                                  &Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition,
                                  &Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition,
                                  &Guards::RCDMonitoringToRCDIECCleanUpTransition}) {
            QTest::newRow(qPrintable(NameOfGuard(guard))) << guard;
        }
    }

    /// The application changes the settings before it requests the start. A guard that read them the other
    /// way round could see the old settings together with the new start; here it would read an object that is
    /// none.
    void StartOfAnRCDTestReadsTheSettingsOnlyWhenItIsRequested()
    {
        QFETCH(const Guard, guard);
        StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
        alignas(Vesmar::MeasurementSettings) std::array<char, sizeof(Vesmar::MeasurementSettings)> bytes{};
        const std::unique_ptr<Vesmar::MeasurementSettings> previous(context.TestSettings.Get());
        context.TestSettings.Set(static_cast<Vesmar::MeasurementSettings*>(static_cast<void*>(bytes.data())));
        QVERIFY(!guard(context));
        context.TestSettings.Set(nullptr);
    }

    void AbortEndsAnRCDTestAndLeavesAnErrorBehind_data()
    {
        QTest::addColumn<Guard>("guard");
        for (const Guard guard : {&Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition,
                                  &Guards::RCDIaTaMeasurementRunningToRCDMonitoringTransition,
                                  &Guards::RCDIECIaTaMeasurementRunningToRCDMonitoringTransition}) {
            QTest::newRow(qPrintable(NameOfGuard(guard))) << guard;
        }
    }

    void AbortEndsAnRCDTestAndLeavesAnErrorBehind()
    {
        QFETCH(const Guard, guard);
        for (const int status : EveryStatus) {
            for (const int error : {15, 3, 103, 521}) {
                StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
                SetCells(context, "AbortMeasurementRequested MeasurementStatus=" +
                                      QByteArray::number(status) + " ErrorCode=" + QByteArray::number(error));
                const CellLog cells(context);
                QVERIFY(guard(context));
                QVERIFY(guard(context)); // An error that is already there stays.
                QCOMPARE(cells.Changes(),
                         status != 7 && error == 15 ? Changes("ErrorCode=521") : QStringList{});
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestTransitions)
#include "tst_transitions.moc"
