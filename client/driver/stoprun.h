#pragma once

#include "client/driver/limitedrun.h"

namespace VesmarClient
{

/// Ends whatever runs at the instrument, and proves it: measurement mode is left and the identity asked for.
/// The driver answers that outside of measurement mode only, where it stops any function that it finds. What
/// it tells after the answer comes from a fresh status: readings of the mains, or a function that is not
/// active any more. Without either, the function is looked at when a second identity has been read.
class StopRun : public LimitedRun
{
    Q_OBJECT

public:
    StopRun();

    /// A link that is lost may come back in time.
    bool MayBegin(LinkState state) const override;
    void Abort() override;

protected:
    void Work() override;
    void TimeOver() override;

private:
    void ReceiveIdentity();
    void ReceiveError(Vesmar::Error error);
    void Conclude();
    void TellPhase();
    bool IsIdle() const;
    void LeadOut();

    QTimer* _leadingOut = nullptr; ///< A child.
    bool _isIdentityRead = false;  ///< Since measurement mode was left, and the link was lost last.
};

} // namespace VesmarClient
