#pragma once

#include <QSocketNotifier>

#include <functional>

namespace Panel
{

/// Calls a function on the application's thread when the system or a terminal asks the program to end:
/// SIGINT, SIGTERM and SIGHUP. One at a time exists.
class EndSignals
{
public:
    explicit EndSignals(const std::function<void()>& end);

private:
    QSocketNotifier _notifier;
};

} // namespace Panel
