#include "client/driver/run.h"

namespace VesmarClient
{

Run::Run()
{
    connect(this, &Run::Finished, this, [this] { _stage = Stage::Over; });
}

void Run::BeginUnlessAborted()
{
    const bool isAborted = _stage == Stage::Aborted;
    if (isAborted && !IsEndProved()) {
        Q_EMIT Finished(Outcome::Aborted, {});
        return;
    }
    _stage = Stage::UnderWay;
    Begin();
    if (isAborted) {
        AbortInTime();
    }
}

void Run::AbortInTime()
{
    if (_stage == Stage::UnderWay) {
        Abort();
    } else if (_stage == Stage::Waiting) {
        _stage = Stage::Aborted;
    }
}

} // namespace VesmarClient
