#pragma once

#include <QString>

#include <chrono>

#include <VesmarClient/failure.h>

#include "cli/output/event.h"

namespace Cli
{

/// Why something was not done: a word for programs and a sentence or two for people.
struct Failure {
    QString kind;
    QString message;
    VesmarClient::Error error =
        VesmarClient::Error::NoErrors; ///< The error with which the library reports the same.
    Ending::Outcome outcome = Ending::Outcome::Failed;
};

/// What is known of a link that has not come up, over a device that can be opened.
struct Situation {
    bool hasAnswer; ///< The instrument's identity was read at least once.
    VesmarClient::Mode mode;
    VesmarClient::Error error;
};

/// What is wrong with a link that has not come up in the time that was waited, and what to try.
Failure LinkNotUp(const Situation& situation, std::chrono::milliseconds waited);

/// A failure that the client tells.
Failure FailureOf(const VesmarClient::Failure& failure);

/// The link was lost in the middle of something, as the client tells it.
Failure LinkLost(const VesmarClient::Failure& failure);

/// The instrument answers, in the mode in which it only waits for firmware.
Failure InUpdateMode();

/// The link was lost before something was done, which the sentence names.
Failure LinkLost(const QString& notDone);

} // namespace Cli
