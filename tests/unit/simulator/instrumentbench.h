#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include "simulator/line/instrument.h"

/// The command that a person would write like this.
inline Simulator::ControlCommand Command(const char* text)
{
    QString error;
    return Simulator::ParseControlCommand(QLatin1String(text), &error).value();
}

/// The requests that were received and dealt with so far, those without an answer included.
inline QVector<QByteArray> RequestsOf(const Simulator::Instrument& instrument)
{
    QVector<QByteArray> requests;
    for (const Simulator::Exchange& exchange : instrument.Exchanges()) {
        requests.append(exchange.request);
    }
    return requests;
}
