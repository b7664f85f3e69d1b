#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include "decode/events/event.h"

namespace Decode
{

/// How the library goes about an exchange, which depends on the state of its machine.
class ExchangeRules
{
public:
    /// The link was opened or closed: the state is unknown.
    void ForgetState();

    /// The machine has entered the state with this banner.
    void EnterState(const QString& banner);

    /// An exchange has ended.
    void EndExchange(const Event& exchange);

    /// Whether the link repeats the request after a failure; else the state does, or nobody.
    bool IsRepeatedByLink(const QByteArray& request) const;

    /// Whether the library reads a status in this exchange as one of an RCD test; none if unknown.
    std::optional<bool> IsOfTest(const Event& exchange) const;

    /// How long the library waits for the answer, in milliseconds; the shorter time if the state is unknown.
    int Timeout(const Event& exchange) const;

private:
    enum class State { Unknown, Usual, Recovery, Test };

    State _state = State::Unknown;
    int _statusReadsOfStop = 0; ///< Still to come, in a state that tests and has stopped a function.
};

} // namespace Decode
