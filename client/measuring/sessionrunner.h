#pragma once

#include <QTimer>

#include <functional>

#include "client/measuring/measuredresults.h"
#include "client/measuring/measurementorder.h"

namespace VesmarClient
{

/// Runs one test: carries out at the instrument what its session decides, and lets the session observe the
/// instrument. To be created on the driver's thread.
class SessionRunner : public QObject
{
    Q_OBJECT

public:
    using Phase = MeasurementSession::Phase;
    /// Receives each of the results. False if they are of no use.
    using Receiver = std::function<bool(const Vesmar::MeasurementResults& results)>;

    /// The settings outlive this.
    SessionRunner(Vesmar::MeasurementSettings& settings, const MeasurementLimits& limits, Receiver receiver);

    void Begin();
    void Abort() { CarryOut(_session->Abort()); }

    const Vesmar::MeasurementSettings& Settings() const { return _settings; }
    const MeasurementSession& Session() const { return *_session; }

Q_SIGNALS:
    void PhaseEntered(VesmarClient::MeasurementSession::Phase phase);
    /// The session has ended. Nothing is observed any more.
    void Ended();

private:
    void WatchTester();
    MeasurementPicture Picture();
    void Observe();
    void CarryOut(MeasurementSession::Action action);
    void Leave();
    void LeadOut();
    void EnterPhase();
    void End();

    Vesmar::MeasurementSettings& _settings;
    MeasurementLimits _limits;
    Receiver _receiver;
    Vesmar::Tester& _tester;
    MeasuredResults _results;
    std::unique_ptr<MeasurementSession> _session;
    std::optional<Phase> _phase;
    bool _hasResult = false;
    QTimer _limit;      ///< Of the present phase.
    QTimer _leadingOut; ///< Of a driver that looks at nothing but a running test.
};

} // namespace VesmarClient
