#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QtGlobal>

#include "simulator/control/controlcommand.h"
#include "simulator/control/scenarios.h"

namespace Simulator
{

/// The conditions of a fault. It happens when every condition that is set is met.
struct FaultTrigger {
    std::optional<char> request;        ///< the first byte of the requests that count; unset for all
    std::optional<int> from;            ///< the first of these requests that is hit, counted from 1
    std::chrono::milliseconds after{0}; ///< the time since the fault was set
    std::optional<std::chrono::milliseconds> until; ///< the time since the fault was set
    std::optional<double> probability; ///< from 0 to 1, for each request that meets the other conditions
    quint32 seed = 1;                  ///< for the probability: the same seed hits the same requests

    /// Returns whether the time is the only condition.
    bool IsByTheClock() const { return !request && !from && !probability; }
};

/// A fault or a command that waits for its trigger.
struct FaultEntry {
    Fault fault = Fault::None;
    std::optional<ControlCommand> command;              ///< carried out instead of a fault
    std::chrono::milliseconds delay{DefaultSlowAnswer}; ///< for Slow
    int length = 1; ///< in bytes: what Truncated leaves, a piece of Split, what Flip, Drop and Double change
    int position = 0; ///< of the first byte that Flip, Drop or Double changes; from the end when negative
    int mask = 0xFF;  ///< the bits that Flip inverts
    std::chrono::milliseconds pause{50};              ///< between the pieces of Split
    QByteArray bytes = QByteArrayLiteral("\x55\xAA"); ///< for GarbageBefore and GarbageAfter
    std::optional<std::chrono::milliseconds>
        lineBackIn; ///< for HangUp; unset when the line comes back on command
    FaultTrigger trigger;
    std::optional<int> count; ///< how often the fault happens; unset for no limit

    /// Returns whether the entry does something instead of changing an answer.
    bool IsAct() const { return command || fault == Fault::HangUp; }

    /// Returns whether the entry is done once at its time, without a request.
    bool IsTimedAct() const { return IsAct() && trigger.IsByTheClock(); }
};

} // namespace Simulator
