#pragma once

#include <QString>

#include <chrono>

#include <Vesmar/error.h>

#include <VesmarClient/failure.h>

#include "cli/output/event.h"
#include "client/line/diagnosis.h"

namespace Cli
{

/// Why something was not done: a word for programs and a sentence or two for people.
struct Failure {
    QString kind;
    QString message;
    Vesmar::Error error = Vesmar::Error::NoErrors; ///< The error with which the library reports the same.
    Ending::Outcome outcome = Ending::Outcome::Failed;
};

/// What is wrong with a link that has not come up in the time that was waited, and what to try.
Failure LinkNotUp(const VesmarClient::Situation& situation, std::chrono::milliseconds waited);

/// A failure that the client tells.
Failure FailureOf(const VesmarClient::Failure& failure);

/// The link was lost in the middle of something, as the client tells it.
Failure LinkLost(const VesmarClient::Failure& failure);

/// The instrument answers, in the mode in which it only waits for firmware.
Failure InUpdateMode();

/// The link was lost before something was done, which the sentence names. The library's present error may
/// say why.
Failure LinkLost(const QString& notDone, Vesmar::Error error);

} // namespace Cli
