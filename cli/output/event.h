#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <Vesmar/error.h>

/// The one form of JSON output: a line for each event, the last of which tells how the run has ended.
/// docs/events.md describes every event.
namespace Cli
{

/// How a run has ended.
struct Ending {
    /// `Done` goes with the exit status 0, and only with that.
    enum class Outcome { Done, Failed, Aborted, Interrupted, LinkLost, UpdateMode };

    int status; ///< What the program ends with.
    Outcome outcome;
    QString message; ///< For people, in a sentence or two.
    QString reason;  ///< A word for what went wrong; empty where nothing did, or where the error tells.
    Vesmar::Error error = Vesmar::Error::NoErrors; ///< What the instrument or the library reports with it.
};

/// What was asked for was done.
Ending DoneWith(const QString& message);

/// By a signal, before it was done.
Ending EndedBySignal(int signalNumber);

/// A line that tells what happened, and when it was told.
QByteArray EventLine(const QDateTime& time, const QString& event, const QJsonObject& fields);

/// The last line, with the fields that a verb has to add.
QByteArray ResultLine(const QDateTime& time, const Ending& ending, const QJsonObject& fields = {});

} // namespace Cli
