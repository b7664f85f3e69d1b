#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "client/sessions/gapwatch.h"

namespace VesmarClient
{

/// Watches a continuous measurement for gaps, and tells them while they last.
class GapMonitor : public QObject
{
    Q_OBJECT

public:
    /// Times are told by this clock.
    explicit GapMonitor(const QElapsedTimer& time, QObject* parent);

    // See `GapWatch`.
    void Begin();
    void AcceptReading();
    void LoseLink();
    void End();

    const QVector<Gap>& Gaps() const { return _watch.Gaps(); }

Q_SIGNALS:
    void Changed(const QVector<VesmarClient::Gap>& gaps);

private:
    void Tell(bool haveChanged);

    QElapsedTimer _time;
    GapWatch _watch;
    QTimer _silence; ///< Runs from one reading to the next.
};

} // namespace VesmarClient
