#pragma once

#include "client/driver/limitedrun.h"

namespace VesmarClient
{

/// Ends whatever runs at the instrument, and proves it: measurement mode is left and the identity asked for.
/// The driver answers that only when it monitors again, after a fresh status: an active function after that
/// is being stopped by the driver itself, and no active function means that the instrument has stopped.
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
    void Observe();
    void LeadOut();

    QTimer* _leadingOut = nullptr; ///< A child.
    bool _isIdentityRead = false;  ///< Since measurement mode was left, and the link was lost last.
};

} // namespace VesmarClient
