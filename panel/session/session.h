#pragma once

#include <QPointer>
#include <QTimer>

#include <VesmarClient/instrument.h>
#include <VesmarClient/tracerouter.h>

#include "panel/session/record.h"
#include "panel/session/tracelines.h"

namespace Panel
{

/// What the pages share: the instrument, and the measurement under way with its record. Every measurement of
/// the panel begins here.
class Session : public QObject
{
    Q_OBJECT

public:
    Session();

    VesmarClient::Instrument& instrument() { return _instrument; }
    TraceLines& traceLines() { return _traceLines; }

    /// Why the line could not be taken; empty while it is open or being opened.
    VesmarClient::Failure openFailure() const { return _openFailure; }
    /// Takes the line, and tries again every few seconds where that has failed.
    void open();
    /// Gives the line back; see `Instrument::close`.
    void close();

    /// Measures, and keeps a record of it. A function with a dangerous voltage has to be kept alive every
    /// `KeepAliveInterval`.
    VesmarClient::Measurement* measure(const VesmarClient::Settings& settings);
    static constexpr int KeepAliveInterval = 1000; ///< In milliseconds.

    /// Replaces the firmware. Nothing may end that in the middle.
    VesmarClient::UpdateJob* update(const QByteArray& image, const QByteArray& confirmation);
    bool isUpdating() const { return _update != nullptr && !_update->isFinished(); }

    /// The measurement under way; null where there is none.
    VesmarClient::Measurement* measurement() const { return _measurement; }
    /// The record of the measurement under way; that of the last one where there is none.
    RecordPointer record() const { return _record; }

    /// Whether a dangerous voltage is present, or may be: a function with one is under way, whoever has
    /// started it, or the last one is not known to have stopped.
    bool isDangerous() const { return _isDangerous; }
    /// Whether a measurement has ended without the proof that the instrument has stopped.
    bool isStopInDoubt() const { return _isStopInDoubt; }

    /// Says that whoever measures with a dangerous voltage is still there.
    void keepAlive();
    /// Ends the measurement under way.
    void stop();
    /// Ends the measurement under way or, where there is none, whatever else runs at the instrument. Any job
    /// but an update gives way to it.
    void stopAny();
    /// Ends whatever runs at the instrument, and proves it: the way out of a stop in doubt.
    VesmarClient::StopJob* proveStop();

Q_SIGNALS:
    void openFailureChanged();
    void measurementBegan();
    /// The measurement under way has ended, and its record is complete.
    void measurementEnded(const Panel::RecordPointer& record);
    void dangerChanged();
    void stopDoubtChanged();
    /// Something that a person asked for was not done. What the instrument tells is not among it.
    void failed(const VesmarClient::Failure& failure);

private:
    void setOpenFailure(const VesmarClient::Failure& failure);
    void keepResult(const VesmarClient::Result& result);
    void endRecord();
    void decideDanger();
    void setStopInDoubt(bool isInDoubt);

    TraceLines _traceLines; // before the router
    VesmarClient::TraceRouter _trace;
    VesmarClient::Instrument _instrument;
    VesmarClient::Failure _openFailure;
    QTimer _nextTry;
    QPointer<VesmarClient::Measurement> _measurement;
    QPointer<VesmarClient::UpdateJob> _update;
    QPointer<VesmarClient::StopJob> _stopJob;
    QSharedPointer<Record> _record;
    bool _isDangerous = false;
    bool _isStopInDoubt = false;
    bool _hasBegun = false; // whether anything was sent for the measurement
};

} // namespace Panel

Q_DECLARE_METATYPE(Panel::RecordPointer)
