#pragma once

#include <QByteArrayList>
#include <QTemporaryDir>
#include <QVector>

#include "simulator/line/instrument.h"

/// The folder of an instrument's log. It is there before the instrument and after it.
struct LogFolder {
    const QTemporaryDir folder;
};

/// The simulated instrument at the serial device of this process, for as long as it lives. It keeps a log.
class LineInstrument : private LogFolder, public Simulator::Instrument
{
public:
    explicit LineInstrument(const Simulator::InstrumentOptions& options = {});
    ~LineInstrument();
    LineInstrument(const LineInstrument&) = delete;
    LineInstrument(LineInstrument&&) = delete;
    LineInstrument& operator=(const LineInstrument&) = delete;
    LineInstrument& operator=(LineInstrument&&) = delete;

    /// Leads the serial device to the present line, after a hang-up to the new one.
    void Attach() const;

    /// The exchanges so far.
    QVector<Simulator::Exchange> Record() const;
    /// The requests so far.
    QByteArrayList Sent() const;
    /// The requests since the first one that found no answer, a damaged one or a refusal.
    QByteArrayList SentSinceTheFirstFailure() const;
    /// The exchanges that they belong to.
    QVector<Simulator::Exchange> RecordSinceTheFirstFailure() const;
    /// What it has logged so far, without the times: requests, answers, and what it did.
    QByteArrayList Log() const;
    /// The pieces that it has sent unasked so far.
    QByteArrayList SentUnasked() const;
};

/// The requests of these exchanges.
QByteArrayList RequestsOf(const QVector<Simulator::Exchange>& exchanges);

/// The entries from the first of this kind on; none where there is none.
QByteArrayList Since(const QByteArray& first, const QByteArrayList& entries);

/// An instrument that knows the time.
Simulator::InstrumentOptions WithClock(const QDateTime& date);

/// An instrument that is back from a restart at once.
Simulator::InstrumentOptions WithQuickRestart();
