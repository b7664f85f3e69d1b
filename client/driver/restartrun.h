#pragma once

#include "client/driver/limitedrun.h"

namespace VesmarClient
{

/// Restarts the instrument, and waits until identity and clocks have been read anew.
class RestartRun : public LimitedRun
{
    Q_OBJECT

public:
    explicit RestartRun(std::chrono::milliseconds limit);

    /// It also brings back an instrument that waits for firmware and still has its own.
    bool MayBegin(LinkState state) const override;
    void Abort() override;

protected:
    void Work() override;
    void TimeOver() override;

private:
    void Restart();
    void ReceiveError(Vesmar::Error error);
};

} // namespace VesmarClient
