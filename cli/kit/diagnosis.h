#pragma once

#include <QString>

#include <chrono>

#include <Vesmar/error.h>
#include <Vesmar/operationmode.h>

#include "cli/output/event.h"

namespace Cli
{

/// Why something was not done: a word for programs and a sentence or two for people.
struct Failure {
    QString kind;
    QString message;
    Vesmar::Error error = Vesmar::Error::NoErrors; ///< With which the library tells the same.
    Ending::Outcome outcome = Ending::Outcome::Failed;
};

/// What is known when the time is over and the link is not up.
struct Situation {
    int openError;  ///< Of an attempt to open the serial device; 0 if that works.
    bool hasAnswer; ///< The instrument's identity was read at least once.
    Vesmar::OperationMode mode;
    Vesmar::Error error;
    std::chrono::milliseconds waited;
};

/// Tries to open the serial device, which changes nothing about it: 0, or the error number.
int TryToOpenSerialDevice();

/// What is wrong, and what to try.
Failure Diagnose(const Situation& situation);

/// For an instrument that answers, in the mode in which it does nothing but wait for firmware.
Failure InUpdateMode();

/// For a link that was lost before something was done: a sentence that says what. The library's present error
/// may tell why.
Failure LinkLost(const QString& notDone, Vesmar::Error error);

/// The error if it says why the link does not work; not the one with which the library goes on trying.
Vesmar::Error Verdict(Vesmar::Error error);

/// Whether the library tells with it that the link is lost.
bool IsLinkError(Vesmar::Error error);

} // namespace Cli
