#include "simulator/line/outbox.h"

#include <algorithm>

namespace Simulator
{

namespace
{

constexpr int BitsPerByte = 11; // start bit, eight data bits, parity bit, stop bit

} // namespace

void Outbox::Add(const Exchange& exchange, const FaultEntry* split, TimePoint now)
{
    QByteArray rest = exchange.answer;
    std::chrono::microseconds pause{0};
    while (split != nullptr && rest.size() > split->length) {
        _bytes.push_back({rest.left(split->length), std::nullopt, now, pause, true});
        rest.remove(0, split->length);
        pause = split->pause;
    }
    _bytes.push_back({rest, exchange, now, pause});
}

void Outbox::AddUnasked(const FramePiece& piece, TimePoint now)
{
    _bytes.push_back({piece.bytes, std::nullopt, now, piece.pauseBefore});
}

std::optional<TimePoint> Outbox::NextAt() const
{
    if (_bytes.empty()) {
        return std::nullopt;
    }
    const OutgoingBytes& next = _bytes.front();
    return std::max(next.readyAt, _quietSince + next.pauseBefore) + LineTime(next.bytes.size());
}

std::optional<OutgoingBytes> Outbox::RemoveDue(TimePoint now)
{
    const std::optional<TimePoint> dueAt = NextAt();
    if (!dueAt || *dueAt > now) {
        return std::nullopt;
    }
    OutgoingBytes due = _bytes.front();
    _bytes.pop_front();
    return due;
}

std::chrono::microseconds Outbox::LineTime(int byteCount) const
{
    return _baud == 0 ? std::chrono::microseconds(0)
                      : std::chrono::microseconds(std::chrono::seconds(BitsPerByte * byteCount)) / _baud;
}

} // namespace Simulator
