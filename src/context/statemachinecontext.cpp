#include "context/statemachinecontext.h"

#include <algorithm>
#include <limits>

#include "model/truncate.h"

namespace Vesmar
{

namespace
{

constexpr int TickMs = 1000;

/// Returns the interval before the first tick. An offset out of range is cut to what a timer can have.
int FirstTickMs(int msOffset)
{
    return std::clamp(msOffset, -TickMs, std::numeric_limits<int>::max() - TickMs) + TickMs;
}

} // namespace

StateMachineContext::StateMachineContext(CRC16* crc16, Transciever* transciever,
                                         CommandBuilder* commandBuilder, ResponseParser* responseParser,
                                         QObject* parent)
    : QObject(parent),
      _crc16(crc16),
      _commandBuilder(commandBuilder),
      _responseParser(responseParser),
      _transciever(transciever),
      _measurementTimer(new QTimer(this))
{
    // The other cells start with their type's zero: false, 0, Normal, Idle.
    DeviceInformation.Set(new TesterInformation(nullptr));
    TestSettings.Set(new MeasurementSettings(MeasurementType::None, nullptr));
    CurrentDateTime.Set(QDateTime(QDate(2016, 1, 1), QTime(0, 0)));
    CurrentMeasurementType.Set(MeasurementType::None);
    StartTestStatus.Set(StartTestResult::Unknown);
    MeasurementFunctionStatus.Set(FunctionState::Unknown);
    ErrorCode.Set(Error::NoErrors);
    TestResults.Set(new MeasurementResults(MeasurementType::None, nullptr));

    _measurementTimer->setTimerType(Qt::PreciseTimer);
    _measurementTimer->setInterval(TickMs);
    connect(_measurementTimer, &QTimer::timeout, this, &StateMachineContext::MeasurementTimerTick);
    connect(this, &StateMachineContext::StartMeasurementTimerRequested, this,
            &StateMachineContext::OnStartMeasurementTimerRequested);
    connect(this, &StateMachineContext::StopMeasurementTimerRequested, this,
            &StateMachineContext::OnStopMeasurementTimerRequested);
}

StateMachineContext::~StateMachineContext()
{
    delete TestResults.Get();
    delete TestSettings.Get();
    delete DeviceInformation.Get();
}

void StateMachineContext::ResetAllProperty()
{
    MeasurementStatus.Set(MeasurementState::Idle);
}

void StateMachineContext::SetUpdate(const QByteArray& image, const QByteArray& confirmation)
{
    const QMutexLocker lock(&_updateMutex);
    UpdateData = image;
    UpdateConfirmationData = confirmation;
}

FirmwareUpdate StateMachineContext::GetUpdate() const
{
    const QMutexLocker lock(&_updateMutex);
    return {UpdateData, UpdateConfirmationData};
}

void StateMachineContext::StartMeasurementTimer(int time)
{
    MeasurementTimeElapsed.Set(false);
    Q_EMIT StartMeasurementTimerRequested(time, 0);
}

void StateMachineContext::StartMeasurementTimer(int time, float offsetSeconds)
{
    MeasurementTimeElapsed.Set(false);
    Q_EMIT StartMeasurementTimerRequested(time, Truncate(offsetSeconds * 1000.0F));
}

void StateMachineContext::StopMeasurementTimer()
{
    Q_EMIT StopMeasurementTimerRequested();
}

void StateMachineContext::StopMeasurementTimerIfRunning()
{
    if (_isMeasurementTimerRunning.exchange(false)) {
        StopMeasurementTimer();
    }
}

void StateMachineContext::OnStartMeasurementTimerRequested(int time, int msOffset)
{
    _timeLimit = time;
    _elapsedSeconds = 0;
    MeasurementTimeElapsed.Set(false);
    _measurementTimer->start(FirstTickMs(msOffset));
    _isMeasurementTimerRunning = true;
}

void StateMachineContext::OnStopMeasurementTimerRequested()
{
    _measurementTimer->stop();
    _isMeasurementTimerRunning = false;
}

void StateMachineContext::MeasurementTimerTick()
{
    _measurementTimer->setInterval(TickMs);
    ++_elapsedSeconds;
    MeasurementTime.Set(_elapsedSeconds);
    if (_timeLimit >= 0 && _timeLimit <= _elapsedSeconds) {
        MeasurementTimeElapsed.Set(true);
        OnStopMeasurementTimerRequested();
    }
}

} // namespace Vesmar
