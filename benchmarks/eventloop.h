#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

/// Runs the event loop for a time, without any work of its own.
inline void RunFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Runs the event loop until the condition holds.
template <typename Condition>
void RunUntil(const Condition& condition)
{
    constexpr int LimitMs = 30000;
    QElapsedTimer time;
    time.start();
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (condition()) {
            loop.quit();
        } else if (time.elapsed() > LimitMs) {
            qFatal("What the benchmark waits for does not come.");
        }
    });
    timer.start(1);
    loop.exec();
}
