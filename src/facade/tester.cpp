#include <Vesmar/tester.h>

#include <QScopedValueRollback>

#include "context/replaceowned.h"
#include "context/statemachinecontext.h"
#include "link/trace.h"
#include "link/transciever.h"
#include "machine/statemachine.h"
#include "protocol/classification.h"
#include "states/update/awaitupdateactionstate.h"
#include "states/update/updatingstate.h"

namespace Vesmar
{

namespace
{

void TraceOperation(const char* text)
{
    Trace::WriteIn(Trace::Colour::Red, text);
}

/// The text ends with a function: one of the two single measurements by its name, every other function by its
/// number.
void TraceOperation(const char* text, MeasurementType type, const char* beforeName, const char* beforeNumber)
{
    Trace::Line line;
    line << Trace::Colour::Red << text;
    switch (type) {
    case MeasurementType::RLN:
        line << beforeName << "RLN";
        break;
    case MeasurementType::IEC:
        line << beforeName << "IEC";
        break;
    default:
        line << beforeNumber << static_cast<int>(type);
    }
    line << Trace::Colour::None;
}

} // namespace

Tester* Tester::_instance = nullptr;

Tester* Tester::Instance()
{
    if (_instance == nullptr) {
        _instance = new Tester(nullptr);
    }
    return _instance;
}

Tester::Tester(QObject* parent) : QObject(parent), _stateMachine(std::make_unique<StateMachine>(nullptr))
{
    ConnectCells();
}

Tester::~Tester()
{
    if (_instance == this) {
        _instance = nullptr;
    }
    Disable();
}

bool Tester::IsEnabled() const
{
    return _enabled;
}

void Tester::Enable()
{
    if (_enabled || _isUpdating) {
        return;
    }
    _stateMachine->Enable();
    _enabled = true;
}

void Tester::Disable()
{
    _stateMachine->Disable();
    _enabled = false;
}

TesterInformation* Tester::DeviceInformation() const
{
    return Context().DeviceInformation.Get();
}

OperationMode Tester::TesterMode() const
{
    return Context().TesterMode.Get();
}

QDateTime Tester::CurrentDateTime() const
{
    return Context().CurrentDateTime.Get();
}

QDateTime Tester::CalibrationDateTime() const
{
    return Context().CalibrationDateTime.Get();
}

StartTestResult Tester::StartTestStatus() const
{
    return Context().StartTestStatus.Get();
}

FunctionState Tester::MeasurementFunctionStatus() const
{
    return Context().MeasurementFunctionStatus.Get();
}

Error Tester::ErrorCode() const
{
    return Context().ErrorCode.Get();
}

MeasurementSettings* Tester::TestSettings() const
{
    return Context().TestSettings.Get();
}

MeasurementResults* Tester::TestResults() const
{
    return Context().TestResults.Get();
}

bool Tester::IsMeasurementRunning() const
{
    return Context().IsMeasurementRunning.Get();
}

MeasurementState Tester::MeasurementStatus() const
{
    return Context().MeasurementStatus.Get();
}

int Tester::MeasurementTime() const
{
    return Context().MeasurementTime.Get();
}

int Tester::OperationProgress() const
{
    return Context().OperationProgress.Get();
}

MeasurementType Tester::CurrentMeasurementType() const
{
    return Context().CurrentMeasurementType.Get();
}

OperationState Tester::OperationStatus() const
{
    return Context().OperationStatus.Get();
}

void Tester::RestartTester()
{
    Context().RestartRequested.Set(true);
}

void Tester::RetrieveDeviceInformation()
{
    Context().DeviceInformationRequested.Set(true);
}

void Tester::RetrieveCurrentDateTime()
{
    Context().CurrentDateTimeRequested.Set(true);
}

void Tester::RetrieveCalibrationDateTime()
{
    Context().CalibrationDateTimeRequested.Set(true);
}

// The data of a request are always written before its flag, because the worker acts on the flag.

void Tester::ConfigureCurrentDateTime(const QDateTime& value)
{
    Context().CurrentDateTime.Set(value);
    Context().CurrentDateTimeConfigurationRequested.Set(true);
}

void Tester::ConfigureCalibrationDateTime(const QDateTime& value)
{
    Context().CalibrationDateTime.Set(value);
    Context().CalibrationDateTimeConfigurationRequested.Set(true);
}

bool Tester::GetIsMeasurementModeActive() const
{
    return Context().IsMeasurementModeActive.Get();
}

void Tester::SetIsMeasurementModeActive(bool active)
{
    TraceOperation("SET MEASUREMENT MODE");
    Context().IsMeasurementModeActive.Set(active);
}

void Tester::PrepareMeasurement(MeasurementSettings& settings)
{
    TraceOperation("PREPARE MEASUREMENT", settings.GetMeasurementType(), " : ", " : ");
    Context().Replaced.Hold(ReplaceOwned(Context().TestSettings, settings.Clone()));
    if (_stateMachine->GetSteppingRunner() == nullptr) {
        Context().Replaced.ReleaseHeld(); // There is no worker that could.
    }
    Context().PrepareMeasurementRequested.Set(true);
}

void Tester::StartMeasurement()
{
    // An abort that is still pending would end the measurement before it begins.
    Context().AbortMeasurementRequested.Set(false);
    Context().StartMeasurementRequested.Set(true);
}

void Tester::StartMeasurement(MeasurementSettings& settings)
{
    TraceOperation("QUICK START MEASUREMENT", settings.GetMeasurementType(), " - PREPARE AND START ",
                   " - PREPEARE AND START: ");
    PrepareMeasurement(settings);
    StartMeasurement();
}

void Tester::AbortMeasurement()
{
    TraceOperation("ABORT MEASUREMENT");
    StateMachineContext& context = Context();
    if (IsRCD(context.TestSettings.Get()->GetMeasurementType())) {
        context.AbortMeasurementRequested.Set(true);
        return;
    }
    switch (context.MeasurementStatus.Get()) {
    case MeasurementState::Unknown:
    case MeasurementState::Idle:
    case MeasurementState::Stopped:
        DropMeasurementRequests();
        TraceOperation("STOPPED");
        // The cell gets another value first, so that the application sees a change even when it held
        // `Stopped`.
        context.MeasurementStatus.Set(MeasurementState::Unknown);
        context.MeasurementStatus.Set(MeasurementState::Stopped);
        context.IsMeasurementRunning.Set(false);
        break;
    case MeasurementState::Preparing:
    case MeasurementState::Prepared:
    case MeasurementState::Starting:
        context.AbortMeasurementRequested.Set(true);
        break;
    case MeasurementState::Running:
    case MeasurementState::Measuring:
        context.AbortMeasurementRequested.Set(true);
        DropMeasurementRequests();
        break;
    case MeasurementState::Stopping:
        DropMeasurementRequests();
        break;
    }
}

bool Tester::UpdateTester(const QByteArray& data, const QByteArray& confirmation)
{
    if (data.isEmpty() || confirmation.isEmpty() || _isUpdating) {
        return false;
    }
    Context().SetUpdate(data, confirmation);
    if (!_enabled) {
        return UpdateSynchronously();
    }
    Context().UpdateRequested.Set(true);
    return true;
}

void Tester::UpdateDeviceInformation()
{
    Q_EMIT DeviceInformationChanged(DeviceInformation());
}

void Tester::UpdateTesterMode()
{
    Q_EMIT TesterModeChanged(TesterMode());
}

void Tester::UpdateCurrentDateTime()
{
    Q_EMIT CurrentDateTimeChanged(CurrentDateTime());
}

void Tester::UpdateCalibrationDateTime()
{
    Q_EMIT CalibrationDateTimeChanged(CalibrationDateTime());
}

void Tester::UpdateStartTestStatus()
{
    Q_EMIT StartTestStatusChanged(StartTestStatus());
}

void Tester::UpdateMeasurementFunctionStatus()
{
    Q_EMIT MeasurementFunctionStatusChanged(MeasurementFunctionStatus());
}

void Tester::UpdateErrorCode()
{
    Q_EMIT ErrorCodeChanged(ErrorCode());
}

void Tester::UpdateTestSettings()
{
    Q_EMIT TestSettingsChanged(TestSettings());
}

void Tester::UpdateTestResults()
{
    Q_EMIT TestResultsChanged(TestResults());
}

void Tester::UpdateIsMeasurementRunning()
{
    Q_EMIT IsMeasurementRunningChanged(IsMeasurementRunning());
}

void Tester::UpdateMeasurementStatus()
{
    Q_EMIT MeasurementStatusChanged(MeasurementStatus());
}

void Tester::UpdateMeasurementTime()
{
    Trace::Line() << Trace::Colour::Blue << "MEASUREMENT TIME: " << MeasurementTime() << Trace::Colour::None;
    Q_EMIT MeasurementTimeChanged(MeasurementTime());
}

void Tester::UpdateOperationProgress()
{
    Q_EMIT OperationProgressChanged(OperationProgress());
}

void Tester::UpdateCurrentMeasurementType()
{
    Q_EMIT CurrentMeasurementTypeChanged(CurrentMeasurementType());
}

void Tester::UpdateOperationStatus()
{
    Q_EMIT OperationStatusChanged(OperationStatus());
}

StateMachineContext& Tester::Context() const
{
    return *_stateMachine->GetContext();
}

void Tester::ConnectCells()
{
    const StateMachineContext& context = Context();
    connect(&context.DeviceInformation, &Notifible::ValueChanged, this, &Tester::UpdateDeviceInformation);
    connect(&context.TesterMode, &Notifible::ValueChanged, this, &Tester::UpdateTesterMode);
    connect(&context.CurrentDateTime, &Notifible::ValueChanged, this, &Tester::UpdateCurrentDateTime);
    connect(&context.CalibrationDateTime, &Notifible::ValueChanged, this, &Tester::UpdateCalibrationDateTime);
    connect(&context.StartTestStatus, &Notifible::ValueChanged, this, &Tester::UpdateStartTestStatus);
    connect(&context.MeasurementFunctionStatus, &Notifible::ValueChanged, this,
            &Tester::UpdateMeasurementFunctionStatus);
    connect(&context.ErrorCode, &Notifible::ValueChanged, this, &Tester::UpdateErrorCode);
    connect(&context.TestSettings, &Notifible::ValueChanged, this, &Tester::UpdateTestSettings);
    connect(&context.TestResults, &Notifible::ValueChanged, this, &Tester::UpdateTestResults);
    connect(&context.IsMeasurementRunning, &Notifible::ValueChanged, this,
            &Tester::UpdateIsMeasurementRunning);
    connect(&context.MeasurementStatus, &Notifible::ValueChanged, this, &Tester::UpdateMeasurementStatus);
    connect(&context.MeasurementTime, &Notifible::ValueChanged, this, &Tester::UpdateMeasurementTime);
    connect(&context.OperationProgress, &Notifible::ValueChanged, this, &Tester::UpdateOperationProgress);
    connect(&context.CurrentMeasurementType, &Notifible::ValueChanged, this,
            &Tester::UpdateCurrentMeasurementType);
    connect(&context.OperationStatus, &Notifible::ValueChanged, this, &Tester::UpdateOperationStatus);
}

/// Runs the step of each update state on this thread, without a machine around them.
bool Tester::UpdateSynchronously()
{
    // The cells signal during the update, and a slot must not bring a second user to the serial line.
    const QScopedValueRollback<bool> updating(_isUpdating, true);
    StateMachineContext& context = Context();
    context.ErrorCode.Set(Error::NoErrors);
    context.GetTransciever()->Open();
    AwaitUpdateActionState(&context, nullptr).OnRunning();
    if (context.ErrorCode.Get() == Error::UpdateModeChangeFailed) {
        return false; // The port stays open: the next `Enable()` or update uses it as it is.
    }
    context.ErrorCode.Set(Error::NoErrors);
    UpdatingState(&context, nullptr).OnRunning();
    context.GetTransciever()->Close();
    return context.ErrorCode.Get() == Error::NoErrors;
}

void Tester::DropMeasurementRequests()
{
    Context().PrepareMeasurementRequested.Set(false);
    Context().StartMeasurementRequested.Set(false);
}

} // namespace Vesmar
