#include "cli/sessions/readiness.h"

namespace Cli
{

using Vesmar::OperationMode;

Readiness::Progress Readiness::IdentityRead(OperationMode mode)
{
    _hasIdentity = true;
    if (mode == OperationMode::Update) {
        return Progress::InUpdateMode;
    }
    if (mode != OperationMode::Normal) { // the library restarts the instrument and reads everything again
        _areClocksDue = false;
        return Progress::Waiting;
    }
    if (_areClocksDue) {
        return Progress::Complete;
    }
    _areClocksDue = true;
    return Progress::AskForIdentity;
}

Readiness::Progress Readiness::ModeChanged(OperationMode mode)
{
    _areClocksDue = false;
    return _hasIdentity && mode == OperationMode::Update ? Progress::InUpdateMode : Progress::Waiting;
}

void Readiness::ErrorChanged()
{
    _areClocksDue = false;
}

} // namespace Cli
