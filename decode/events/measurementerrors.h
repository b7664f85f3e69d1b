#pragma once

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>

#include "decode/events/event.h"

namespace Decode
{

/// An error that the library reports for what is in a log.
struct FoundError {
    Vesmar::Error error;
    qint64 line; ///< The first one that shows it.
};

/// Finds the errors with which the library ends an ordinary measurement by itself. It reads the states and
/// statuses of a log as the library reads them.
class MeasurementErrors
{
public:
    /// The error that is certain with this event, if any.
    std::optional<FoundError> Watch(const Event& event);

private:
    /// Where the library looks at the state of the function.
    enum class Stage { Elsewhere, Preparing, Starting, Running };

    std::optional<FoundError> EnterState(const QString& banner);
    std::optional<FoundError> ReadExchange(const Event& event);
    std::optional<FoundError> ReadStatus(const Vesmar::Status& status, qint64 line);
    Vesmar::Error ErrorOf(Vesmar::FunctionState state, bool hasNewMeasurement);

    Stage _stage = Stage::Elsewhere;
    std::optional<Vesmar::FunctionState> _functionState; ///< A status without a function keeps it.
    bool _hasBeenStarting = false;                       ///< Since the state was entered.
    bool _isStatusOfPrepare = false;                     ///< The next status is read along with a prepare.
    std::optional<FoundError> _suspected;                ///< Reported unless a prepare was still to be sent.
};

} // namespace Decode
