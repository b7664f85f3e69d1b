#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QtGlobal>

#include "simulator/control/controlcommand.h"
#include "simulator/control/scenarios.h"

namespace Simulator
{

/// When a fault happens: every condition that is set has to be met.
struct FaultTrigger {
    std::optional<char> request;        ///< first byte of the requests that are counted; unset: any
    std::optional<int> from;            ///< the first of these that is concerned, counted from 1
    std::chrono::milliseconds after{0}; ///< since the fault was set
    std::optional<std::chrono::milliseconds> until; ///< since the fault was set
    std::optional<double> probability;              ///< for each request that meets the rest, 0 to 1
    quint32 seed = 1;                               ///< of the probability; the same seed, the same requests

    /// Nothing but the time has to come.
    bool IsByTheClock() const { return !request && !from && !probability; }
};

/// A fault or a command that waits for its trigger.
struct FaultEntry {
    Fault fault = Fault::None;
    std::optional<ControlCommand> command;              ///< what is carried out instead of a fault
    std::chrono::milliseconds delay{DefaultSlowAnswer}; ///< of Slow
    int length = 1; ///< bytes: that Truncated leaves, of each piece of Split, that Flip, Drop, Double concern
    int position = 0; ///< of the first byte that Flip, Drop, Double concern; from the end when negative
    int mask = 0xFF;  ///< the bits that Flip inverts
    std::chrono::milliseconds pause{50};              ///< between the pieces of Split
    QByteArray bytes = QByteArrayLiteral("\x55\xAA"); ///< of GarbageBefore and GarbageAfter
    std::optional<std::chrono::milliseconds>
        lineBackIn; ///< after HangUp; unset: when it is told to come back
    FaultTrigger trigger;
    std::optional<int> count; ///< how often it happens; unset: without limit

    /// Something is done, whatever becomes of an answer.
    bool IsAct() const { return command || fault == Fault::HangUp; }

    /// Done once when its time has come, not at a request.
    bool IsTimedAct() const { return IsAct() && trigger.IsByTheClock(); }
};

} // namespace Simulator
