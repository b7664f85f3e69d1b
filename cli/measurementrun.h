#pragma once

#include <QTimer>

#include "cli/link.h"
#include "cli/measurementsession.h"
#include "cli/measurementview.h"
#include "cli/measureverb.h"
#include "cli/readinesswatch.h"

namespace Cli
{

/// Carries out at the instrument what a session decides, tells it what happens, and shows it.
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
    MeasurementPicture Picture() const;
    void Begin();
    void Follow();
    void FollowIdentity();
    void FollowResults(const Vesmar::MeasurementResults& results);
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
    MeasurementSession _session;
    Phase _notedPhase = Phase::AwaitingIdle;
    QTimer _limit;
    bool _isLossNoted = false;
};

} // namespace Cli
