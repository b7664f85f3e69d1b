#include "panel/session/session.h"

namespace Panel
{

using VesmarClient::Failure;
using VesmarClient::Function;
using VesmarClient::Functions;
using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Measurement;
using VesmarClient::Outcome;
using VesmarClient::Phase;
using VesmarClient::Result;
using VesmarClient::Settings;
using VesmarClient::StopJob;
using VesmarClient::UpdateJob;

namespace
{

constexpr int TimeBetweenTries = 3000; ///< In milliseconds.

}

Session::Session()
{
    _trace.toCategory();
    _nextTry.setInterval(TimeBetweenTries);
    connect(&_nextTry, &QTimer::timeout, &_instrument, &Instrument::open);
    connect(&_instrument, &Instrument::openFailed, this, &Session::setOpenFailure);
    connect(&_instrument, &Instrument::linkStateChanged, this, [this](LinkState state) {
        if (state != LinkState::Closed) {
            _nextTry.stop();
            setOpenFailure({});
        }
    });
    connect(&_instrument, &Instrument::activeFunctionChanged, this, &Session::decideDanger);
}

void Session::open()
{
    _nextTry.start();
    _instrument.open();
}

void Session::close()
{
    _nextTry.stop();
    _instrument.close();
}

void Session::setOpenFailure(const Failure& failure)
{
    if (failure != _openFailure) {
        _openFailure = failure;
        Q_EMIT openFailureChanged();
    }
}

Measurement* Session::measure(const Settings& settings)
{
    _record.reset(new Record);
    _record->settings = settings;
    _record->begun = QDateTime::currentDateTime();
    _record->identity = _instrument.identity();
    _record->calibrationDate = _instrument.calibrationDate();
    _measurement = _instrument.measure(settings);
    if (_record->function().isDangerous) {
        _measurement->setKeepAliveInterval(KeepAliveInterval);
    }
    connect(_measurement, &Measurement::reading, this, &Session::keepResult);
    connect(_measurement, &Measurement::gapsChanged, this, [this] { _record->gaps = _measurement->gaps(); });
    connect(_measurement, &Measurement::finished, this, &Session::endRecord);
    _hasBegun = false;
    connect(_measurement, &Measurement::phaseChanged, this,
            [this](Phase phase) { _hasBegun = _hasBegun || phase != Phase::Finished; });
    decideDanger();
    Q_EMIT measurementBegan();
    return _measurement;
}

void Session::keepAlive()
{
    if (_measurement != nullptr) {
        _measurement->keepAlive();
    }
}

UpdateJob* Session::update(const QByteArray& image, const QByteArray& confirmation)
{
    _update = _instrument.update(image, confirmation);
    return _update;
}

void Session::stop()
{
    if (_measurement != nullptr) {
        _measurement->abort();
    }
}

void Session::stopAny()
{
    if (_measurement != nullptr) {
        stop();
    } else if (!isUpdating() && (_stopJob == nullptr || _stopJob->isFinished())) {
        proveStop();
    }
}

StopJob* Session::proveStop()
{
    _stopJob = _instrument.stop();
    connect(_stopJob, &StopJob::finished, this,
            [this](Outcome outcome) { setStopInDoubt(_isStopInDoubt && outcome != Outcome::Completed); });
    return _stopJob;
}

void Session::keepResult(const Result& result)
{
    _record->append(static_cast<double>(_record->begun.msecsTo(result.when())) / 1000, result);
}

void Session::endRecord()
{
    _record->outcome = _measurement->outcome();
    _record->failure = _measurement->failure();
    _record->isStopConfirmed = _measurement->isStopConfirmed();
    _record->gaps = _measurement->gaps();
    _measurement->deleteLater();
    _measurement = nullptr;
    setStopInDoubt(_hasBegun && !_record->isStopConfirmed);
    Q_EMIT measurementEnded(_record);
}

void Session::setStopInDoubt(bool isInDoubt)
{
    _isStopInDoubt = isInDoubt;
    decideDanger();
    Q_EMIT stopDoubtChanged();
}

void Session::decideDanger()
{
    const bool isLastDangerous = !_record.isNull() && _record->function().isDangerous;
    const bool isActive = Functions::find(_instrument.activeFunction()).isDangerous;
    const bool isDangerous = isActive || (isLastDangerous && (_measurement != nullptr || _isStopInDoubt));
    if (isDangerous != _isDangerous) {
        _isDangerous = isDangerous;
        Q_EMIT dangerChanged();
    }
}

} // namespace Panel
