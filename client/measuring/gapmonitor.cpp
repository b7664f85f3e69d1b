#include "client/measuring/gapmonitor.h"

namespace VesmarClient
{

GapMonitor::GapMonitor(const QElapsedTimer& time, QObject* parent)
    : QObject(parent), _time(time), _silence(this)
{
    _silence.setInterval(GapWatch::Limit);
    _silence.setTimerType(Qt::PreciseTimer);
    connect(&_silence, &QTimer::timeout, this, [this] { Tell(_watch.Advance(_time.elapsed())); });
}

void GapMonitor::Begin()
{
    _watch.Begin(_time.elapsed());
    _silence.start();
}

void GapMonitor::AcceptReading()
{
    Tell(_watch.AcceptReading(_time.elapsed()));
    if (_silence.isActive()) {
        _silence.start();
    }
}

void GapMonitor::LoseLink()
{
    Tell(_watch.LoseLink(_time.elapsed()));
}

void GapMonitor::End()
{
    _silence.stop();
    Tell(_watch.End(_time.elapsed()));
}

void GapMonitor::Tell(bool haveChanged)
{
    if (haveChanged) {
        Q_EMIT Changed(_watch.Gaps());
    }
}

} // namespace VesmarClient
