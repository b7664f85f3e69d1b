#include "link/transciever.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

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
constexpr useconds_t PollUs = 1000;
constexpr useconds_t CollectPollUs = 100;
constexpr useconds_t RetryPauseUs = 200000;

constexpr tcflag_t ControlFlags = B115200 | CS8 | CREAD | PARENB | CLOCAL;
static_assert(ControlFlags == 0x19B2, "115200 baud, 8 data bits, even parity, 1 stop bit");

/// Makes the line raw, and every read return at once with what is there. The results are ignored: a
/// pseudo-terminal applies the settings and still reports an error, because it has no parity.
void Configure(int port)
{
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
    Trace::Write(QStringLiteral("Transciever::Open"));
    if (_handle > Closed) {
        Trace::Write(QStringLiteral("Transciever::Open: Serial port already opened."));
        return true;
    }
    const int port = MovedAboveStandardStreams(::open(SerialDevicePath, O_RDWR | O_NOCTTY));
    _handle = port;
    if (port < Closed) {
        Trace::Write(QStringLiteral("Transciever::Open: Serial port failed to open."));
        return false;
    }
    Configure(port);
    Read(port);
    Trace::Write(QStringLiteral("Transciever::Open: Serial port opened successfully."));
    return true;
}

void Transciever::PrepareToClose()
{
    _closing = true;
}

void Transciever::Close()
{
    Trace::Write(QStringLiteral("Transciever::Close"));
    {
        const QMutexLocker lock(&_portMutex);
        if (_handle > Closed) {
            ::close(_handle.exchange(Closed));
        }
    }
    _closing = false;
}

int Transciever::RunQuery(const QByteArray& request, int timeoutMs, int maxRetransmissions,
                          QByteArray** response)
{
    const int port = _handle;
    if (port == Closed) {
        return QueryResult::NoResponse;
    }
    *response = new QByteArray;
    int result = QueryResult::Data;
    for (int attempt = 0; attempt <= maxRetransmissions; ++attempt) {
        if (_handle != port) {
            return QueryResult::NoResponse;
        }
        result = Attempt(port, request, timeoutMs, **response);
        // Once the port is about to close, nobody would hear what the instrument says to another attempt.
        if (result == QueryResult::Data || result == QueryResult::Acknowledged || _closing) {
            break;
        }
        usleep(RetryPauseUs);
    }
    Read(port);
    return result;
}

int Transciever::RunQuery(const QByteArray& request, int timeoutMs, QByteArray** response)
{
    return RunQuery(request, timeoutMs, _maxRetransmissions, response);
}

int Transciever::RunQuery(const QByteArray& request, QByteArray** response)
{
    return RunQuery(request, DefaultTimeoutMs, _maxRetransmissions, response);
}

int Transciever::StartQuery(const QByteArray& request)
{
    const int port = _handle;
    AcquireLine(false);
    Write(port, request);
    ReleaseLine();
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

int Transciever::Attempt(int port, const QByteArray& request, int timeoutMs, QByteArray& response)
{
    response.clear();
    AcquireLine(true);
    Read(port); // Discards input that belongs to no request.
    Write(port, request);
    Receive(port, timeoutMs, response);
    ReleaseLine();
    return Classify(request, response);
}

int Transciever::Classify(const QByteArray& request, const QByteArray& response) const
{
    if (response.isEmpty()) {
        Trace::NoResponse(request, response);
        return QueryResult::NoResponse;
    }
    if (IsRefusal(response)) {
        Trace::Refused(request, response);
        return QueryResult::Refused;
    }
    if (IsAcknowledge(response)) {
        Trace::Acknowledged(request, response);
        return QueryResult::Acknowledged;
    }
    if (!_crc16->Check(response)) {
        Trace::BadChecksum(request, response);
        return QueryResult::BadChecksum;
    }
    Trace::Data(request, response);
    return QueryResult::Data;
}

/// Waits for the end of any other exchange and of the pause that the instrument needs after it.
void Transciever::AcquireLine(bool closingEndsWait)
{
    const auto isWaitOver = [this, closingEndsWait] { return closingEndsWait && _closing; };
    while (!_lineFree.exchange(false) && !isWaitOver()) {
        usleep(PollUs);
    }
    while (_gapTimer.elapsed() < GapMs && !isWaitOver()) {
        usleep(PollUs);
    }
}

void Transciever::ReleaseLine()
{
    _gapTimer.restart();
    _lineFree = true;
}

/// Waits for the first bytes, then reads on until the line is silent: a frame has no length of its own.
void Transciever::Receive(int port, int timeoutMs, QByteArray& response)
{
    const int received = AwaitFirstBytes(port, timeoutMs);
    if (received > 0) {
        Append(received, response);
        CollectUntilSilence(port, response);
    }
}

/// Returns the count of the first bytes: 0 when none came in time, negative when the read failed.
int Transciever::AwaitFirstBytes(int port, int timeoutMs)
{
    _responseTimer.start();
    int received = 0;
    do {
        received = Read(port);
        if (_closing) {
            break;
        }
        usleep(PollUs);
    } while (received == 0 && _responseTimer.elapsed() < timeoutMs);
    return received;
}

void Transciever::CollectUntilSilence(int port, QByteArray& response)
{
    _responseTimer.start();
    while (!_closing) {
        const int received = Read(port);
        if (received > 0) {
            Append(received, response);
            _responseTimer.start();
        }
        usleep(CollectPollUs);
        const bool isSilent = received == 0 && _responseTimer.elapsed() >= SilenceMs;
        if (isSilent || received < 0) {
            return;
        }
    }
}

/// Appends what the last read received. A failed read, whose count is negative, adds nothing.
void Transciever::Append(int received, QByteArray& response) const
{
    if (received > 0) {
        response.append(_receiveBuffer.data(), received);
    }
}

/// Whether the descriptor still leads to the port: once the port is closed, its number may belong to any
/// other file.
bool Transciever::IsUsable(int port) const
{
    return port > Closed && _handle == port;
}

void Transciever::Write(int port, const QByteArray& request)
{
    const QMutexLocker lock(&_portMutex);
    if (!IsUsable(port)) {
        return;
    }
    // The result is ignored: no answer comes to a request that does not get through.
    [[maybe_unused]] const auto written =
        ::write(port, request.constData(), static_cast<size_t>(request.size()));
    tcdrain(port);
}

int Transciever::Read(int port)
{
    constexpr int Failed = -1;
    const QMutexLocker lock(&_portMutex);
    if (!IsUsable(port)) {
        return Failed;
    }
    return static_cast<int>(::read(port, _receiveBuffer.data(), _receiveBuffer.size()));
}

} // namespace Vesmar
