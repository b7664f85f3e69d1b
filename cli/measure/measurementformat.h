#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <chrono>
#include <optional>

#include <VesmarClient/functions.h>
#include <VesmarClient/gap.h>
#include <VesmarClient/result.h>

/// How a measurement looks while it goes on: live, in lines, in JSON and in a file. What is formatted here
/// ends its line, but for the live line and what is shown in it, where no-break spaces join what belongs
/// together.
namespace Cli
{

/// Whether the function gives readings until its time is over.
bool IsContinuous(const VesmarClient::FunctionInfo& function);

/// How far a measurement is.
struct MeasurementProgress {
    std::chrono::milliseconds elapsed;
    std::optional<std::chrono::milliseconds> total; ///< None where it is not known in advance.
};

/// "  3.2 s of 5 s [======    ]  current 0.5, voltage 230".
QString LiveLine(const MeasurementProgress& progress, bool isDangerous, const QString& shown);
/// "  3.2 s  running".
QByteArray TextLine(std::chrono::milliseconds elapsed, bool isDangerous, const QString& shown);

/// "current 0.5, voltage 230".
QString Listed(const QVector<VesmarClient::Reading>& readings);
/// "no reading for 3 s".
QString NoReading(const VesmarClient::Gap& gap);
/// What the phase is called. Empty for a phase that is not shown.
QString PhaseName(VesmarClient::Phase phase);

QJsonObject ReadingsJson(const QVector<VesmarClient::Reading>& readings);
QByteArray ReadingJson(const QDateTime& time, std::chrono::milliseconds elapsed,
                       const QVector<VesmarClient::Reading>& readings);
/// When it begins, and how long it lasts or has lasted so far.
QJsonObject GapFields(const VesmarClient::Gap& gap);

QByteArray CsvHeader(const VesmarClient::FunctionInfo& function);
QByteArray CsvRow(const QDateTime& time, std::chrono::milliseconds elapsed,
                  const QVector<VesmarClient::Reading>& readings);

/// The result as a table.
QByteArray ResultText(const QVector<VesmarClient::Reading>& readings, const QVector<VesmarClient::Gap>& gaps);

} // namespace Cli
