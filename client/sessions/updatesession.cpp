#include "client/sessions/updatesession.h"

#include <QtGlobal>

#include <algorithm>

#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Error;
using Vesmar::OperationMode;
using Vesmar::OperationState;

constexpr int AllOfIt = 100;

bool IsUpdateError(Error error)
{
    return error >= Error::UpdateModeChangeFailed && error <= Error::UpdateConfirmationFailed;
}

bool HasStayedInUpdateMode(const UpdatePicture& picture)
{
    return picture.mode == OperationMode::Update && !IsLinkError(picture.error);
}

} // namespace

UpdateSession::UpdateSession(int sectors, bool isOffline) : _sectors(sectors), _isOffline(isOffline) {}

void UpdateSession::Begin()
{
    _phase = Phase::ChangingMode;
}

void UpdateSession::Observe(const UpdatePicture& picture)
{
    if (_phase != Phase::ChangingMode && !IsUnderWay()) {
        return;
    }
    _progress = std::max(_progress, picture.progress);
    EnterPhaseOf(picture.status);
    if (IsUpdateError(picture.error)) {
        Fail(picture.error);
    } else if (_phase == Phase::ChangingMode && IsLinkError(picture.error)) {
        End(Outcome::LinkLost);
    } else if (IsUnderWay() && (picture.status == OperationState::Idle || IsLinkError(picture.error))) {
        Conclude(picture.error);
    }
}

bool UpdateSession::IsUnderWay() const
{
    return _phase == Phase::Initializing || _phase == Phase::Sending;
}

void UpdateSession::EnterPhaseOf(OperationState status)
{
    switch (status) {
    case OperationState::Started:
        _phase = Phase::Initializing;
        break;
    case OperationState::InProgress:
        _phase = Phase::Sending;
        break;
    case OperationState::Finished:
        _phase = Phase::Restarting;
        break;
    case OperationState::Idle:
        break;
    }
}

/// The library has left the update, and what it reported at the end was not seen.
void UpdateSession::Conclude(Error error)
{
    if (_progress < AllOfIt) {
        Fail(Error::UpdateInitializationFailed);
    } else if (IsLinkError(error)) {
        Fail(Error::UpdateConfirmationFailed);
    } else {
        _phase = Phase::Restarting;
    }
}

/// In another mode than these two, the library restarts the instrument by itself.
void UpdateSession::IdentityRead(OperationMode mode)
{
    if (_phase != Phase::Restarting) {
        return;
    }
    if (mode == OperationMode::Normal) {
        End(Outcome::Updated);
    } else if (mode == OperationMode::Update) {
        End(Outcome::StaysInUpdateMode);
    }
}

void UpdateSession::CheckMode(const UpdatePicture& picture)
{
    if (_phase == Phase::Restarting && HasStayedInUpdateMode(picture)) {
        End(Outcome::StaysInUpdateMode);
    }
}

void UpdateSession::TimeOver(OperationState status)
{
    if (_phase == Phase::ChangingMode && status == OperationState::Idle) {
        End(Outcome::ModeNotChanged);
    } else if (_phase == Phase::Restarting) {
        End(Outcome::NotBack);
    }
}

bool UpdateSession::Interrupt(OperationState status)
{
    const bool mayEnd = _phase == Phase::Restarting ||
                        (_phase == Phase::ChangingMode && status == OperationState::Idle && !_isOffline);
    if (mayEnd) {
        End(Outcome::Interrupted);
    }
    return mayEnd;
}

void UpdateSession::LinkClosed(const UpdatePicture& picture)
{
    if (_endedIn == Phase::ChangingMode && picture.status != OperationState::Idle) {
        _endedIn = Phase::Sending;
        _progress = picture.progress;
        _outcome = Outcome::Failed;
        _error = Error::UpdateInitializationFailed;
    }
}

/// The library counts in per cent, truncated.
int UpdateSession::ConfirmedSectors() const
{
    const qint64 hundredths = static_cast<qint64>(_progress) * _sectors;
    return static_cast<int>((hundredths + AllOfIt - 1) / AllOfIt);
}

void UpdateSession::Fail(Error error)
{
    _error = error;
    End(Outcome::Failed);
}

void UpdateSession::End(Outcome outcome)
{
    _endedIn = _phase;
    _phase = Phase::Ended;
    _outcome = outcome;
}

} // namespace VesmarClient
