#include "cli/update/updaterun.h"

namespace Cli
{

using VesmarClient::Phase;
using VesmarClient::UpdateJob;

UpdateRun::UpdateRun(Connection& connection, UpdateView& view, const UpdateFiles& files,
                     const UpdateOptions& options)
    : _connection(connection), _view(view), _files(files), _options(options)
{
    connection.AcceptUpdateMode();
    connection.ShowOn(view.Screen());
    connect(&connection, &Connection::Up, this, &UpdateRun::Begin);
    connect(&connection, &Connection::UpdateModeFound, this, &UpdateRun::Begin);
    connect(&connection, &Connection::Interrupted, this, &UpdateRun::Interrupt);
    connect(&connection.Instrument(), &VesmarClient::Instrument::errorChanged, this,
            [this](VesmarClient::Error error) { _view.ShowError(error); });
    if (options.isOffline) {
        connection.TolerateSilence();
        connect(&connection, &Connection::TimeOver, this, &UpdateRun::Begin);
    }
}

void UpdateRun::Begin()
{
    if (_job != nullptr) {
        return;
    }
    const auto update =
        _options.isOffline ? &VesmarClient::Instrument::updateBlindly : &VesmarClient::Instrument::update;
    _job = (_connection.Instrument().*update)(_files.image, _files.confirmation,
                                              static_cast<int>(_options.confirmTimeout.count()));
    _view.ShowVersionBefore(_job->versionBefore());
    connect(_job, &UpdateJob::phaseChanged, this, &UpdateRun::EnterPhase);
    connect(_job, &UpdateJob::progressChanged, this, [this] { _view.ShowProgress(ProgressOf(*_job)); });
    connect(_job, &UpdateJob::finished, this, &UpdateRun::End);
}

void UpdateRun::EnterPhase(Phase phase)
{
    _view.ShowPhase(phase);
    if (phase == Phase::Sending) {
        _view.ShowProgress(ProgressOf(*_job));
    }
    if (phase == Phase::Finished) {
        return;
    }
    _phase = phase;
    if (_signalNumber != 0 && !MayBeInterrupted()) { // the signal came too late
        _view.Say(UpdateGoesOnMessage(_signalNumber));
        _signalNumber = 0;
    }
}

void UpdateRun::Interrupt(int signalNumber)
{
    if (_job == nullptr) {
        _connection.Finish(EndedBySignal(signalNumber));
    } else if (MayBeInterrupted()) {
        _signalNumber = signalNumber;
        _job->abort();
    } else {
        _view.Say(UpdateGoesOnMessage(signalNumber));
    }
}

/// Whether the instrument has its firmware, the old or the new, and the driver is not on its way to send.
bool UpdateRun::MayBeInterrupted() const
{
    return _phase == Phase::Restarting ||
           (!_options.isOffline && (_phase == Phase::Waiting || _phase == Phase::ChangingMode));
}

void UpdateRun::End()
{
    const UpdateEnd end{_job->outcome(),          _job->failure(),     _phase,
                        _job->sectorsConfirmed(), _job->sectors(),     _signalNumber,
                        _job->versionBefore(),    _job->versionAfter()};
    _view.ShowEnd(end);
    _connection.EndWork(EndingOf(end).status);
}

} // namespace Cli
