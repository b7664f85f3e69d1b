#include "decode/events/exchangerules.h"

#include "protocol/frames.h"

namespace Decode
{

namespace
{

namespace Command = Vesmar::Command;

constexpr int LinkTimeout = 4000; ///< Of an exchange that the link repeats, in milliseconds.
constexpr int StateTimeout = 500; ///< Of one that a state repeats by itself.
constexpr int StatusReadsOfStop = 2;

/// What an RCD test consists of, beside the reading of the status.
bool IsStepOfTest(const QByteArray& request)
{
    return request.startsWith(Command::PrepareMeasurement) || request.startsWith(Command::StartMeasurement) ||
           request.startsWith(Command::ReadMeasurement);
}

} // namespace

void ExchangeRules::ForgetState()
{
    _state = State::Unknown;
    _statusReadsOfStop = 0;
}

void ExchangeRules::EnterState(const QString& banner)
{
    _statusReadsOfStop = 0;
    if (banner.contains(QLatin1String("COMMUNICATION RECOVERY"))) {
        _state = State::Recovery;
    } else {
        _state = banner.startsWith(QLatin1String("ENTERING RCD")) ? State::Test : State::Usual;
    }
}

void ExchangeRules::EndExchange(const Event& exchange)
{
    if (!exchange.request.startsWith(Command::Status)) {
        const bool isStop = exchange.request.startsWith(Command::StopMeasurement) &&
                            exchange.outcome == AnswerKind::Acknowledge;
        _statusReadsOfStop = isStop && _state == State::Test ? StatusReadsOfStop : 0;
    } else if (exchange.outcome == AnswerKind::Data) {
        _statusReadsOfStop = qMax(_statusReadsOfStop - 1, 0);
    }
}

/// The recovery and an RCD test send their own requests once and repeat them by themselves. The link repeats
/// the others: the change of the mode in the recovery, and the stopping of a function with the status reads
/// behind it.
bool ExchangeRules::IsRepeatedByLink(const QByteArray& request) const
{
    const bool isStatus = request.startsWith(Command::Status);
    switch (_state) {
    case State::Recovery:
        return !isStatus;
    case State::Test:
        return isStatus ? _statusReadsOfStop > 0 : !IsStepOfTest(request);
    case State::Unknown:
    case State::Usual:
        break;
    }
    return true;
}

std::optional<bool> ExchangeRules::IsOfTest(const Event& exchange) const
{
    if (_state == State::Unknown) {
        return std::nullopt;
    }
    return _state == State::Test && !exchange.isRepeatedByLink;
}

int ExchangeRules::Timeout(const Event& exchange) const
{
    return _state != State::Unknown && exchange.isRepeatedByLink ? LinkTimeout : StateTimeout;
}

} // namespace Decode
