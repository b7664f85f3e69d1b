#include <functional>

#include <QTest>

#include <Vesmar/iecresults.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/rlnresults.h>

#include "context/replaceowned.h"
#include "context/statemachinecontext.h"
#include "unit/machine/guardtable.h"
#include "unit/states/celllog.h"

namespace Guards = Vesmar::Transitions;

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::Guard;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::RCDIECSettings;
using Vesmar::RCDSettings;

using Vesmar::StateMachineContext;

using Setup = std::function<void(StateMachineContext&)>;

Q_DECLARE_METATYPE(Guard)
Q_DECLARE_METATYPE(Setup)

namespace
{

void SetSettings(StateMachineContext& context, MeasurementSettings* settings)
{
    Vesmar::ReplaceOwned(context.TestSettings, settings, nullptr);
}

void SetSettingsType(StateMachineContext& context, MeasurementType type)
{
    SetSettings(context, new MeasurementSettings(type, nullptr));
}

void SetRCDSettings(StateMachineContext& context, int mode)
{
    auto* settings = new RCDSettings;
    settings->SetMode(static_cast<RCDSettings::RCDMode>(mode));
    SetSettings(context, settings);
}

void SetRCDIECSettings(StateMachineContext& context, int mode)
{
    auto* settings = new RCDIECSettings;
    settings->SetMode(static_cast<RCDIECSettings::RCDIECMode>(mode));
    SetSettings(context, settings);
}

void SetResults(StateMachineContext& context, MeasurementResults* results)
{
    Vesmar::ReplaceOwned(context.TestResults, results, nullptr);
}

void SetIECResults(StateMachineContext& context, float firstValue)
{
    auto* results = new Vesmar::IECResults(firstValue, 0.0F, 0.0F, 0.0F, 0.0F);
    results->_values[0] = firstValue;
    SetResults(context, results);
}

void SetConfigurationRequests(StateMachineContext& context, bool requested)
{
    context.DeviceInformationRequested.Set(requested);
    context.CurrentDateTimeRequested.Set(requested);
    context.CalibrationDateTimeRequested.Set(requested);
    context.CurrentDateTimeConfigurationRequested.Set(requested);
    context.CalibrationDateTimeConfigurationRequested.Set(requested);
}

/// Gives every cell that a guard could read by mistake a value other than its first.
void MakeNoisy(StateMachineContext& context)
{
    SetConfigurationRequests(context, true);
    context.CommunicationError.Set(true);
    context.RestartRequested.Set(true);
    context.UpdateRequested.Set(true);
    context.IsMeasurementModeActive.Set(true);
    context.IsMeasurementRunning.Set(true);
    context.PrepareMeasurementRequested.Set(true);
    context.StartMeasurementRequested.Set(true);
    context.AbortMeasurementRequested.Set(true);
    context.MeasurementTimeElapsed.Set(true);
    context.NewMeasurement.Set(true);
    context.TesterMode.Set(OperationMode::Mode2);
    context.MeasurementStatus.Set(MeasurementState::Stopped);
    context.MeasurementFunctionStatus.Set(FunctionState::Prepared);
    context.CurrentMeasurementType.Set(MeasurementType::HVTest);
    context.ErrorCode.Set(Error::DeviceError3);
    SetRCDSettings(context, 0);
    SetIECResults(context, 1.0F);
}

void AddRow(Guard guard, const QString& when, bool holds, const Setup& setup, const QStringList& changes = {})
{
    QTest::addRow("%s: %s", qPrintable(NameOfGuard(guard)), qPrintable(when))
        << guard << setup << holds << changes;
}

QString Flags(std::initializer_list<bool> flags)
{
    QString text;
    for (const bool flag : flags) {
        text += QLatin1Char(flag ? '1' : '0');
    }
    return text;
}

const QList<MeasurementType> EveryType = {MeasurementType::None,   MeasurementType::Monitoring,
                                          MeasurementType::RLN,    MeasurementType::RPE,
                                          MeasurementType::RISO,   MeasurementType::ISUB,
                                          MeasurementType::IPE,    MeasurementType::IDELTA,
                                          MeasurementType::IT,     MeasurementType::POWER,
                                          MeasurementType::HVTest, MeasurementType::RCD,
                                          MeasurementType::RCDIEC, static_cast<MeasurementType>(12),
                                          MeasurementType::IEC};

const QList<int> EveryStatus = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8};
const QList<int> EveryFunctionState = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 15};

bool IsRCD(MeasurementType type)
{
    return type == MeasurementType::RCD || type == MeasurementType::RCDIEC;
}

} // namespace

class TestTransitions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();

    void DecidesByItsConditionAlone_data();
    void DecidesByItsConditionAlone();

    void ModesZeroAndThreeNeedARequestToRestart();
    void UpdateRequestInANormalModeGoesToAwaitingButNotOnToUpdating();
    void RCDSettingsGoToTheRCDModeAndHighVoltageSettingsToTheOrdinaryOne();
    void HighVoltageStartFiresItsOwnGuardAndNotTheContinuousOne();
    void HighVoltageSettingsWithAnotherCurrentTypeFireNeitherContinuousGuard();
    void IECMeasurementWithAFirstValueOfZeroNeverStops();
    void AbortedRCDMeasurementWithoutAnErrorLeaves521AndSignalsItOnce();
    void AbortedRCDMeasurementKeepsAStoredError();
    void PendingPreparationOfRLNHoldsTowardsTheRCDMode();
};

void TestTransitions::initTestCase_data()
{
    QTest::addColumn<bool>("noisy");
    QTest::newRow("all else as at first") << false;
    QTest::newRow("all else changed") << true;
}

static void AddAlwaysRows()
{
    const QList<Guard> always = {&Guards::TesterOperationsToInitializationTransition,
                                 &Guards::RestartingTesterToTesterOperationsTransition,
                                 &Guards::InitializationToMonitoringTransition,
                                 &Guards::MeasurementModeToPreparingMeasurementTransition,
                                 &Guards::RCDMeasurementModeToRCDMonitoringTransition};
    for (const Guard guard : always) {
        AddRow(guard, QStringLiteral("always"), true, [](StateMachineContext&) {});
    }
}

static void AddConnectionRows()
{
    for (const bool error : {false, true}) {
        const auto setup = [error](StateMachineContext& context) { context.CommunicationError.Set(error); };
        AddRow(&Guards::TesterOperationsToCommunicationRecoveryTransition, Flags({error}), error, setup);
        AddRow(&Guards::CommunicationRecoveryToTesterOperationsTransition, Flags({error}), !error, setup);
    }
    const QMap<int, bool> restartsByMode = {{-1, true}, {0, false}, {1, true},
                                            {2, true},  {3, false}, {4, true}};
    for (auto row = restartsByMode.cbegin(); row != restartsByMode.cend(); ++row) {
        for (const bool requested : {false, true}) {
            AddRow(&Guards::TesterOperationsToRestartingTesterTransition,
                   QStringLiteral("mode %1, requested %2").arg(row.key()).arg(requested),
                   requested || row.value(), [mode = row.key(), requested](StateMachineContext& context) {
                       context.TesterMode.Set(static_cast<OperationMode>(mode));
                       context.RestartRequested.Set(requested);
                   });
        }
    }
}

static void AddUpdateRows()
{
    for (const int mode : {0, 1, 2, 3}) {
        for (const bool requested : {false, true}) {
            const auto setup = [mode, requested](StateMachineContext& context) {
                context.TesterMode.Set(static_cast<OperationMode>(mode));
                context.UpdateRequested.Set(requested);
            };
            const QString when = QStringLiteral("mode %1, requested %2").arg(mode).arg(requested);
            const bool isUpdateMode = mode == 3;
            AddRow(&Guards::InitializationToAwaitUpdateActionTransition, when, requested || isUpdateMode,
                   setup);
            AddRow(&Guards::MonitoringToAwaitUpdateActionTransition, when, requested || isUpdateMode, setup);
            AddRow(&Guards::AwaitUpdateActionToUpdatingTransition, when, requested && isUpdateMode, setup);
            AddRow(&Guards::UpdatingToAwaitUpdateActionTransition, when, isUpdateMode, setup);
            AddRow(&Guards::UpdatingToInitializationTransition, when, mode == 0, setup);
        }
    }
}

static void AddConfigurationRows()
{
    for (unsigned bits = 0; bits < 32; ++bits) {
        const auto setup = [bits](StateMachineContext& context) {
            context.DeviceInformationRequested.Set((bits & 1U) != 0);
            context.CurrentDateTimeRequested.Set((bits & 2U) != 0);
            context.CalibrationDateTimeRequested.Set((bits & 4U) != 0);
            context.CurrentDateTimeConfigurationRequested.Set((bits & 8U) != 0);
            context.CalibrationDateTimeConfigurationRequested.Set((bits & 16U) != 0);
        };
        const QString when = QStringLiteral("requests %1").arg(bits, 5, 2, QLatin1Char('0'));
        AddRow(&Guards::MonitoringToTesterConfigurationTransition, when, bits != 0, setup);
        AddRow(&Guards::TesterConfigurationToMonitoringTransition, when, bits == 0, setup);
    }
}

static void AddMeasurementModeRows()
{
    for (const MeasurementType type : EveryType) {
        for (const bool flag : {false, true}) {
            const QString when = QStringLiteral("type %1, flag %2").arg(static_cast<int>(type)).arg(flag);
            const auto active = [type, flag](StateMachineContext& context) {
                SetSettingsType(context, type);
                context.IsMeasurementModeActive.Set(flag);
            };
            AddRow(&Guards::MonitoringToRCDMeasurementModeTransition, when, flag && IsRCD(type), active);
            AddRow(&Guards::MonitoringToMeasurementModeTransition, when, flag && !IsRCD(type), active);
            const auto prepare = [type, flag](StateMachineContext& context) {
                SetSettingsType(context, type);
                context.PrepareMeasurementRequested.Set(flag);
            };
            AddRow(&Guards::PreparingMeasurementToRCDMeasurementModeTransition, when, flag, prepare);
            AddRow(&Guards::RCDMeasurementModeToMeasurementModeTransition, when, flag && !IsRCD(type),
                   prepare);
        }
    }
    for (const bool active : {false, true}) {
        const auto setup = [active](StateMachineContext& context) {
            context.IsMeasurementModeActive.Set(active);
        };
        AddRow(&Guards::MeasurementModeToMonitoringTransition, Flags({active}), !active, setup);
        AddRow(&Guards::RCDMeasurementModeToMonitoringTransition, Flags({active}), !active, setup);
    }
}

static void AddStatusRows()
{
    for (const int status : EveryStatus) {
        const auto setup = [status](StateMachineContext& context) {
            context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
        };
        const QString when = QStringLiteral("status %1").arg(status);
        AddRow(&Guards::AbortingMeasurementToMeasurementModeTransition, when, status == 7, setup);
        AddRow(&Guards::StoppingMeasurementToMeasurementModeTransition, when, status == 7, setup);
        AddRow(&Guards::RCDIECCleanUpToRCDMonitoringTransition, when, status == 7, setup);
        for (const bool abort : {false, true}) {
            AddRow(&Guards::MeasurementModeToAbortingMeasurementTransition,
                   when + QStringLiteral(", abort %1").arg(abort), abort && status != 2,
                   [setup, abort](StateMachineContext& context) {
                       setup(context);
                       context.AbortMeasurementRequested.Set(abort);
                   });
        }
    }
    for (const bool elapsed : {false, true}) {
        AddRow(&Guards::ContinuousMeasurementRunningToStoppingMeasurementTransition, Flags({elapsed}),
               elapsed,
               [elapsed](StateMachineContext& context) { context.MeasurementTimeElapsed.Set(elapsed); });
    }
}

static void AddStartRows()
{
    for (const int status : EveryStatus) {
        for (const bool start : {false, true}) {
            for (const bool prepare : {false, true}) {
                AddRow(&Guards::PreparingMeasurementToStartingMeasurementTransition,
                       QStringLiteral("status %1, start %2, prepare %3").arg(status).arg(start).arg(prepare),
                       status == 2 && start && !prepare,
                       [status, start, prepare](StateMachineContext& context) {
                           context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
                           context.StartMeasurementRequested.Set(start);
                           context.PrepareMeasurementRequested.Set(prepare);
                       });
            }
        }
        for (const MeasurementType type : EveryType) {
            const int number = static_cast<int>(type);
            const QString when = QStringLiteral("status %1, type %2").arg(status).arg(number);
            const bool isRunning = status == 4;
            const auto settings = [status, type](StateMachineContext& context) {
                SetSettingsType(context, type);
                context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
            };
            AddRow(&Guards::StartingMeasurementToSingleMeasurementRunningTransition, when,
                   isRunning && (number == 1 || number == 97), settings);
            AddRow(&Guards::StartingMeasurementToContinuousMeasurementRunningTransition, when,
                   isRunning && number != 1 && number != 9 && number != 97, settings);
            AddRow(&Guards::StartingMeasurementToHVTestContinuousMeasurementRunningTransition, when,
                   isRunning && number == 9, [status, type](StateMachineContext& context) {
                       context.CurrentMeasurementType.Set(type);
                       context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
                   });
        }
    }
}

static void AddSingleMeasurementRows()
{
    const Guard guard = &Guards::SingleMeasurementRunningToStoppingMeasurementTransition;
    for (const int status : EveryStatus) {
        for (const bool isNew : {false, true}) {
            const auto common = [status, isNew](StateMachineContext& context) {
                context.CurrentMeasurementType.Set(MeasurementType::RLN);
                context.MeasurementFunctionStatus.Set(FunctionState::Idle);
                context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
                context.NewMeasurement.Set(isNew);
            };
            const QString when = QStringLiteral("status %1, new %2").arg(status).arg(isNew);
            AddRow(guard, QStringLiteral("RLN results, ") + when, isNew && status == 5,
                   [common](StateMachineContext& context) {
                       common(context);
                       SetResults(context, new Vesmar::RLNResults(0.0F, 0.0F, 0.0F, 0.0F, 0.0F));
                   });
            AddRow(guard, QStringLiteral("IEC results of 0, ") + when, false,
                   [common](StateMachineContext& context) {
                       common(context);
                       SetIECResults(context, 0.0F);
                   });
            for (const float value : {1.0F, -1.0F, 1.0e-30F}) {
                AddRow(guard, QStringLiteral("IEC results of %1, ").arg(static_cast<double>(value)) + when,
                       status == 5, [common, value](StateMachineContext& context) {
                           common(context);
                           SetIECResults(context, value);
                       });
            }
        }
    }
}

static void AddOtherSingleMeasurementRows()
{
    const Guard guard = &Guards::SingleMeasurementRunningToStoppingMeasurementTransition;
    for (const int function : EveryFunctionState) {
        for (const MeasurementType type :
             {MeasurementType::None, MeasurementType::Monitoring, MeasurementType::RLN, MeasurementType::RPE,
              MeasurementType::HVTest, MeasurementType::IEC}) {
            for (const MeasurementType results : {MeasurementType::None, MeasurementType::Monitoring,
                                                  MeasurementType::RLN, MeasurementType::IEC}) {
                const bool hasRule = type == MeasurementType::RLN &&
                                     (results == MeasurementType::RLN || results == MeasurementType::IEC);
                if (hasRule) {
                    continue;
                }
                AddRow(guard,
                       QStringLiteral("type %1, results %2, function %3")
                           .arg(static_cast<int>(type))
                           .arg(static_cast<int>(results))
                           .arg(function),
                       function != 7, [function, type, results](StateMachineContext& context) {
                           context.CurrentMeasurementType.Set(type);
                           context.MeasurementFunctionStatus.Set(static_cast<FunctionState>(function));
                           SetResults(context, new MeasurementResults(results, nullptr));
                       });
            }
        }
    }
}

static void AddRCDStartRows()
{
    for (const bool start : {false, true}) {
        for (const int mode : {-1, 0, 1, 2, 3, 4}) {
            const QString when = QStringLiteral("start %1, mode %2").arg(start).arg(mode);
            const auto rcd = [start, mode](StateMachineContext& context) {
                context.StartMeasurementRequested.Set(start);
                SetRCDSettings(context, mode);
            };
            const auto rcdIEC = [start, mode](StateMachineContext& context) {
                context.StartMeasurementRequested.Set(start);
                SetRCDIECSettings(context, mode);
            };
            const bool isIaTa = mode == 1 || mode == 2;
            AddRow(&Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition,
                   QStringLiteral("RCD, ") + when, start && mode == 0, rcd);
            AddRow(&Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition,
                   QStringLiteral("RCD IEC, ") + when, false, rcdIEC);
            AddRow(&Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition,
                   QStringLiteral("RCD, ") + when, start && isIaTa, rcd);
            AddRow(&Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition,
                   QStringLiteral("RCD IEC, ") + when, false, rcdIEC);
            AddRow(&Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition,
                   QStringLiteral("RCD, ") + when, false, rcd);
            AddRow(&Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition,
                   QStringLiteral("RCD IEC, ") + when, start && isIaTa, rcdIEC);
            AddRow(&Guards::RCDMonitoringToRCDIECCleanUpTransition, QStringLiteral("RCD, ") + when, false,
                   rcd);
            AddRow(&Guards::RCDMonitoringToRCDIECCleanUpTransition, QStringLiteral("RCD IEC, ") + when,
                   start && mode == 3, rcdIEC);
        }
    }
    for (const Guard guard : {&Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition,
                              &Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition,
                              &Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition,
                              &Guards::RCDMonitoringToRCDIECCleanUpTransition}) {
        AddRow(guard, QStringLiteral("start, settings of another function"), false,
               [](StateMachineContext& context) {
                   context.StartMeasurementRequested.Set(true);
                   SetSettingsType(context, MeasurementType::RLN);
               });
    }
}

/// The guards that leave a running RCD measurement; `byMode` is what the settings alone make of it.
static void AddRCDEndRows(Guard guard, const QString& settingsName, const Setup& settings, bool byMode)
{
    for (const int status : EveryStatus) {
        for (const bool abort : {false, true}) {
            for (const int error : {15, 3, 103, 521}) {
                const bool writes = status != 7 && abort && error == 15;
                AddRow(
                    guard,
                    QStringLiteral("%1, status %2, abort %3, error %4")
                        .arg(settingsName)
                        .arg(status)
                        .arg(abort)
                        .arg(error),
                    status == 7 || abort || byMode,
                    [settings, status, abort, error](StateMachineContext& context) {
                        settings(context);
                        context.MeasurementStatus.Set(static_cast<MeasurementState>(status));
                        context.AbortMeasurementRequested.Set(abort);
                        context.ErrorCode.Set(static_cast<Error>(error));
                    },
                    writes ? QStringList{QStringLiteral("ErrorCode=521")} : QStringList{});
            }
        }
    }
}

static void AddRCDEndRows()
{
    const auto rcd = [](int mode) {
        return [mode](StateMachineContext& context) { SetRCDSettings(context, mode); };
    };
    const auto rcdIEC = [](int mode) {
        return [mode](StateMachineContext& context) { SetRCDIECSettings(context, mode); };
    };
    AddRCDEndRows(&Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition, QStringLiteral("mode 0"),
                  rcd(0), false);
    AddRCDEndRows(&Guards::RCDIaTaMeasurementRunningToRCDMonitoringTransition, QStringLiteral("mode 1"),
                  rcd(1), false);
    const Guard iec = &Guards::RCDIECIaTaMeasurementRunningToRCDMonitoringTransition;
    AddRCDEndRows(iec, QStringLiteral("IEC mode 1"), rcdIEC(1), false);
    AddRCDEndRows(iec, QStringLiteral("IEC mode 2"), rcdIEC(2), false);
    AddRCDEndRows(iec, QStringLiteral("IEC mode 3"), rcdIEC(3), true);
    AddRCDEndRows(iec, QStringLiteral("RCD mode 3"), rcd(3), false);
}

void TestTransitions::DecidesByItsConditionAlone_data()
{
    QTest::addColumn<Guard>("guard");
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<bool>("holds");
    QTest::addColumn<QStringList>("changes");
    AddAlwaysRows();
    AddConnectionRows();
    AddUpdateRows();
    AddConfigurationRows();
    AddMeasurementModeRows();
    AddStatusRows();
    AddStartRows();
    AddSingleMeasurementRows();
    AddOtherSingleMeasurementRows();
    AddRCDStartRows();
    AddRCDEndRows();
}

void TestTransitions::DecidesByItsConditionAlone()
{
    QFETCH_GLOBAL(const bool, noisy);
    QFETCH(const Guard, guard);
    QFETCH(const Setup, setup);
    QFETCH(const bool, holds);
    QFETCH(const QStringList, changes);
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    if (noisy) {
        MakeNoisy(context);
    }
    setup(context);
    const CellLog cells(context);

    QCOMPARE(guard(context), holds);
    QCOMPARE(cells.Changes(), changes);
}

void TestTransitions::ModesZeroAndThreeNeedARequestToRestart()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    for (const OperationMode mode : {OperationMode::Normal, OperationMode::Update}) {
        context.TesterMode.Set(mode);
        context.RestartRequested.Set(false);
        QVERIFY(!Guards::TesterOperationsToRestartingTesterTransition(context));
        context.RestartRequested.Set(true);
        QVERIFY(Guards::TesterOperationsToRestartingTesterTransition(context));
    }
    context.RestartRequested.Set(false);
    for (const OperationMode mode : {OperationMode::Calibration, OperationMode::Mode2, OperationMode(7)}) {
        context.TesterMode.Set(mode);
        QVERIFY(Guards::TesterOperationsToRestartingTesterTransition(context));
    }
}

void TestTransitions::UpdateRequestInANormalModeGoesToAwaitingButNotOnToUpdating()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    context.UpdateRequested.Set(true);
    QVERIFY(Guards::MonitoringToAwaitUpdateActionTransition(context));
    QVERIFY(!Guards::AwaitUpdateActionToUpdatingTransition(context));
}

void TestTransitions::RCDSettingsGoToTheRCDModeAndHighVoltageSettingsToTheOrdinaryOne()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    context.IsMeasurementModeActive.Set(true);
    SetRCDSettings(context, 0);
    QVERIFY(Guards::MonitoringToRCDMeasurementModeTransition(context));
    QVERIFY(!Guards::MonitoringToMeasurementModeTransition(context));
    SetSettingsType(context, MeasurementType::HVTest);
    QVERIFY(!Guards::MonitoringToRCDMeasurementModeTransition(context));
    QVERIFY(Guards::MonitoringToMeasurementModeTransition(context));
}

void TestTransitions::HighVoltageStartFiresItsOwnGuardAndNotTheContinuousOne()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    SetSettingsType(context, MeasurementType::HVTest);
    context.CurrentMeasurementType.Set(MeasurementType::HVTest);
    context.MeasurementStatus.Set(MeasurementState::Running);
    QVERIFY(Guards::StartingMeasurementToHVTestContinuousMeasurementRunningTransition(context));
    QVERIFY(!Guards::StartingMeasurementToContinuousMeasurementRunningTransition(context));
}

void TestTransitions::HighVoltageSettingsWithAnotherCurrentTypeFireNeitherContinuousGuard()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    SetSettingsType(context, MeasurementType::HVTest);
    context.CurrentMeasurementType.Set(MeasurementType::RPE);
    context.MeasurementStatus.Set(MeasurementState::Running);
    QVERIFY(!Guards::StartingMeasurementToHVTestContinuousMeasurementRunningTransition(context));
    QVERIFY(!Guards::StartingMeasurementToContinuousMeasurementRunningTransition(context));
    QVERIFY(!Guards::StartingMeasurementToSingleMeasurementRunningTransition(context));
}

void TestTransitions::IECMeasurementWithAFirstValueOfZeroNeverStops()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    context.CurrentMeasurementType.Set(MeasurementType::RLN);
    context.NewMeasurement.Set(true);
    context.MeasurementStatus.Set(MeasurementState::Measuring);
    SetIECResults(context, 0.0F);
    for (const int function : EveryFunctionState) {
        context.MeasurementFunctionStatus.Set(static_cast<FunctionState>(function));
        QVERIFY(!Guards::SingleMeasurementRunningToStoppingMeasurementTransition(context));
    }
    SetIECResults(context, 0.5F); // Its whole number is 0; the value as it came decides.
    QVERIFY(Guards::SingleMeasurementRunningToStoppingMeasurementTransition(context));
}

void TestTransitions::AbortedRCDMeasurementWithoutAnErrorLeaves521AndSignalsItOnce()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    SetRCDSettings(context, 0);
    context.AbortMeasurementRequested.Set(true);
    const CellLog cells(context);
    QVERIFY(Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition(context));
    QVERIFY(Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition(context));
    QCOMPARE(context.ErrorCode.Get(), Error::RCDDeviceError1);
    QCOMPARE(cells.Changes(), QStringList{QStringLiteral("ErrorCode=521")});
}

void TestTransitions::AbortedRCDMeasurementKeepsAStoredError()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    SetRCDSettings(context, 0);
    context.AbortMeasurementRequested.Set(true);
    context.ErrorCode.Set(Error::StartFailed);
    QVERIFY(Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition(context));
    QCOMPARE(context.ErrorCode.Get(), Error::StartFailed);
}

void TestTransitions::PendingPreparationOfRLNHoldsTowardsTheRCDMode()
{
    StateMachineContext context(nullptr, nullptr, nullptr, nullptr, nullptr);
    SetSettingsType(context, MeasurementType::RLN);
    context.PrepareMeasurementRequested.Set(true);
    QVERIFY(Guards::PreparingMeasurementToRCDMeasurementModeTransition(context));
}

QTEST_GUILESS_MAIN(TestTransitions)
#include "tst_transitions.moc"
