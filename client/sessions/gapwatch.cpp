#include "client/sessions/gapwatch.h"

namespace VesmarClient
{

bool GapWatch::AcceptReading(qint64 now)
{
    const bool hasChanged = Advance(now);
    _isOpen = false;
    _last = _last ? now : _last;
    return hasChanged;
}

bool GapWatch::Advance(qint64 now)
{
    return _last && (_isOpen || now - *_last >= Limit.count()) && Extend(now);
}

bool GapWatch::LoseLink(qint64 now)
{
    return _last && Extend(now);
}

bool GapWatch::End(qint64 now)
{
    const bool hasChanged = Advance(now);
    _last.reset();
    return hasChanged;
}

bool GapWatch::Extend(qint64 now)
{
    if (!_isOpen) {
        _gaps.append(Gap{*_last, 0});
        _isOpen = true;
    }
    _gaps.last().duration = now - *_last;
    return true;
}

} // namespace VesmarClient
