#include "support/scriptedpeer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <utility>

#include "support/serialdevice.h"

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds GenerousLimit(30);
constexpr int SilenceMs = 2;
constexpr int NoLimit = -1;

void Require(bool condition, const char* what)
{
    if (!condition) {
        qFatal("The scripted peer cannot %s.", what);
    }
}

void WriteAll(int descriptor, const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            write(descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        Require(count > 0, "write");
        written += count;
    }
}

} // namespace

ScriptedPeer::ScriptedPeer()
{
    OpenLine();
    RedirectSerialDevice(_path);
    _thread = std::thread([this] { Listen(); });
}

ScriptedPeer::~ScriptedPeer()
{
    HangUp();
}

void ScriptedPeer::OpenLine()
{
    _master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    Require(_master >= 0 && grantpt(_master) == 0 && unlockpt(_master) == 0, "create a pseudo-terminal");
    std::array<char, 128> path{};
    Require(ptsname_r(_master, path.data(), path.size()) == 0, "name its pseudo-terminal");
    _path = path.data();
    _slave = open(path.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    Require(_slave >= 0, "open its pseudo-terminal");
    termios settings{};
    cfmakeraw(&settings);
    Require(tcsetattr(_slave, TCSANOW, &settings) == 0, "make its pseudo-terminal raw");
    _wakeUp = eventfd(0, EFD_CLOEXEC);
    Require(_wakeUp >= 0, "create its wake-up");
}

void ScriptedPeer::Answer(Responder responder)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _responder = std::move(responder);
}

void ScriptedPeer::AnswerAlways(const QByteArray& answer)
{
    Answer([answer](const QByteArray&) { return answer; });
}

void ScriptedPeer::AnswerInTurn(const QList<QByteArray>& answers)
{
    const auto left = std::make_shared<QList<QByteArray>>(answers);
    Answer([left](const QByteArray&) { return left->isEmpty() ? QByteArray() : left->takeFirst(); });
}

void ScriptedPeer::Send(const QByteArray& bytes) const
{
    WriteAll(_master, bytes);
}

void ScriptedPeer::HangUp()
{
    if (!_thread.joinable()) {
        return;
    }
    // The system gives the path to the next pseudo-terminal that anybody opens.
    if (SerialDeviceRedirection() == _path) {
        RedirectSerialDevice({});
    }
    _ending = true;
    Require(eventfd_write(_wakeUp, 1) == 0, "wake up");
    _thread.join();
    close(_wakeUp);
    close(_slave);
    close(_master);
}

QList<ScriptedPeer::Request> ScriptedPeer::Requests() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _requests;
}

QList<QByteArray> ScriptedPeer::RequestBytes() const
{
    QList<QByteArray> bytes;
    for (const Request& request : Requests()) {
        bytes.append(request.bytes);
    }
    return bytes;
}

void ScriptedPeer::ClearRequests()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _requests.clear();
}

bool ScriptedPeer::WaitForRequests(int count) const
{
    std::unique_lock<std::mutex> lock(_mutex);
    return _requestArrived.wait_for(lock, GenerousLimit, [&] { return _requests.size() >= count; });
}

bool ScriptedPeer::WaitUntilReadable(int count) const
{
    const auto limit = Clock::now() + GenerousLimit;
    int readable = 0;
    while (ioctl(_slave, FIONREAD, &readable) == 0 && readable < count && Clock::now() < limit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return readable >= count;
}

void ScriptedPeer::Listen()
{
    Request request;
    while (!_ending) {
        std::array<pollfd, 2> sources{{{_master, POLLIN, 0}, {_wakeUp, POLLIN, 0}}};
        const int ready = poll(sources.data(), sources.size(), request.bytes.isEmpty() ? NoLimit : SilenceMs);
        if (ready == 0) {
            Complete(request);
            request = {};
        } else if ((sources[0].revents & POLLIN) != 0) {
            Receive(request);
        }
    }
}

void ScriptedPeer::Receive(Request& request) const
{
    std::array<char, 1024> buffer{};
    const ssize_t received = read(_master, buffer.data(), buffer.size());
    if (received > 0) {
        request.bytes.append(buffer.data(), static_cast<int>(received));
        request.received = Clock::now();
    }
}

void ScriptedPeer::Complete(const Request& request)
{
    Responder responder;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _requests.append(request);
        responder = _responder;
    }
    _requestArrived.notify_all();
    if (responder) {
        WriteAll(_master, responder(request.bytes));
    }
}
