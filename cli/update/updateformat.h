#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <chrono>

#include "cli/output/event.h"
#include "client/sessions/updatesession.h"

/// How a firmware update looks while it goes on and at its end. What is formatted here ends its line, but for
/// the live line.
namespace Cli
{

/// How much has been sent.
struct UpdateProgress {
    int percent;
    int confirmed; ///< The number of sectors that the instrument has confirmed.
    int sectors;
    std::chrono::milliseconds elapsed; ///< Since the first sector was sent.
};

/// " 25 % [=====               ]  2 of 8 sectors, 3 s left", cut to the width.
QString UpdateLiveLine(const UpdateProgress& progress, int width);
/// The same without a bar, for an output that is no terminal.
QByteArray UpdateProgressLine(const UpdateProgress& progress);
QByteArray UpdateProgressJson(const QDateTime& time, const UpdateProgress& progress);

/// The instrument's version before and after; empty where it is not known.
struct UpdateVersions {
    QString before;
    QString after;
};

/// "1.05", or "unknown".
QString VersionText(const QString& version);

/// What is said where a signal must not end the update.
QString UpdateGoesOnMessage(int signalNumber);
/// What the program ends with.
int ExitStatusOf(const VesmarClient::UpdateSession& session);
/// How the update has ended, with a message of a few sentences. The library's present error may say why the
/// link was lost.
Ending EndingOf(const VesmarClient::UpdateSession& session, Vesmar::Error presentError);
/// What the result in JSON has besides the ending.
QJsonObject ResultFields(const VesmarClient::UpdateSession& session, const UpdateVersions& versions);

} // namespace Cli
