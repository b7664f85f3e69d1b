#pragma once

#include <QPointer>
#include <QTimer>

#include <memory>

#include <Vesmar/rcdsettings.h>

#include "cli/kit/link.h"
#include "cli/measure/measurementview.h"
#include "client/sessions/measurementsession.h"

namespace Cli
{

/// How long a measurement may keep one waiting.
struct MeasureLimits {
    std::chrono::milliseconds prepare{10000}; ///< For preparing, and then again for starting.
    std::chrono::milliseconds stop{15000};    ///< For stopping, and for its confirmation.
    std::chrono::milliseconds cleanUp{5000};  ///< For a clean-up, whose end nobody reports.
};

/// Carries out at the instrument what a session decides, lets the session observe the instrument, and shows
/// what happens. A measurement whose Re another test measures runs that test first, in a session of its own.
class MeasurementRun : public QObject
{
    Q_OBJECT

public:
    MeasurementRun(Link& link, MeasurementView& view, const MeasureFunction& function,
                   const MeasureLimits& limits);

private:
    using Phase = VesmarClient::MeasurementSession::Phase;
    using Action = VesmarClient::MeasurementSession::Action;

    void WatchInstrument();
    VesmarClient::MeasurementPicture Picture();
    void Begin();
    void BeginTest(Vesmar::MeasurementSettings& settings);
    void EndTest();
    void ObserveInstrument();
    void ReceiveIdentity();
    void AcceptResults();
    bool IsMeasured(Vesmar::MeasurementType results) const;
    bool AdoptRe(const Vesmar::MeasurementResults& results);
    void Interrupt(int signalNumber);
    void Abort(const QString& reason);
    void CarryOut(Action action);
    void Leave();
    void EnterPhase();
    void ReportLoss();

    Link& _link;
    Vesmar::Tester& _tester;
    MeasurementView& _view;
    const MeasureFunction& _function;
    MeasureLimits _limits;
    std::unique_ptr<Vesmar::RCDSettings>
        _reSettings; ///< The settings of the test that measures Re; null without one.
    Vesmar::MeasurementSettings* _settings = nullptr; ///< The settings of the test under way.
    std::unique_ptr<VesmarClient::MeasurementSession> _session;
    QPointer<Vesmar::MeasurementResults>
        _accepted;           ///< The results of the measured function that were read last.
    bool _hasResult = false; ///< Whether the test under way has a result.
    Phase _phase = Phase::AwaitingIdle;
    QTimer _limit;
    bool _isLossReported = false;
};

} // namespace Cli
