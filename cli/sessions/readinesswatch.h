#pragma once

#include "cli/kit/link.h"
#include "cli/sessions/readiness.h"

namespace Cli
{

/// Waits until the link is up and the instrument's identity and both clocks have been read. It is done with
/// its first signal.
class ReadinessWatch : public QObject
{
    Q_OBJECT

public:
    explicit ReadinessWatch(Link& link);

Q_SIGNALS:
    void Ready();
    /// The identity has been read, the clocks cannot be.
    void FoundInUpdateMode();

private:
    void Follow(Readiness::Progress progress);
    void End();

    Link& _link;
    Readiness _readiness;
};

} // namespace Cli
