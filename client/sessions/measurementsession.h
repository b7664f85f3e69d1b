#pragma once

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>

namespace VesmarClient
{

/// What the library tells about a measurement, at one moment.
struct MeasurementPicture {
    Vesmar::Error error;
    Vesmar::MeasurementState status;
    Vesmar::FunctionState functionStatus;
    Vesmar::MeasurementType function; ///< The one that is active at the instrument.
    int seconds;                      ///< That the measurement has run.
    bool hasResult;                   ///< Of the function that is measured.
    bool isModeActive;                ///< Measurement mode.
};

/// Leads one measurement from an instrument that has just been connected to one that is confirmed to have
/// stopped. It decides, and does nothing itself: every call returns what is to be done.
///
/// The settings are handed over before measurement mode is entered: then the first thing that the library
/// does there is to prepare, and what is left of an earlier function is never taken for the prepared one. At
/// the end measurement mode is left and the identity asked for, in one go. The library answers that only when
/// it monitors again, after a fresh status: an active function after that is being stopped by the library
/// itself, and no active function means that the instrument has stopped.
class MeasurementSession
{
public:
    enum class Phase {
        AwaitingIdle, ///< Another function is active at the instrument; the library stops it.
        Preparing,
        Checking,      ///< Something may be wrong with the object under test; that is being found out.
        AwaitingMains, ///< The mains voltage does not suit the test; it is checked without limit.
        Starting,
        Running,
        Stopping,   ///< The library ends the measurement.
        CleaningUp, ///< The library is through with it, the instrument is not.
        Leaving,    ///< Measurement mode is left, and the end awaits its confirmation.
        Ended
    };

    enum class Outcome { None, Completed, Failed, Aborted, LinkLost };

    /// Why it failed.
    enum class Reason {
        None,
        Error,        ///< `Error()` tells.
        NotPrepared,  ///< In the time given.
        NotStarted,   ///< In the time given.
        NoResult,     ///< It ended early or without a reading, and no error was seen.
        FunctionLost, ///< While it ran, the instrument gave it up for something else, or restarted.
        OtherFunction ///< One that was not started here does not stop.
    };

    enum class Action {
        None,
        Prepare,         ///< Hand over the settings, then enter measurement mode.
        PrepareAndStart, ///< The same, and ask for the start as well.
        Start,
        Abort, ///< Abort, then as `Leave`.
        Leave, ///< Leave measurement mode and ask for the identity.
        Finish ///< It has ended.
    };

    /// A continuous function has a time after which it is complete, or none: then it runs until it is
    /// aborted. A single one is complete with its result.
    MeasurementSession(Vesmar::MeasurementType function, bool isSingle, std::optional<int> seconds);
    virtual ~MeasurementSession() = default;

    /// The link is up.
    Action Begin(const MeasurementPicture& picture) { return Observe(picture); }
    /// Something has changed.
    Action Observe(const MeasurementPicture& picture);
    Action IdentityRead(const MeasurementPicture& picture);
    /// Somebody wants it to end.
    Action Abort();
    /// The present phase has taken too long.
    virtual Action TimeOver();

    /// What the instrument calls the function while it is active.
    Vesmar::MeasurementType ActiveFunction() const { return _activeFunction; }
    Phase CurrentPhase() const { return _phase; }
    Outcome CurrentOutcome() const { return _outcome; }
    Reason FailureReason() const { return _reason; }
    Vesmar::Error FirstError() const { return _error; }
    /// The phase in which the link was lost.
    Phase LostIn() const { return _lostIn; }
    bool IsStopConfirmed() const { return _isStopConfirmed; }

protected:
    /// When the instrument does nothing else.
    virtual Action FirstAction() const;
    virtual Action ObservePreparing(const MeasurementPicture& picture);
    virtual Action ObserveMeasuring(const MeasurementPicture& picture);

    void Enter(Phase phase) { _phase = phase; }
    Action Complete();
    Action Fail(Reason reason, Action action);
    /// The error is the one to be told, unless there was one before.
    Action FailWith(Vesmar::Error error, Action action);

private:
    bool IsLinkLost(const MeasurementPicture& picture) const;
    bool IsFunctionLost(const MeasurementPicture& picture) const;
    void RecordError(Vesmar::Error error);
    Action ObserveIdle(const MeasurementPicture& picture);
    Action ObserveStopping(const MeasurementPicture& picture);
    Action ObserveLeaving(const MeasurementPicture& picture);
    Action LoseLink();
    void Decide(const MeasurementPicture& picture);
    Action LeaveWith(Action action);

    Vesmar::MeasurementType _activeFunction;
    bool _isSingle;
    std::optional<int> _seconds;
    Phase _phase = Phase::AwaitingIdle;
    Phase _lostIn = Phase::AwaitingIdle;
    Outcome _outcome = Outcome::None;
    Reason _reason = Reason::None;
    Vesmar::Error _error = Vesmar::Error::NoErrors;
    int _secondsRun = 0;          ///< The library counts from 0 again once it is over.
    bool _isIdentityRead = false; ///< Since measurement mode was left.
    bool _isStopConfirmed = false;
};

} // namespace VesmarClient
