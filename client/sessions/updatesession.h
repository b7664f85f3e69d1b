#pragma once

#include <Vesmar/error.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>

namespace VesmarClient
{

/// The properties of the library that concern a firmware update, at one moment.
struct UpdatePicture {
    Vesmar::Error error;
    Vesmar::OperationState status;
    int progress; ///< In per cent.
    Vesmar::OperationMode mode;
};

/// Observes one firmware update, from the link that is up to the instrument that is back with its firmware.
/// It decides how the update stands, and does nothing itself.
///
/// The library's errors last until the next status, and its operation state `Finished` for one exchange, so
/// either may be gone before it is seen. What comes next shows the same: an update that is left before all
/// sectors are confirmed has failed, and one that is left after that without an error of the link is
/// confirmed. The instrument shows that it has accepted the firmware by coming back in its normal mode.
class UpdateSession
{
public:
    enum class Phase {
        Connecting,
        ChangingMode, ///< Nothing has been sent yet.
        Initializing, ///< From here to the end of `Sending`, the update must not be cut short.
        Sending,
        Restarting, ///< All was confirmed. The instrument installs the firmware and comes back.
        Ended
    };

    enum class Outcome {
        None,
        Updated,
        Failed, ///< `FirstError()` is the reason.
        ModeNotChanged,
        StaysInUpdateMode, ///< All was confirmed, but the instrument did not leave update mode.
        NotBack,           ///< All was confirmed, but the instrument was not seen again.
        LinkLost,          ///< The link was lost before anything was sent.
        Interrupted        ///< Somebody ended it, at a harmless moment.
    };

    UpdateSession(int sectors, bool isOffline);

    /// To be called when the update has been asked for.
    void Begin();
    /// To be called whenever a part of the picture has changed.
    void Observe(const UpdatePicture& picture);
    /// To be called when the instrument's identity has been read, in the mode given.
    void IdentityRead(Vesmar::OperationMode mode);
    /// To be called a moment after the library has left the update, when a lost link would have shown.
    void CheckMode(const UpdatePicture& picture);
    /// To be called when the present phase has lasted too long. The status is the present one, which may show
    /// that the phase is over.
    void TimeOver(Vesmar::OperationState status);
    /// To be called when somebody wants the update to end. False where it must not end. The status is the
    /// present one.
    bool Interrupt(Vesmar::OperationState status);
    /// To be called when the link has been closed. The picture shows an update that was cut short all the
    /// same.
    void LinkClosed(const UpdatePicture& picture);

    Phase CurrentPhase() const { return _phase; }
    Outcome CurrentOutcome() const { return _outcome; }
    Vesmar::Error FirstError() const { return _error; }
    /// The phase in which the update ended.
    Phase EndedIn() const { return _endedIn; }
    int Progress() const { return _progress; }
    int Sectors() const { return _sectors; }
    /// How many sectors were confirmed at least: one per cent may be more than one sector.
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
};

} // namespace VesmarClient
