#include "support/scriptedpeer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>
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

class ScriptedPeer::Private
{
public:
    Private();
    ~Private();
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    void SetResponder(Responder responder);
    void Send(const QByteArray& bytes) const { WriteAll(_master, bytes); }
    void HangUp();

    QList<Request> Requests() const;
    void ClearRequests();
    bool WaitForRequests(int count) const;
    bool WaitUntilReadable(int count) const;
    QByteArray DevicePath() const { return _path; }

private:
    void OpenLine();
    void Listen();
    void Receive(Request& request) const;
    void Complete(const Request& request);

    int _master = -1;
    int _slave = -1; // Kept open: the line stays up while the library has it closed.
    int _wakeUp = -1;
    QByteArray _path;
    mutable std::mutex _mutex; // Guards the responder and the requests.
    mutable std::condition_variable _requestArrived;
    Responder _responder;
    QList<Request> _requests;
    std::atomic<bool> _ending{false};
    std::thread _thread;
};

ScriptedPeer::Private::Private()
{
    OpenLine();
    RedirectSerialDevice(_path);
    _thread = std::thread([this] { Listen(); });
}

ScriptedPeer::Private::~Private()
{
    HangUp();
}

void ScriptedPeer::Private::OpenLine()
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

void ScriptedPeer::Private::SetResponder(Responder responder)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _responder = std::move(responder);
}

void ScriptedPeer::Private::HangUp()
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

QList<ScriptedPeer::Request> ScriptedPeer::Private::Requests() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _requests;
}

void ScriptedPeer::Private::ClearRequests()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _requests.clear();
}

bool ScriptedPeer::Private::WaitForRequests(int count) const
{
    std::unique_lock<std::mutex> lock(_mutex);
    return _requestArrived.wait_for(lock, GenerousLimit, [&] { return _requests.size() >= count; });
}

bool ScriptedPeer::Private::WaitUntilReadable(int count) const
{
    const auto limit = Clock::now() + GenerousLimit;
    int readable = 0;
    while (ioctl(_slave, FIONREAD, &readable) == 0 && readable < count && Clock::now() < limit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return readable >= count;
}

void ScriptedPeer::Private::Listen()
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

void ScriptedPeer::Private::Receive(Request& request) const
{
    std::array<char, 1024> buffer{};
    const ssize_t received = read(_master, buffer.data(), buffer.size());
    if (received > 0) {
        request.bytes.append(buffer.data(), static_cast<int>(received));
        request.received = Clock::now();
    }
}

void ScriptedPeer::Private::Complete(const Request& request)
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

ScriptedPeer::ScriptedPeer() : _d(std::make_unique<Private>()) {}

ScriptedPeer::~ScriptedPeer() = default;

void ScriptedPeer::Answer(Responder responder)
{
    _d->SetResponder(std::move(responder));
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

void ScriptedPeer::Send(const QByteArray& bytes)
{
    _d->Send(bytes);
}

void ScriptedPeer::HangUp()
{
    _d->HangUp();
}

QList<ScriptedPeer::Request> ScriptedPeer::Requests() const
{
    return _d->Requests();
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
    _d->ClearRequests();
}

bool ScriptedPeer::WaitForRequests(int count) const
{
    return _d->WaitForRequests(count);
}

bool ScriptedPeer::WaitUntilReadable(int count) const
{
    return _d->WaitUntilReadable(count);
}

QByteArray ScriptedPeer::DevicePath() const
{
    return _d->DevicePath();
}
