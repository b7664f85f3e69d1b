#include "cli/doctor/lineprobe.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>

#include "decode/frames/frame.h"

namespace Cli
{

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds Gap{10};
constexpr milliseconds Silence{1};
constexpr milliseconds LongestCollecting{100};

/// The result is ignored: a pseudo-terminal accepts the settings and still reports an error, because it has
/// no parity.
void SetUp(int descriptor)
{
    termios settings{};
    settings.c_cflag = B115200 | CS8 | CREAD | PARENB | CLOCAL;
    settings.c_cc[VMIN] = 0;
    settings.c_cc[VTIME] = 0;
    ::tcsetattr(descriptor, TCSANOW, &settings);
}

} // namespace

LineAnswer Classify(const QByteArray& answer)
{
    if (Decode::StatusIn(answer)) {
        return LineAnswer::Proper;
    }
    switch (Decode::KindOf(answer)) {
    case Decode::AnswerKind::None:
        return LineAnswer::Silent;
    case Decode::AnswerKind::Refusal:
        return LineAnswer::Refused;
    default:
        return LineAnswer::Damaged;
    }
}

LineProbe::LineProbe(int descriptor, milliseconds patience) : _descriptor(descriptor), _patience(patience)
{
    SetUp(descriptor);
}

LineExchange LineProbe::AskForStatus() const
{
    LineExchange exchange;
    std::this_thread::sleep_for(Gap);
    ::tcflush(_descriptor, TCIFLUSH); // Bytes that are still there belong to no request.
    if (!Send(exchange)) {
        return exchange;
    }
    const auto sent = Clock::now();
    if (WaitForAnswer()) {
        exchange.time = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - sent);
        Collect(exchange);
    }
    return exchange;
}

bool LineProbe::Send(LineExchange& exchange) const
{
    const QByteArray request = QByteArrayLiteral("\x73\xF4\x4E");
    const ssize_t written =
        ::write(_descriptor, request.constData(), static_cast<std::size_t>(request.size()));
    if (written == request.size()) {
        return true;
    }
    exchange.lineError = written < 0 ? errno : EAGAIN;
    return false;
}

/// A frame does not tell its length: it ends with silence.
void LineProbe::Collect(LineExchange& exchange) const
{
    const auto end = Clock::now() + LongestCollecting;
    while (Read(exchange) && Clock::now() < end && WaitForBytes(Silence)) {
    }
}

bool LineProbe::WaitForAnswer() const
{
    const milliseconds first = std::min<milliseconds>(_patience, PatienceOfPeople);
    if (WaitForBytes(first)) {
        return true;
    }
    _tellLateAnswer();
    return WaitForBytes(_patience - first);
}

bool LineProbe::WaitForBytes(milliseconds limit) const
{
    const auto end = Clock::now() + limit;
    pollfd line{_descriptor, POLLIN, 0};
    int ready = 0;
    milliseconds left = limit;
    while ((ready = ::poll(&line, 1, static_cast<int>(left.count()))) < 0 && errno == EINTR) {
        left = std::max(milliseconds(0), std::chrono::duration_cast<milliseconds>(end - Clock::now()));
    }
    return ready != 0;
}

/// Something has happened on the line: if there are no bytes, the line is broken.
bool LineProbe::Read(LineExchange& exchange) const
{
    std::array<char, 256> buffer{};
    const ssize_t count = ::read(_descriptor, buffer.data(), buffer.size());
    if (count > 0) {
        exchange.answer.append(buffer.data(), static_cast<int>(count));
        return true;
    }
    exchange.lineError = count < 0 ? errno : EIO;
    return false;
}

} // namespace Cli
