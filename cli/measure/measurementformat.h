#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

#include <chrono>
#include <optional>

#include "cli/output/event.h"
#include "client/sessions/measurementsession.h"
#include "client/words/readings.h"

/// How a measurement looks: live, at its end, in JSON and in a file. What is formatted here ends its line,
/// but for the live line.
namespace Cli
{

/// How far a measurement is.
struct MeasurementProgress {
    std::chrono::milliseconds elapsed;
    std::optional<std::chrono::milliseconds> total; ///< None where it is not known in advance.
};

/// "  3.2 s of 5 s [======    ]  current 0.5, voltage 230", cut to the width.
QString LiveLine(const MeasurementProgress& progress, const QVector<VesmarClient::DriverReading>& readings,
                 int width);
/// "  3.2 s  running", for a measurement that has no readings before its end.
QString PhaseLine(std::chrono::milliseconds elapsed, const QString& phase);
/// What the phase is called. Empty for a phase that is not shown.
QString PhaseName(VesmarClient::MeasurementSession::Phase phase);
/// A line with the elapsed time and the readings, for an output that is no terminal.
QByteArray ReadingLine(std::chrono::milliseconds elapsed,
                       const QVector<VesmarClient::DriverReading>& readings);
QByteArray ReadingJson(const QDateTime& time, std::chrono::milliseconds elapsed,
                       const QVector<VesmarClient::DriverReading>& readings);

QByteArray CsvHeader(Vesmar::MeasurementType function);
QByteArray CsvRow(const QDateTime& time, std::chrono::milliseconds elapsed,
                  const QVector<VesmarClient::DriverReading>& readings);

/// Whether the measurement is done, and the instrument confirmed to have stopped.
bool IsDone(const VesmarClient::MeasurementSession& session);
/// How the measurement has ended, with a message of a few sentences. The library's present error may say why
/// the link was lost.
Ending EndingOf(const QString& function, const VesmarClient::MeasurementSession& session,
                Vesmar::Error presentError);
/// The result as a table.
QByteArray ResultText(const QVector<VesmarClient::DriverReading>& readings);
/// What the result in JSON has besides the ending. The readings are the last ones.
QJsonObject ResultFields(const QString& function, bool isStopConfirmed,
                         const QVector<VesmarClient::DriverReading>& readings);

} // namespace Cli
