#pragma once

#include <QPointer>
#include <QTimer>

#include <memory>

#include <Vesmar/rcdsettings.h>

#include "cli/kit/link.h"
#include "cli/measure/measurementview.h"
#include "cli/sessions/measurementsession.h"
#include "cli/sessions/readinesswatch.h"
#include "cli/verbs/measureverb.h"

namespace Cli
{

/// Carries out at the instrument what a session decides, tells it what happens, and shows it. A measurement
/// that takes its Re from another test runs that first, in a session of its own.
class MeasurementRun : public QObject
{
    Q_OBJECT

public:
    MeasurementRun(Link& link, MeasurementView& view, const MeasureFunction& function,
                   const MeasureLimits& limits);

private:
    using Phase = MeasurementSession::Phase;
    using Action = MeasurementSession::Action;

    void WatchInstrument();
    MeasurementPicture Picture();
    void Begin();
    void BeginTest(Vesmar::MeasurementSettings& settings);
    void EndTest();
    void Follow();
    void FollowIdentity();
    void TakeResults();
    bool IsMeasured(Vesmar::MeasurementType results) const;
    bool TakeRe(const Vesmar::MeasurementResults& results);
    void Interrupt(int signalNumber);
    void Abort(const QString& reason);
    void CarryOut(Action action);
    void Leave();
    void NotePhase();
    void NoteLoss();

    Link& _link;
    Vesmar::Tester& _tester;
    MeasurementView& _view;
    const MeasureFunction& _function;
    MeasureLimits _limits;
    ReadinessWatch _readiness;
    std::unique_ptr<Vesmar::RCDSettings> _reSettings; ///< Of the test that measures Re; null without one.
    Vesmar::MeasurementSettings* _settings = nullptr; ///< Of the test under way.
    std::unique_ptr<MeasurementSession> _session;
    QPointer<Vesmar::MeasurementResults> _taken; ///< The last results of this function.
    bool _hasResult = false;                     ///< Of the test under way.
    Phase _notedPhase = Phase::AwaitingIdle;
    QTimer _limit;
    bool _isLossNoted = false;
};

} // namespace Cli
