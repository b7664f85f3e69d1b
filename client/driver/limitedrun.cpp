#include "client/driver/limitedrun.h"

#include "client/driver/failures.h"

namespace VesmarClient
{

void LimitedRun::Begin()
{
    _timer = std::make_unique<QTimer>();
    _timer->setSingleShot(true);
    connect(_timer.get(), &QTimer::timeout, this, &LimitedRun::TimeOver);
    _timer->start(_limit);
    Work();
}

void LimitedRun::AwaitReadiness(const std::function<void()>& goOn)
{
    if (_readiness) {
        _readiness.release()->deleteLater(); // it may be emitting
    }
    _readiness = std::make_unique<Readiness>(Instrument());
    connect(_readiness.get(), &Readiness::Ready, this, goOn);
    connect(_readiness.get(), &Readiness::FoundInUpdateMode, this,
            [this] { End(Outcome::Failed, NotConnected(LinkState::UpdateMode)); });
}

void LimitedRun::End(Outcome outcome, const Failure& failure)
{
    _timer->stop();
    Instrument().disconnect(this);
    if (_readiness) {
        _readiness->Stop();
    }
    Q_EMIT Finished(outcome, failure);
}

} // namespace VesmarClient
