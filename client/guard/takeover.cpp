#include "client/guard/takeover.h"

#include <sys/file.h>

#include <cerrno>
#include <chrono>

#include <Vesmar/serialdevice.h>

#include "client/line/deviceholders.h"
#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

using Vesmar::MeasurementType;
using Vesmar::Tester;

/// Enough for a lost link to come back.
constexpr std::chrono::milliseconds MostTime{30000};
constexpr std::chrono::milliseconds TimeBetweenTries{5};

} // namespace

Takeover::Takeover(Tester& tester, const Application& application)
    : _tester(tester), _application(application)
{
    _limit.setSingleShot(true);
    connect(&_limit, &QTimer::timeout, this, [this] { End(Outcome::NotConfirmed); });
    _nextTry.setInterval(TimeBetweenTries);
    connect(&_nextTry, &QTimer::timeout, this, &Takeover::LockLine);
}

void Takeover::Begin()
{
    _nextTry.start();
    LockLine();
}

/// While the application lives and has the line, there is nothing to take over, and no time runs out.
void Takeover::LockLine()
{
    if (!_limit.isActive() && _application.HasEnded()) {
        _limit.start(MostTime);
    }
    auto device = std::make_unique<Device>(Vesmar::SerialDevicePath);
    if (device->Descriptor() < 0 || !IsLineFree(*device)) {
        return;
    }
    _device = std::move(device);
    _nextTry.stop();
    _limit.start(MostTime);
    Connect();
    _tester.Enable();
}

/// A child of the application may have inherited the device or, without being started as a program, the lock:
/// neither uses the line.
bool Takeover::IsLineFree(const Device& device) const
{
    if (::flock(device.Descriptor(), LOCK_EX | LOCK_NB) == 0) {
        return true;
    }
    const QVector<DeviceHolder> holders = FindLockHolders(device.Findings().identity);
    const bool isOfApplication = holders.isEmpty() || holders.first().process == _application.Process();
    return errno == EWOULDBLOCK && isOfApplication && _application.HasEnded();
}

void Takeover::Connect()
{
    connect(&_tester, &Tester::DeviceInformationChanged, this, &Takeover::ReceiveIdentity);
    connect(&_tester, &Tester::ErrorCodeChanged, this, &Takeover::ReceiveError);
    connect(&_tester, &Tester::CurrentMeasurementTypeChanged, this, &Takeover::Observe);
}

void Takeover::ReceiveIdentity()
{
    switch (_readiness.IdentityRead(_tester.TesterMode())) {
    case ReadinessSteps::Step::Wait:
        break;
    case ReadinessSteps::Step::AskForIdentity:
        _tester.RetrieveDeviceInformation();
        break;
    case ReadinessSteps::Step::Complete:
        _isUp = true;
        Observe();
        break;
    case ReadinessSteps::Step::FoundInUpdateMode:
        End(Outcome::UpdateMode);
        break;
    }
}

void Takeover::ReceiveError(Vesmar::Error error)
{
    _readiness.ErrorChanged();
    _isUp = _isUp && !IsLinkError(error);
}

void Takeover::Observe()
{
    const MeasurementType function = _tester.CurrentMeasurementType();
    if (function == MeasurementType::Monitoring) {
        if (_isUp) {
            End(Outcome::Stopped);
        }
    } else if (function != MeasurementType::None) {
        _function = function;
    }
}

void Takeover::End(Outcome outcome)
{
    if (_isOver) {
        return;
    }
    _isOver = true;
    _nextTry.stop();
    _limit.stop();
    Q_EMIT Finished(outcome);
}

} // namespace VesmarClient
