#pragma once

#include <VesmarClient/enumerations.h>

#include "client/sessions/readiness.h"

namespace VesmarClient
{

/// Finds out what the line to the instrument is doing. It decides, and does nothing itself.
///
/// The link is up once identity and both clocks have really been read, and after a loss of it only when they
/// have been read anew.
class LinkSession
{
public:
    enum class Action { None, AskForIdentity };

    LinkState State() const { return _state; }

    /// To be called when the instrument's identity has been read, in the mode given.
    Action IdentityRead(Vesmar::OperationMode mode);
    /// To be called when the instrument has reported a mode.
    void ModeChanged(Vesmar::OperationMode mode);
    /// To be called when there is another error.
    void ErrorChanged(Vesmar::Error error);

private:
    bool IsThere() const { return _state == LinkState::Up || _state == LinkState::UpdateMode; }
    void BeginAnew(LinkState state);
    void Conclude(ReadinessSteps::Step step);

    LinkState _state = LinkState::Opening;
    ReadinessSteps _steps;
};

} // namespace VesmarClient
