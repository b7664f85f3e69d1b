#include "client/sessions/rcdsession.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;

MeasurementType FunctionOf(RcdTest test)
{
    const bool isIec = test == RcdTest::IecIaTa || test == RcdTest::CleanUp;
    return isIec ? MeasurementType::RCDIEC : MeasurementType::RCD;
}

/// Whether a check of the object under test has found this error.
bool IsObjectError(Error error)
{
    return error >= Error::RCDCheckObjectFailed && error <= Error::RCDCheckObjectULNIECInvalid;
}

} // namespace

RcdSession::RcdSession(RcdTest test)
    : MeasurementSession(FunctionOf(test), true, std::nullopt),
      _test(test),
      _isStartAsked(test != RcdTest::UbRe)
{
}

MeasurementSession::Action RcdSession::FirstAction() const
{
    return _isStartAsked ? Action::PrepareAndStart : Action::Prepare;
}

MeasurementSession::Action RcdSession::ObservePreparing(const MeasurementPicture& picture)
{
    return _isStartAsked ? ObserveTest(picture) : ObserveWatch(picture);
}

MeasurementSession::Action RcdSession::ObserveMeasuring(const MeasurementPicture& picture)
{
    return ObserveTest(picture);
}

/// The library's watch withdraws the preparation with every error but those of the object under test. It is
/// over where the library carries out a start that an earlier measurement was aborted over.
MeasurementSession::Action RcdSession::ObserveWatch(const MeasurementPicture& picture)
{
    if (IsStarted(picture.status)) {
        _isStartAsked = true;
        return ObserveTest(picture);
    }
    if (picture.error != Error::NoErrors && !IsObjectError(picture.error)) {
        return FailWith(picture.error, Action::Abort);
    }
    const bool isWatched =
        picture.status == MeasurementState::Idle && picture.function == MeasurementType::RCD;
    if (!isWatched) {
        return Action::None;
    }
    if (picture.functionStatus == FunctionState::Prepared && picture.error == Error::NoErrors) {
        return StartWatched();
    }
    return picture.functionStatus == FunctionState::PrepareError ? ObserveCheck(picture) : Action::None;
}

/// A check that finds nothing looks the same as one that has not been made yet.
MeasurementSession::Action RcdSession::ObserveCheck(const MeasurementPicture& picture)
{
    const bool isOvercome = _objectError != Error::NoErrors && picture.error == Error::NoErrors;
    _objectError = picture.error;
    Enter(Phase::Checking);
    return isOvercome ? StartWatched() : Action::None;
}

MeasurementSession::Action RcdSession::StartWatched()
{
    _isStartAsked = true;
    Enter(Phase::Preparing); // the test itself prepares once more
    return Action::Start;
}

MeasurementSession::Action RcdSession::ObserveTest(const MeasurementPicture& picture)
{
    RecordProgress(picture.status);
    if (IsOver(picture)) {
        return End(picture);
    }
    Enter(PhaseOf(picture));
    return Action::None;
}

/// The phase may go back: a silent test is started again, and one of the instrument's errors makes the test
/// begin anew.
MeasurementSession::Phase RcdSession::PhaseOf(const MeasurementPicture& picture) const
{
    switch (picture.status) {
    case MeasurementState::Idle:
    case MeasurementState::Preparing:
    case MeasurementState::Prepared:
        return picture.error == Error::RCDCheckObjectULNIECInvalid ? Phase::AwaitingMains : Phase::Preparing;
    case MeasurementState::Starting:
        return Phase::Starting;
    case MeasurementState::Running:
    case MeasurementState::Measuring:
        return Phase::Running;
    default:
        return CurrentPhase();
    }
}

void RcdSession::RecordProgress(MeasurementState status)
{
    _isUnderWay =
        _isUnderWay || (status >= MeasurementState::Preparing && status <= MeasurementState::Measuring);
    _wasStartTried = _wasStartTried || IsStarted(status);
}

bool RcdSession::IsOver(const MeasurementPicture& picture) const
{
    switch (picture.status) {
    case MeasurementState::Stopped:
        return true;
    case MeasurementState::Unknown:
        return _isUnderWay || picture.error != Error::NoErrors;
    default:
        return false;
    }
}

/// An IEC test that an error of the instrument ends before its start leaves no error behind, and no result.
MeasurementSession::Action RcdSession::End(const MeasurementPicture& picture)
{
    const bool isCleanUp = _test == RcdTest::CleanUp;
    // The library leaves this error behind where the mains have come to suit the test.
    const bool isOvercome = picture.error == Error::RCDCheckObjectULNIECInvalid && picture.hasResult;
    if (picture.error != Error::NoErrors && !isOvercome) {
        return FailWith(picture.error, Action::Leave);
    }
    if (!(isCleanUp ? _wasStartTried : picture.hasResult)) {
        return Fail(Reason::NoResult, Action::Leave);
    }
    if (isCleanUp) { // the library does not wait for the end of a clean-up, and leaving would cut it short
        Enter(Phase::CleaningUp);
        return Action::None;
    }
    return Complete();
}

MeasurementSession::Action RcdSession::TimeOver()
{
    switch (CurrentPhase()) {
    case Phase::Checking:
        return _objectError != Error::NoErrors ? FailWith(_objectError, Action::Abort) : StartWatched();
    case Phase::CleaningUp:
        return Complete();
    default:
        return MeasurementSession::TimeOver();
    }
}

} // namespace VesmarClient
