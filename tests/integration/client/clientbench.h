#pragma once

#include <memory>

#include <VesmarClient/instrument.h>

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "support/logcapture.h"

/// An application of the client at a simulated instrument of its own, in one process and in virtual time, of
/// which a guard would know nothing: it does without.
class ClientBench
{
public:
    explicit ClientBench(const Simulator::InstrumentOptions& options = {}) : simulator(options)
    {
        client.setGuardPolicy(VesmarClient::GuardPolicy::Off);
    }

    /// Opens the line, and waits until the link is up.
    void Connect();
    /// Has the simulator carry out a command as it is typed, such as "scenario falls-back"; none where the
    /// text is empty.
    void Execute(const char* command);
    /// Ends a fault of the line, where it has hung up with a new line at the old path.
    void Plug();
    /// Whether the instrument has been asked to prepare anything.
    bool HasPrepared() const;
    /// Whether no function is selected at the instrument, so that its output is off.
    bool IsOff() { return simulator.Status().function == 0; }

    LineInstrument simulator; // First: the line is the instrument's.
    VesmarClient::Instrument client;

private:
    const LogCapture _trace;
};

/// A measurement, with all that it tells.
class Measured
{
public:
    /// The words are those of the command line: "rcd --mode ub-re".
    Measured(ClientBench& bench, const char* words);

    VesmarClient::Measurement* operator->() const { return _job; }

    void AwaitPhase(VesmarClient::Phase phase) const { AWAIT(phases.contains(phase)); }
    void AwaitEnd() const { AWAIT(_job->isFinished()); }
    /// Waits for the end, which is proved, and for which the failure's name is empty where nothing failed.
    void VerifyEnd(VesmarClient::Outcome outcome, const char* failure) const;
    /// The same for an abort.
    void VerifyAbort() const { VerifyEnd(VesmarClient::Outcome::Aborted, ""); }

    QVector<VesmarClient::Phase> phases;
    QVector<VesmarClient::Result> results;
    bool wasOff = false; ///< Whether the output was off when the measurement had finished.

private:
    QObject _context;
    VesmarClient::Measurement* _job;
};

/// Settings from the words of the command line. Options that the catalogue does not have are left out.
VesmarClient::Settings SettingsOf(const QString& words);
