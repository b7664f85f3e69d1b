#pragma once

#include <vector>

#include <QByteArray>

#include "explorer/instrument.h"

/// The numbers of the instrument's functions and of their states, as they stand on the line.
namespace Number
{

constexpr int RLN = 1;
constexpr int Foreign = 3; ///< One that the explorer never prepares.
constexpr int RCD = 10;
constexpr int RCDIEC = 11;

constexpr int Idle = 0;
constexpr int Preparing = 1;
constexpr int Completed = 2;
constexpr int PrepareError = 3;
constexpr int Prepared = 4;
constexpr int Starting = 5;
constexpr int StartError = 6;
constexpr int Running = 7;
constexpr int Stopping = 8;
constexpr int Terminated = 9;

} // namespace Number

/// What the instrument can do when a request reaches it. The first turn is the usual one; none means that it
/// refuses the request.
std::vector<Turn> TurnsAt(const QByteArray& request, const InstrumentState& state, const Freedom& freedom);
