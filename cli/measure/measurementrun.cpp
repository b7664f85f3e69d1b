#include "cli/measure/measurementrun.h"

#include <algorithm>

#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

using VesmarClient::Gap;
using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Measurement;
using VesmarClient::Outcome;
using VesmarClient::Phase;

MeasurementRun::MeasurementRun(Connection& connection, MeasurementView& view,
                               const VesmarClient::Settings& settings,
                               const VesmarClient::MeasurementTimeouts& timeouts)
    : _connection(connection),
      _view(view),
      _settings(settings),
      _timeouts(timeouts),
      _isReNext(settings.value(QStringLiteral("with-ub-re")).toBool())
{
    connection.ShowOn(view.Screen());
    const Instrument* instrument = &connection.Instrument();
    connect(instrument, &Instrument::errorChanged, &view, &MeasurementView::ShowError);
    connect(instrument, &Instrument::linkStateChanged, this, &MeasurementRun::ReportLoss);
    connect(&connection, &Connection::Up, this, &MeasurementRun::Begin);
    connect(&connection, &Connection::Interrupted, this, &MeasurementRun::Interrupt);
    connect(&view, &MeasurementView::OutputLost, this, &MeasurementRun::EndUnseen);
}

void MeasurementRun::Begin()
{
    _view.WarnOfDanger();
    BeginTest();
    _measurement = _connection.Instrument().measure(_settings, _timeouts);
    connect(_measurement, &Measurement::phaseChanged, this, &MeasurementRun::EnterPhase);
    connect(_measurement, &Measurement::reading, &_view, &MeasurementView::ShowResult);
    connect(_measurement, &Measurement::gapsChanged, this, [this] { _view.ShowGap(Gaps().last()); });
    connect(_measurement, &Measurement::finished, this, &MeasurementRun::End);
}

/// Only the tests of residual-current devices have modes that make different tests of them.
void MeasurementRun::BeginTest()
{
    const auto function = VesmarClient::Functions::find(_settings.function());
    const bool isRcd = function.kind == VesmarClient::FunctionKind::Rcd;
    const QString mode =
        _isReNext ? QStringLiteral("ub-re") : _settings.value(QStringLiteral("mode")).toString();
    _view.BeginTest(isRcd ? mode : QString());
    _isTestNext = _isReNext;
    _isReNext = false;
}

void MeasurementRun::EnterPhase(Phase phase)
{
    if (phase == Phase::Finished) {
        return;
    }
    if (_phase == Phase::Confirming) {
        BeginTest();
    }
    _phase = phase;
    _lastPhase = phase != Phase::Confirming ? phase : _lastPhase;
    if (phase == Phase::Running) {
        _runsSince = _measurement->elapsed();
    }
    if (phase == Phase::AwaitingMains) {
        _view.Say(Text::tr("%1; waiting until it does. Ctrl-C aborts the measurement.")
                      .arg(Show(VesmarClient::Error::RCDCheckObjectULNIECInvalid).text));
    }
    _view.ShowPhase(phase);
}

QVector<Gap> MeasurementRun::Gaps() const
{
    QVector<Gap> gaps = _measurement->gaps();
    for (Gap& gap : gaps) {
        gap.begin = std::max<qint64>(gap.begin - _runsSince, 0);
    }
    return gaps;
}

/// Reports the loss of the link once, however often the link is lost.
void MeasurementRun::ReportLoss(LinkState state)
{
    const bool isLost = state == LinkState::Interrupted || state == LinkState::Lost;
    if (isLost && _phase != Phase::Waiting && _phase != Phase::Confirming && !_isLossReported) {
        _isLossReported = true;
        _view.Say(Text::tr("Link lost, the state of the instrument is unknown; trying to get it back and to "
                           "stop the measurement."));
    }
}

void MeasurementRun::Interrupt(int signalNumber)
{
    if (_measurement != nullptr) {
        Abort(Text::tr("signal %1").arg(signalNumber));
    } else {
        _connection.Finish(EndedBySignal(signalNumber));
    }
}

void MeasurementRun::EndUnseen()
{
    if (_measurement != nullptr) {
        Abort(_view.OutputLoss());
    } else {
        _connection.EndWork(ExitStatus::NotDone);
    }
}

/// The abort comes first, and the message about it after that.
void MeasurementRun::Abort(const QString& reason)
{
    _measurement->abort();
    _view.Say((IsEnding() ? Text::tr("The measurement is being ended already (%1); waiting until the "
                                     "instrument is confirmed to have stopped.")
                          : Text::tr("Aborting the measurement (%1); waiting until the instrument is "
                                     "confirmed to have stopped."))
                  .arg(reason));
    _isAborted = true;
}

bool MeasurementRun::IsEnding() const
{
    return _isAborted || (!_isTestNext && (_phase == Phase::Stopping || _phase == Phase::Confirming));
}

void MeasurementRun::End()
{
    if (_phase == Phase::Waiting) {
        EndUnbegun();
        return;
    }
    _connection.EndWork(_view.ShowEnd({_measurement->outcome(), _measurement->isStopConfirmed(),
                                       _measurement->failure(), Gaps(), _lastPhase}));
}

/// Nothing was sent.
void MeasurementRun::EndUnbegun()
{
    const VesmarClient::Failure failure = _measurement->failure();
    if (_measurement->outcome() == Outcome::Aborted) {
        _connection.Finish({ExitStatus::Aborted, Ending::Outcome::Aborted,
                            Text::tr("Aborted before the measurement began."), QString()});
    } else if (failure.name == QLatin1String("not-connected")) {
        _connection.Fail(ExitStatus::LinkLost, LinkLost(Text::tr("Nothing was measured.")));
    } else {
        _connection.Fail(ExitStatus::NotDone, FailureOf(failure));
    }
}

} // namespace Cli
