#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <VesmarClient/enumerations.h>

/// The one form of JSON output: a line for each event. The last line shows how the run has ended.
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
    QString
        reason; ///< A word for what went wrong. Empty where nothing did, or where the error is the reason.
    VesmarClient::Error error =
        VesmarClient::Error::NoErrors; ///< The error that the instrument or the library reports with it.
};

/// The ending of a run that has done what was asked for.
Ending DoneWith(const QString& message);

/// The ending of a run that a signal has ended before it was done.
Ending EndedBySignal(int signalNumber);

/// A line that says what happened, and when it was shown.
QByteArray EventLine(const QDateTime& time, const QString& event, const QJsonObject& fields);

/// The last line, with the fields that the verb adds to it.
QByteArray ResultLine(const QDateTime& time, const Ending& ending, const QJsonObject& fields = {});

} // namespace Cli
