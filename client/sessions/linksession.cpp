#include "client/sessions/linksession.h"

#include "client/line/diagnosis.h"

namespace VesmarClient
{

using Vesmar::OperationMode;
using Step = ReadinessSteps::Step;

LinkSession::Action LinkSession::IdentityRead(OperationMode mode)
{
    if (IsThere()) {
        return Action::None;
    }
    const Step step = _steps.IdentityRead(mode);
    Conclude(step);
    return step == Step::AskForIdentity ? Action::AskForIdentity : Action::None;
}

/// An instrument that leaves its mode restarts, after which all is read anew.
void LinkSession::ModeChanged(OperationMode mode)
{
    if (!IsThere()) {
        Conclude(_steps.ModeChanged(mode));
    } else if (mode == OperationMode::Update) {
        _state = LinkState::UpdateMode;
    } else if (mode != OperationMode::Normal || _state == LinkState::UpdateMode) {
        BeginAnew(LinkState::Opening);
    }
}

void LinkSession::ErrorChanged(Vesmar::Error error)
{
    _steps.ErrorChanged();
    if (!IsLinkError(error)) {
        return;
    }
    if (error != Vesmar::Error::CommunicationRecovery) {
        BeginAnew(LinkState::Lost);
    } else if (IsThere()) {
        BeginAnew(LinkState::Interrupted);
    }
}

void LinkSession::BeginAnew(LinkState state)
{
    _state = state;
    _steps = {};
}

void LinkSession::Conclude(Step step)
{
    if (step == Step::Complete) {
        _state = LinkState::Up;
    } else if (step == Step::FoundInUpdateMode) {
        _state = LinkState::UpdateMode;
    }
}

} // namespace VesmarClient
