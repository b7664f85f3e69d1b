#include "client/sessions/measurementsession.h"

#include <algorithm>

#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

/// Whether the library itself ends a measurement with this error.
bool IsMeasurementError(Error error)
{
    return error >= Error::PrepareFailed && error <= Error::MeasurementFailed;
}

/// The library has ended the measurement. By itself it goes on to wait for the next one.
bool IsOver(MeasurementState status)
{
    return status == MeasurementState::Stopped || status == MeasurementState::Preparing;
}

} // namespace

MeasurementSession::MeasurementSession(MeasurementType function, bool isSingle, std::optional<int> seconds)
    : _activeFunction(function == MeasurementType::IEC ? MeasurementType::RLN : function),
      _isSingle(isSingle),
      _seconds(seconds)
{
}

MeasurementSession::Action MeasurementSession::Observe(const MeasurementPicture& observed)
{
    const MeasurementPicture picture = WithoutLeftovers(observed);
    if (IsLinkLost(picture)) {
        return LoseLink();
    }
    switch (_phase) {
    case Phase::AwaitingIdle:
        return ObserveIdle(picture);
    case Phase::Preparing:
    case Phase::Checking:
    case Phase::AwaitingMains:
        return ObservePreparing(picture);
    case Phase::Starting:
    case Phase::Running:
        return ObserveMeasuring(picture);
    case Phase::Stopping:
        return ObserveStopping(picture);
    case Phase::Leaving:
        return ObserveLeaving(picture);
    case Phase::CleaningUp:
    case Phase::Ended:
        break;
    }
    return Action::None;
}

/// A status that is left of an earlier measurement says nothing of this one. It is this one's as soon as it
/// has changed, or the instrument reports the function.
MeasurementPicture MeasurementSession::WithoutLeftovers(MeasurementPicture picture)
{
    const bool isActive = _phase != Phase::AwaitingIdle && picture.function == _activeFunction;
    _wasActive = _wasActive || isActive;
    if (isActive || picture.status != _leftover) {
        _leftover.reset();
    }
    if (_leftover) {
        picture.status = MeasurementState::Idle;
    }
    return picture;
}

/// A loss of the link that was over before it could be seen still shows: the library leaves measurement mode
/// over it.
bool MeasurementSession::IsLinkLost(const MeasurementPicture& picture) const
{
    switch (_phase) {
    case Phase::AwaitingIdle:
        return IsLinkError(picture.error);
    case Phase::Preparing:
    case Phase::Checking:
    case Phase::AwaitingMains:
    case Phase::Starting:
    case Phase::Running:
    case Phase::Stopping:
    case Phase::CleaningUp:
        return IsLinkError(picture.error) || !picture.isModeActive;
    case Phase::Leaving:
    case Phase::Ended:
        break;
    }
    return false;
}

/// The first error is kept: the next status clears it again, and later errors follow from it.
void MeasurementSession::RecordError(Error error)
{
    if (_error == Error::NoErrors) {
        _error = error;
    }
}

MeasurementSession::Action MeasurementSession::ObserveIdle(const MeasurementPicture& picture)
{
    if (picture.function != MeasurementType::Monitoring) {
        return Action::None;
    }
    _phase = Phase::Preparing;
    _leftover = picture.status;
    return FirstAction();
}

MeasurementSession::Action MeasurementSession::FirstAction() const
{
    return Action::Prepare;
}

/// A start that an earlier measurement was aborted over is still pending, and the library carries it out as
/// soon as this one is prepared.
MeasurementSession::Action MeasurementSession::ObservePreparing(const MeasurementPicture& picture)
{
    if (IsStarted(picture.status)) {
        _phase = Phase::Starting;
        return ObserveMeasuring(picture);
    }
    const bool hasFailed = IsMeasurementError(picture.error) ||
                           picture.status == MeasurementState::Stopping ||
                           picture.status == MeasurementState::Stopped;
    const bool isPrepared = picture.status == MeasurementState::Prepared &&
                            picture.functionStatus == FunctionState::Prepared &&
                            picture.function == _activeFunction;
    if (!hasFailed && !isPrepared) {
        return Action::None;
    }
    RecordError(picture.error);
    if (hasFailed || picture.error != Error::NoErrors) { // an instrument that reports an error is not started
        return Fail(_error != Error::NoErrors ? Reason::Error : Reason::NoResult, Action::Abort);
    }
    _phase = Phase::Starting;
    return Action::Start;
}

bool MeasurementSession::IsStarted(MeasurementState status)
{
    return status >= MeasurementState::Starting && status <= MeasurementState::Measuring;
}

MeasurementSession::Action MeasurementSession::ObserveMeasuring(const MeasurementPicture& picture)
{
    RecordError(picture.error);
    _secondsRun = std::max(_secondsRun, picture.seconds);
    const bool isMeasuring = picture.status == MeasurementState::Measuring ||
                             (_isSingle && picture.status == MeasurementState::Running);
    if (isMeasuring && IsFunctionLost(picture)) {
        // Not with an abort: the library would wait for the state of a function that no status reports any
        // more.
        return Fail(Reason::FunctionLost, Action::Leave);
    }
    if (isMeasuring) {
        _phase = Phase::Running;
    } else if (picture.status == MeasurementState::Stopping || IsOver(picture.status)) {
        Decide(picture);
        _phase = Phase::Stopping;
        return ObserveStopping(picture);
    }
    return Action::None;
}

/// The library goes on reading as long as there is a new measurement, be it of the mains. A single function
/// may be over once its result has been read.
bool MeasurementSession::IsFunctionLost(const MeasurementPicture& picture) const
{
    return picture.function != _activeFunction && !(_isSingle && picture.hasResult);
}

MeasurementSession::Action MeasurementSession::ObserveStopping(const MeasurementPicture& picture)
{
    const bool isGone = picture.function == MeasurementType::Monitoring; // which the library does not notice
    return isGone || IsOver(picture.status) ? LeaveWith(Action::Leave) : Action::None;
}

MeasurementSession::Action MeasurementSession::ObserveLeaving(const MeasurementPicture& picture)
{
    if (!_isIdentityRead || picture.function != MeasurementType::Monitoring) {
        return Action::None;
    }
    _isStopConfirmed = true;
    _phase = Phase::Ended;
    return Action::Finish;
}

MeasurementSession::Action MeasurementSession::IdentityRead(const MeasurementPicture& picture)
{
    _isIdentityRead = _phase == Phase::Leaving;
    return Observe(picture);
}

MeasurementSession::Action MeasurementSession::Abort()
{
    if (_outcome != Outcome::None) { // the measurement is ending already
        return Action::None;
    }
    _outcome = Outcome::Aborted;
    return LeaveWith(Action::Abort);
}

MeasurementSession::Action MeasurementSession::TimeOver()
{
    switch (_phase) {
    case Phase::AwaitingIdle:
        _phase = Phase::Ended;
        return Fail(Reason::OtherFunction, Action::Finish);
    case Phase::Preparing:
        return Fail(Reason::NotPrepared, Action::Abort);
    case Phase::Starting:
        return Fail(Reason::NotStarted, Action::Abort);
    case Phase::Stopping:
        return LeaveWith(Action::Leave);
    case Phase::Leaving:
        _phase = Phase::Ended;
        return Action::Finish;
    case Phase::Checking:
    case Phase::AwaitingMains:
    case Phase::Running:
    case Phase::CleaningUp:
    case Phase::Ended:
        break;
    }
    return Action::None;
}

MeasurementSession::Action MeasurementSession::LoseLink()
{
    if (_outcome == Outcome::None) {
        _outcome = Outcome::LinkLost;
        _lostIn = _phase;
    }
    return LeaveWith(Action::Leave);
}

MeasurementSession::Action MeasurementSession::Fail(Reason reason, Action action)
{
    _outcome = Outcome::Failed;
    _reason = reason;
    const bool isLeft = action == Action::Abort || action == Action::Leave;
    return isLeft ? LeaveWith(action) : action;
}

MeasurementSession::Action MeasurementSession::FailWith(Error error, Action action)
{
    RecordError(error);
    return Fail(Reason::Error, action);
}

MeasurementSession::Action MeasurementSession::Complete()
{
    _outcome = Outcome::Completed;
    return LeaveWith(Action::Leave);
}

void MeasurementSession::Decide(const MeasurementPicture& picture)
{
    const bool isTimeUp = _isSingle || (_seconds && _secondsRun >= *_seconds);
    if (isTimeUp && picture.hasResult && _error == Error::NoErrors) {
        _outcome = Outcome::Completed;
        return;
    }
    Fail(_error != Error::NoErrors ? Reason::Error : Reason::NoResult, Action::None);
}

MeasurementSession::Action MeasurementSession::LeaveWith(Action action)
{
    const bool isAborted = action == Action::Abort && MayAbort();
    _phase = Phase::Leaving;
    return action == Action::Abort && !isAborted ? Action::Leave : action;
}

/// Where no function has been active yet, the library would wait without end for the state of the one that it
/// aborts.
bool MeasurementSession::MayAbort() const
{
    return _wasActive;
}

} // namespace VesmarClient
