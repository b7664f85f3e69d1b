#pragma once

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>

namespace VesmarClient
{

/// The properties of the library that concern a measurement, at one moment.
struct MeasurementPicture {
    Vesmar::Error error;
    Vesmar::MeasurementState status;
    Vesmar::FunctionState functionStatus;
    Vesmar::MeasurementType function; ///< The function that is active at the instrument.
    int seconds;                      ///< How long the measurement has run.
    bool hasResult;                   ///< Whether a result of the function that is measured has been read.
    bool isModeActive;                ///< Whether the library is in measurement mode.
};

/// Leads one measurement from an instrument that has just been connected to one that is confirmed to have
/// stopped. It decides, and does nothing itself: every call returns what is to be done.
///
/// The settings are handed over before measurement mode is entered: then the first thing that the library
/// does there is to prepare, and a status that is left of an earlier function never counts as prepared. At
/// the end measurement mode is left and the identity asked for, in one go. The library answers that only when
/// it monitors again, after a fresh status: an active function after that is being stopped by the library
/// itself, and no active function means that the instrument has stopped.
class MeasurementSession
{
public:
    enum class Phase {
        AwaitingIdle, ///< Another function is active at the instrument, and the library stops it.
        Preparing,
        Checking,      ///< The library finds out whether something is wrong with the object under test.
        AwaitingMains, ///< The mains voltage does not suit the test. It is checked without a time limit.
        Starting,
        Running,
        Stopping,   ///< The library ends the measurement.
        CleaningUp, ///< The library has finished the clean-up, the instrument may not have.
        Leaving,    ///< Measurement mode has been left, and the stop is not confirmed yet.
        Ended
    };

    enum class Outcome { None, Completed, Failed, Aborted, LinkLost };

    /// Why the measurement failed.
    enum class Reason {
        None,
        Error,        ///< `FirstError()` is the reason.
        NotPrepared,  ///< The instrument did not prepare it in the time given.
        NotStarted,   ///< The instrument did not start it in the time given.
        NoResult,     ///< The measurement ended early or without a reading, and no error was seen.
        FunctionLost, ///< While it ran, the instrument gave it up for another function, or restarted.
        OtherFunction ///< A function that was not started here does not stop.
    };

    enum class Action {
        None,
        Prepare,         ///< Hand over the settings, then enter measurement mode.
        PrepareAndStart, ///< The same as `Prepare`, and ask for the start as well.
        Start,
        Abort, ///< Abort the measurement, then do the same as for `Leave`.
        Leave, ///< Leave measurement mode and ask for the identity.
        Finish ///< The session has ended.
    };

    /// A continuous function is complete after so many seconds; without them, it runs until it is aborted. A
    /// single function is complete with its result.
    MeasurementSession(Vesmar::MeasurementType function, bool isSingle, std::optional<int> seconds);
    virtual ~MeasurementSession() = default;

    /// To be called when the link is up.
    Action Begin(const MeasurementPicture& picture) { return Observe(picture); }
    /// To be called whenever a part of the picture has changed.
    Action Observe(const MeasurementPicture& observed);
    /// To be called when the instrument's identity has been read.
    Action IdentityRead(const MeasurementPicture& picture);
    /// To be called when somebody wants the measurement to end.
    Action Abort();
    /// To be called when the present phase has lasted too long.
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
    /// What is to be done once no other function is active at the instrument.
    virtual Action FirstAction() const;
    virtual Action ObservePreparing(const MeasurementPicture& picture);
    virtual Action ObserveMeasuring(const MeasurementPicture& picture);
    /// Whether the library can abort what it does now. Leaving measurement mode ends it in any case.
    virtual bool MayAbort() const;

    /// Whether the library is starting or running a function.
    static bool IsStarted(Vesmar::MeasurementState status);
    void Enter(Phase phase) { _phase = phase; }
    Action Complete();
    Action Fail(Reason reason, Action action);
    /// The error becomes `FirstError()`, unless there was one before.
    Action FailWith(Vesmar::Error error, Action action);

private:
    MeasurementPicture WithoutLeftovers(MeasurementPicture picture);
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
    std::optional<Vesmar::MeasurementState>
        _leftover;                ///< The status of before the preparation, while it has not changed since.
    bool _wasActive = false;      ///< The instrument has reported the function since it was prepared.
    int _secondsRun = 0;          ///< The library counts from 0 again once it is over.
    bool _isIdentityRead = false; ///< Since measurement mode was left.
    bool _isStopConfirmed = false;
};

} // namespace VesmarClient
