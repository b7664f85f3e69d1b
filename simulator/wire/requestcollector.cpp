#include "simulator/wire/requestcollector.h"

#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

/// A busy computer brings the rest of a request within this time.
constexpr std::chrono::milliseconds Silence{50};
constexpr int LongestRequest = 1024; // No request is as long; noise without a pause is cut here.

} // namespace

void RequestCollector::Append(const QByteArray& bytes, TimePoint now)
{
    if (_bytes.isEmpty()) {
        _firstByteAt = now;
    }
    _lastByteAt = now;
    _bytes.append(bytes);
}

std::optional<CollectedRequest> RequestCollector::Extract(TimePoint now)
{
    int size = CompleteSize();
    if (size == 0 && !_bytes.isEmpty() && (now - _lastByteAt >= Silence || _bytes.size() > LongestRequest)) {
        size = _bytes.size();
    }
    if (size == 0) {
        return std::nullopt;
    }
    CollectedRequest request{_bytes.left(size), _firstByteAt};
    _bytes.remove(0, size);
    _firstByteAt = _lastByteAt;
    return request;
}

std::optional<TimePoint> RequestCollector::SilenceEndsAt() const
{
    if (_bytes.isEmpty()) {
        return std::nullopt;
    }
    return _lastByteAt + Silence;
}

int RequestCollector::CompleteSize() const
{
    const int size = _bytes.isEmpty() ? 0 : RequestSize(_bytes.at(0));
    return _bytes.size() >= size && IsIntact(_bytes.left(size)) ? size : 0;
}

} // namespace Simulator
