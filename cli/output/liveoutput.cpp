#include "cli/output/liveoutput.h"

#include <QElapsedTimer>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace Cli
{

namespace
{

bool CanBeWritten(int descriptor, int timeout)
{
    pollfd waiting{descriptor, POLLOUT, 0};
    return ::poll(&waiting, 1, timeout) > 0;
}

} // namespace

LiveOutput::LiveOutput(int descriptor)
    : _descriptor(descriptor), _writable(descriptor, QSocketNotifier::Write)
{
    _writable.setEnabled(false);
    connect(&_writable, &QSocketNotifier::activated, this, [this] { Drain(); });
}

void LiveOutput::Write(const QByteArray& bytes)
{
    constexpr int MostKept = 1 << 20;
    if (_isLost) {
        return;
    }
    _kept += bytes;
    Drain();
    if (_kept.size() > MostKept) {
        Lose();
    }
}

bool LiveOutput::Flush(std::chrono::milliseconds limit)
{
    constexpr int Pause = 50;
    QElapsedTimer time;
    time.start();
    while (!_kept.isEmpty() && !time.hasExpired(limit.count())) {
        CanBeWritten(_descriptor, Pause);
        Drain();
    }
    return !_isLost && _kept.isEmpty();
}

void LiveOutput::Drain()
{
    while (!_kept.isEmpty() && CanBeWritten(_descriptor, 0) && WriteSome()) {
    }
    _writable.setEnabled(!_kept.isEmpty());
}

/// Returns false where nothing was written.
bool LiveOutput::WriteSome()
{
    constexpr int MostAtOnce = 128; // a pipe or a terminal that can be written to takes this much at once
    const auto size = static_cast<size_t>(qMin(_kept.size(), MostAtOnce));
    const auto written = ::write(_descriptor, _kept.constData(), size);
    if (written < 0 && errno != EINTR && errno != EAGAIN) {
        _error = errno == EPIPE ? 0 : errno;
        Lose();
        return false;
    }
    _kept.remove(0, static_cast<int>(std::max<ssize_t>(written, 0)));
    return written > 0;
}

void LiveOutput::Lose()
{
    _isLost = true;
    _kept.clear();
    _writable.setEnabled(false);
    Q_EMIT Lost();
}

} // namespace Cli
