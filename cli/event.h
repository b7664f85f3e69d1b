#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <Vesmar/error.h>

/// The one form of JSON output: a line for each event, the last of which tells how the run has ended.
namespace Cli
{

/// How a run has ended.
struct Ending {
    int status;      ///< What the program ends with.
    QString outcome; ///< A word for programs: "done", or what has become of it instead.
    QString message; ///< The same for people, in a sentence or two.
    QString reason;  ///< A word for what went wrong; empty where nothing did, or where the error tells.
    Vesmar::Error error = Vesmar::Error::NoErrors; ///< What the instrument or the library reports with it.
};

/// A line that tells what happened, and when it was told.
QByteArray EventLine(const QDateTime& time, const QString& event, const QJsonObject& fields);

/// The last line, with the fields that a verb has to add.
QByteArray ResultLine(const QDateTime& time, const Ending& ending, const QJsonObject& fields = {});

} // namespace Cli
