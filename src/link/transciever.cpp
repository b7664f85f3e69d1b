#include "link/transciever.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include <Vesmar/serialdevice.h>

#include "link/crc16.h"
#include "link/trace.h"
#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

constexpr int Closed = 0;
constexpr int DefaultTimeoutMs = 4000;
constexpr int GapMs = 10;
constexpr int SilenceMs = 1;
constexpr int RetryPauseMs = 200;
constexpr int MaxCollectedBytes = 4096; // Several times the longest answer.
constexpr useconds_t PollUs = 1000;
constexpr useconds_t SendPollUs = 100;
constexpr useconds_t CollectPollUs = 100;

constexpr tcflag_t ControlFlags = B115200 | CS8 | CREAD | PARENB | CLOCAL;
static_assert(ControlFlags == 0x19B2, "115200 baud, 8 data bits, even parity, 1 stop bit");

/// Makes the line raw, and every read and write return at once with what is there and what fits. The results
/// are ignored: a pseudo-terminal applies the settings and still reports an error, because it has no parity.
void Configure(int port)
{
    fcntl(port, F_SETFL, O_NONBLOCK);
    termios settings{};
    settings.c_cflag = ControlFlags;
    settings.c_cc[VMIN] = 0;
    settings.c_cc[VTIME] = 0;
    tcflush(port, TCIFLUSH);
    tcsetattr(port, TCSANOW, &settings);
}

/// Moves a descriptor of 0, which stands for a closed port, to a higher number.
int MovedAboveStandardStreams(int descriptor)
{
    if (descriptor != Closed) {
        return descriptor;
    }
    const int moved = fcntl(descriptor, F_DUPFD, STDERR_FILENO + 1);
    ::close(descriptor);
    return moved;
}

} // namespace

Transciever::Transciever(CRC16* crc16, QObject* parent) : QObject(parent), _crc16(crc16)
{
    _gapTimer.start();
}

Transciever::~Transciever()
{
    Close();
}

bool Transciever::Open()
{
    Trace::Write("Transciever::Open");
    if (_handle > Closed) {
        Trace::Write("Transciever::Open: Serial port already opened.");
        return true;
    }
    const int port = MovedAboveStandardStreams(::open(SerialDevicePath, O_RDWR | O_NOCTTY));
    _handle = port;
    if (port < Closed) {
        Trace::Write("Transciever::Open: Serial port failed to open.");
        return false;
    }
    Configure(port);
    Read(port);
    Trace::Write("Transciever::Open: Serial port opened successfully.");
    return true;
}

void Transciever::PrepareToClose()
{
    const QMutexLocker lock(&_portMutex); // Waits for the end of a write that has begun.
    _closing = true;
}

void Transciever::Close()
{
    Trace::Write("Transciever::Close");
    const QMutexLocker lock(&_portMutex);
    if (_handle > Closed) {
        ::close(_handle.exchange(Closed));
    }
    _closing = false;
}

int Transciever::RunQuery(const QByteArray& request, int timeoutMs, int maxRetransmissions,
                          QByteArray** response, const std::function<bool()>& isWanted)
{
    const int port = _handle;
    if (port == Closed) {
        return QueryResult::NoResponse;
    }
    *response = new QByteArray;
    int result = QueryResult::Data;
    for (int attempt = 0; attempt <= maxRetransmissions; ++attempt) {
        if (attempt > 0 && !IsUsable(port)) {
            (*response)->clear();
            return QueryResult::NoResponse;
        }
        result = Attempt(port, request, timeoutMs, **response, isWanted);
        // Once the port is about to close, nobody would hear what the instrument says to another attempt.
        if (result == QueryResult::Data || result == QueryResult::Acknowledged || _closing) {
            break;
        }
        PauseAfterFailure(port);
        if (isWanted && !isWanted()) {
            break;
        }
    }
    Read(port);
    return result;
}

int Transciever::RunQuery(const QByteArray& request, int timeoutMs, QByteArray** response)
{
    return RunQuery(request, timeoutMs, _maxRetransmissions, response);
}

int Transciever::RunQuery(const QByteArray& request, QByteArray** response,
                          const std::function<bool()>& isWanted)
{
    return RunQuery(request, DefaultTimeoutMs, _maxRetransmissions, response, isWanted);
}

int Transciever::StartQuery(const QByteArray& request)
{
    const int port = _handle;
    if (AcquireLine()) {
        Send(port, request, DefaultTimeoutMs);
        ReleaseLine();
    }
    return 1;
}

QByteArray* Transciever::ReadBuffer()
{
    auto* buffer = new QByteArray;
    Append(Read(_handle), *buffer);
    Trace::ReadingBuffer(*buffer);
    return buffer;
}

QByteArray* Transciever::ReadBuffer(int timeoutMs)
{
    auto* buffer = new QByteArray;
    Receive(_handle, timeoutMs, *buffer);
    if (!buffer->isEmpty()) {
        Trace::ReadingBuffer(*buffer);
    }
    return buffer;
}

int Transciever::Attempt(int port, const QByteArray& request, int timeoutMs, QByteArray& response,
                         const std::function<bool()>& isWanted)
{
    response.clear();
    bool isWhole = true;
    if (AcquireLine()) {
        Read(port); // Discards input that belongs to no request.
        if (Send(port, request, timeoutMs, isWanted)) {
            isWhole = Receive(port, timeoutMs, response);
        }
        ReleaseLine();
    }
    return Classify(request, response, isWhole);
}

int Transciever::Classify(const QByteArray& request, const QByteArray& response, bool isWhole) const
{
    if (response.isEmpty()) {
        Trace::NoResponse(request, response);
        return QueryResult::NoResponse;
    }
    if (isWhole && IsRefusal(response)) {
        Trace::Refused(request, response);
        return QueryResult::Refused;
    }
    if (isWhole && IsAcknowledge(response)) {
        Trace::Acknowledged(request, response);
        return QueryResult::Acknowledged;
    }
    if (!isWhole || !_crc16->Check(response)) {
        Trace::BadChecksum(request, response);
        return QueryResult::BadChecksum;
    }
    Trace::Data(request, response);
    return QueryResult::Data;
}

void Transciever::PauseAfterFailure(int port) const
{
    QElapsedTimer pause;
    pause.start();
    while (IsUsable(port) && pause.elapsed() < RetryPauseMs) {
        usleep(PollUs);
    }
}

/// Waits for the end of any other exchange and of the pause that the instrument needs after it. Returns
/// whether the line was acquired: it is not when the port is about to close.
bool Transciever::AcquireLine()
{
    while (!_lineFree.exchange(false)) {
        if (_closing) {
            return false;
        }
        usleep(PollUs);
    }
    while (_gapTimer.elapsed() < GapMs && !_closing) {
        usleep(PollUs);
    }
    return true;
}

void Transciever::ReleaseLine()
{
    _gapTimer.restart();
    _lineFree = true;
}

/// Sends a request, and waits until it has left. Returns false when the line did not accept it in time, or
/// while it was wanted.
bool Transciever::Send(int port, const QByteArray& request, int timeoutMs,
                       const std::function<bool()>& isWanted)
{
    _responseTimer.start();
    int written = 0;
    while (!Write(port, request, written)) {
        const bool isLate = written == 0 && isWanted && !isWanted();
        if (isLate || _responseTimer.elapsed() >= timeoutMs) {
            return false;
        }
        usleep(SendPollUs);
    }
    return true;
}

/// Waits for the first bytes, then reads on until the line is silent: a frame has no length of its own.
/// Nothing is left of a response that the closing of the port cuts short. Returns false when the line did not
/// fall silent, so that the response is no frame.
bool Transciever::Receive(int port, int timeoutMs, QByteArray& response)
{
    const int received = AwaitFirstBytes(port, timeoutMs);
    Append(received, response);
    const bool isWhole = received <= 0 || CollectUntilSilence(port, timeoutMs, response);
    if (!IsUsable(port)) {
        response.clear();
    }
    return isWhole;
}

/// Returns the count of the first bytes: 0 when none came in time, negative when the read failed.
int Transciever::AwaitFirstBytes(int port, int timeoutMs)
{
    _responseTimer.start();
    int received = 0;
    do {
        received = Read(port);
        usleep(PollUs);
    } while (received == 0 && _responseTimer.elapsed() < timeoutMs);
    return received;
}

/// Returns false when bytes still came after this time, or came to the limit.
bool Transciever::CollectUntilSilence(int port, int timeoutMs, QByteArray& response)
{
    QElapsedTimer collecting;
    collecting.start();
    _responseTimer.start();
    int received = 0;
    do {
        received = Read(port);
        if (received > 0) {
            Append(received, response);
            if (response.size() >= MaxCollectedBytes || collecting.elapsed() >= timeoutMs) {
                return false;
            }
            _responseTimer.start();
        }
        usleep(CollectPollUs);
    } while (received > 0 || _responseTimer.elapsed() < SilenceMs);
    return true;
}

/// Appends what the last read received, up to the limit. A failed read, whose count is negative, adds
/// nothing.
void Transciever::Append(int received, QByteArray& response) const
{
    if (received > 0) {
        response.append(_receiveBuffer.data(), std::min<int>(received, MaxCollectedBytes - response.size()));
    }
}

/// Whether the port may be read and written. It may not when it is about to close; and once it is closed, the
/// descriptor's number may belong to any other file.
bool Transciever::IsUsable(int port) const
{
    return port > Closed && _handle == port && !_closing;
}

/// Writes what the line accepts of a request at once, behind the bytes that are written already. Returns
/// whether there is nothing left to do: the request has left, or will never get through, so that no answer
/// comes.
bool Transciever::Write(int port, const QByteArray& request, int& written)
{
    const QMutexLocker lock(&_portMutex);
    if (!IsUsable(port)) {
        return true;
    }
    if (written < request.size()) {
        const auto count = static_cast<int>(
            ::write(port, request.constData() + written, static_cast<size_t>(request.size() - written)));
        if (count < 0) {
            return errno != EINTR && errno != EAGAIN;
        }
        written += count;
    }
    int queued = 0;
    ioctl(port, TIOCOUTQ, &queued);
    if (written < request.size() || queued > 0) {
        return false;
    }
    tcdrain(port); // What the hardware has taken from the queue leaves by itself.
    return true;
}

int Transciever::Read(int port)
{
    constexpr int Failed = -1;
    const QMutexLocker lock(&_portMutex);
    if (!IsUsable(port)) {
        return Failed;
    }
    const auto received = static_cast<int>(::read(port, _receiveBuffer.data(), _receiveBuffer.size()));
    return received < 0 && errno == EAGAIN ? 0 : received;
}

} // namespace Vesmar
