#pragma once

#include <array>
#include <atomic>
#include <functional>

#include <QByteArray>
#include <QElapsedTimer>
#include <QMutex>
#include <QObject>

namespace Vesmar
{

class CRC16;

/// What became of an exchange.
namespace QueryResult
{

constexpr int Data = 0;         ///< A data answer with a valid checksum.
constexpr int Acknowledged = 1; ///< The acknowledge frame.
constexpr int Refused = 2;      ///< The refusal frame, on the last attempt.
constexpr int NoResponse = 3;   ///< Nothing came on the last attempt, or the port is closed or closing.
constexpr int BadChecksum = 4;  ///< An answer with a wrong checksum or without an end, on the last attempt.

} // namespace QueryResult

/// Owns the serial line: opens it, runs one exchange at a time, sends a request again after a failure, and
/// traces every exchange to the log.
///
/// Exchanges run on the worker's thread, and those of a synchronous update on the application's. The
/// application's thread calls `Open`, `PrepareToClose` and `Close`.
class Transciever : public QObject
{
    Q_OBJECT

public:
    Transciever(CRC16* crc16, QObject* parent);
    ~Transciever() override;

    /// Opens and configures the port, unless it is open already. Returns whether it is open afterwards.
    bool Open();
    /// From its return until `Close`, nothing is written, and every exchange, one under way included, ends at
    /// once as without an answer.
    void PrepareToClose();
    void Close();

    /// How often the shorter forms of `RunQuery` send a request again: 2 at first. No state changes it.
    int GetMaxRetransmissions() const { return _maxRetransmissions; }
    void SetMaxRetransmissions(int maxRetransmissions) { _maxRetransmissions = maxRetransmissions; }

    /// Sends a request, up to `maxRetransmissions` times more after a failure, and waits up to `timeoutMs`
    /// for each answer. An answer that still goes on after as long, or reaches 4 KiB, has no end. Returns a
    /// `QueryResult`; a negative `maxRetransmissions` sends nothing and returns `Data`. `*response` is a new
    /// array, which the caller deletes; it is left untouched when the port is closed. Once an `isWanted`
    /// returns false, the request is not sent again, nor written any more to a line that would not take it.
    int RunQuery(const QByteArray& request, int timeoutMs, int maxRetransmissions, QByteArray** response,
                 const std::function<bool()>& isWanted = {});
    int RunQuery(const QByteArray& request, int timeoutMs, QByteArray** response);
    int RunQuery(const QByteArray& request, QByteArray** response,
                 const std::function<bool()>& isWanted = {});

    /// Sends a request and reads no answer. Always returns 1. No state calls it.
    int StartQuery(const QByteArray& request);

    /// Returns what is waiting on the line, in a new array that the caller deletes. No state calls it.
    QByteArray* ReadBuffer();
    /// Returns a new array as well, but waits up to `timeoutMs` for data and reads on until the line is
    /// silent, for as long again and up to 4 KiB at the most.
    QByteArray* ReadBuffer(int timeoutMs);

private:
    int Attempt(int port, const QByteArray& request, int timeoutMs, QByteArray& response,
                const std::function<bool()>& isWanted);
    void PauseAfterFailure(int port) const;
    int Classify(const QByteArray& request, const QByteArray& response, bool isWhole) const;
    bool AcquireLine();
    void ReleaseLine();
    bool Send(int port, const QByteArray& request, int timeoutMs, const std::function<bool()>& isWanted = {});
    bool Receive(int port, int timeoutMs, QByteArray& response);
    int AwaitFirstBytes(int port, int timeoutMs);
    bool CollectUntilSilence(int port, int timeoutMs, QByteArray& response);
    void Append(int received, QByteArray& response) const;
    bool IsUsable(int port) const;
    bool Write(int port, const QByteArray& request, int& written);
    int Read(int port);

    CRC16* _crc16;
    std::atomic<bool> _lineFree{true};
    std::array<char, 128> _receiveBuffer{};
    std::atomic<int> _handle{0};
    QMutex _portMutex; ///< No read or write meets a descriptor that is being closed, or another file under
                       ///< its number. Nobody waits for the other end while holding it.
    QElapsedTimer _responseTimer;
    QElapsedTimer _gapTimer;
    int _maxRetransmissions = 2;
    std::atomic<bool> _closing{false};
};

} // namespace Vesmar
