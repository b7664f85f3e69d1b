#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <VesmarClient/updatejob.h>

#include "cli/output/event.h"

/// How a firmware update looks while it goes on and at its end. What is formatted here ends its line, but for
/// the live line.
namespace Cli
{

/// How much has been sent.
struct UpdateProgress {
    int confirmed; ///< The number of sectors that the instrument has confirmed.
    int sectors;
    qint64 left; ///< In milliseconds; -1 where it is not known.

    int Percent() const { return 100 * confirmed / sectors; }
};

UpdateProgress ProgressOf(const VesmarClient::UpdateJob& job);

/// " 25 % [=====               ]  2 of 8 sectors, 3 s left", for the live line of a terminal.
QString UpdateLiveLine(const UpdateProgress& progress);
/// The same without a bar, for an output that is no terminal.
QByteArray UpdateProgressLine(const UpdateProgress& progress);
QByteArray UpdateProgressJson(const QDateTime& time, const UpdateProgress& progress);

/// "1.05", or "unknown".
QString VersionText(const QString& version);

/// What is said where a signal must not end the update.
QString UpdateGoesOnMessage(int signalNumber);

/// An update that is over.
struct UpdateEnd {
    VesmarClient::Outcome outcome;
    VesmarClient::Failure failure;
    VesmarClient::Phase phase; ///< The last one before the end.
    int confirmed;
    int sectors;
    int signalNumber; ///< That has ended it; 0 where none has.
    QString versionBefore;
    QString versionAfter;
};

/// How the update has ended, with a message of a few sentences.
Ending EndingOf(const UpdateEnd& end);
/// What the result in JSON has besides the ending.
QJsonObject ResultFields(const UpdateEnd& end);

} // namespace Cli
