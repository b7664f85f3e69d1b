#pragma once

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// This process as the program vesmar-guard sees it. While a measurement is watched and this process ends,
/// however it ends, the guard takes the line over and stops the instrument.
///
/// The guard is started when it is first needed, and waits until this process ends. Nothing of it is seen by
/// the application: it is nobody's child, belongs to a session of its own, and inherits no descriptor but the
/// channel over which it is spoken to. To be used by one thread at a time.
class Guard
{
public:
    Guard() = default;
    /// Closes the channel, which ends the guard. One that watches takes the line over.
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    /// The one of this process, which lives as long as that.
    static Guard& OfThisProcess();

    /// Has the guard watch, and waits until it does; the first time it is started, which takes a moment.
    /// Where it cannot be started, the failure "guard-missing".
    Failure Watch();
    /// The measurement is over.
    void Release();
    bool IsWatching() const { return _isWatching; }

private:
    bool IsAcknowledged() const;
    void GiveUp();
    void Close();

    int _channel = -1; ///< Negative while there is no guard.
    bool _isWatching = false;
};

} // namespace VesmarClient
