#pragma once

#include <Vesmar/error.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>

namespace VesmarClient
{

/// What the library tells about a firmware update, at one moment.
struct UpdatePicture {
    Vesmar::Error error;
    Vesmar::OperationState status;
    int progress; ///< In per cent.
    Vesmar::OperationMode mode;
};

/// Follows one firmware update from the link that is up to the instrument that is back with its firmware. It
/// judges, and does nothing itself.
///
/// The library's errors last until the next status, and its operation state `Finished` for one exchange, so
/// either may be gone before it is seen. What follows tells the same: an update that is left before all
/// sectors are confirmed has failed, and one that is left after that without an error of the link is
/// confirmed. Whether it was taken is for the instrument to say, by coming back in its normal mode.
class UpdateSession
{
public:
    enum class Phase {
        Connecting,
        ChangingMode, ///< Nothing has been sent yet.
        Initializing, ///< From here to the end of `Sending` it must not be cut short.
        Sending,
        Restarting, ///< All was confirmed; the instrument installs it and comes back.
        Ended
    };

    enum class Outcome {
        None,
        Updated,
        Failed, ///< `FirstError()` tells.
        ModeNotChanged,
        StaysInUpdateMode, ///< All was confirmed, but it did not leave that mode.
        NotBack,           ///< All was confirmed, but it was not seen again.
        LinkLost,          ///< Before anything was sent.
        Interrupted        ///< By the signal `SignalNumber()`, at a harmless moment.
    };

    UpdateSession(int sectors, bool isOffline);

    /// The update has been asked for.
    void Begin();
    /// Something has changed.
    void Observe(const UpdatePicture& picture);
    /// Of the instrument, in the mode given.
    void IdentityRead(Vesmar::OperationMode mode);
    /// A moment after the library has left the update, when a lost link would have shown.
    void CheckMode(const UpdatePicture& picture);
    /// The present phase has taken too long. The status is the present one, which may tell that it is over.
    void TimeOver(Vesmar::OperationState status);
    /// Somebody wants it to end. False where that must not be; the status likewise.
    bool Interrupt(Vesmar::OperationState status, int signalNumber);
    /// The link was taken down. The picture tells what was cut short all the same.
    void LinkClosed(const UpdatePicture& picture);

    Phase CurrentPhase() const { return _phase; }
    Outcome CurrentOutcome() const { return _outcome; }
    Vesmar::Error FirstError() const { return _error; }
    /// The phase in which it ended.
    Phase EndedIn() const { return _endedIn; }
    int SignalNumber() const { return _signalNumber; }
    int Progress() const { return _progress; }
    int Sectors() const { return _sectors; }
    /// How many sectors were confirmed, at least: a per cent may be more than one.
    int ConfirmedSectors() const;

private:
    bool IsUnderWay() const;
    void EnterPhaseOf(Vesmar::OperationState status);
    void Conclude(Vesmar::Error error);
    void Fail(Vesmar::Error error);
    void End(Outcome outcome);

    int _sectors;
    bool _isOffline;
    Phase _phase = Phase::Connecting;
    Phase _endedIn = Phase::Connecting;
    Outcome _outcome = Outcome::None;
    Vesmar::Error _error = Vesmar::Error::NoErrors;
    int _progress = 0;
    int _signalNumber = 0;
};

} // namespace VesmarClient
