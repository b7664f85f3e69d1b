#pragma once

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>

#include "cli/decode/decodedevent.h"

namespace Cli
{

/// An error that the library reports for what is in a log.
struct FoundError {
    Vesmar::Error error;
    qint64 line; ///< The first one that shows it.
};

/// Finds the errors with which the library ends an ordinary measurement by itself: what a log tells of states
/// and statuses, taken as the library takes it.
class DecodeMeasurement
{
public:
    /// The error that is certain with this event, if any.
    std::optional<FoundError> Take(const DecodedEvent& event);

private:
    /// Where the library looks at the state of the function.
    enum class Stage { Elsewhere, Preparing, Starting, Running };

    std::optional<FoundError> TakeState(const DecodedEvent& event);
    std::optional<FoundError> TakeExchange(const DecodedEvent& event);
    std::optional<FoundError> TakeStatus(const DecodedEvent& event);
    Vesmar::Error Judge(Vesmar::FunctionState state, bool hasNewMeasurement);
    Vesmar::Error JudgeStart(Vesmar::FunctionState state);

    Stage _stage = Stage::Elsewhere;
    std::optional<Vesmar::FunctionState> _functionState; ///< It stays when a status tells no function.
    bool _isStarted = false;                             ///< While it starts.
    bool _isStatusOfPrepare = false;                     ///< The next status is read along with a prepare.
    std::optional<FoundError> _suspected;                ///< Reported unless a prepare was still to be sent.
};

} // namespace Cli
