#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

#include <QByteArray>
#include <QList>

#include "support/wire.h"

/// The far end of the serial line, played from a script on a thread of its own. While it lives, the serial
/// device of this process is its pseudo-terminal.
class ScriptedPeer
{
public:
    using Responder = std::function<QByteArray(const QByteArray& request)>;
    struct Request {
        QByteArray bytes;
        std::chrono::steady_clock::time_point received; ///< When its last byte arrived.
    };

    /// Answers nothing until told otherwise.
    ScriptedPeer();
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    /// Every request gets what the responder returns for it, on the peer's thread; an empty array is silence.
    void Answer(Responder responder);
    /// Every request gets the same answer.
    void AnswerAlways(const QByteArray& answer);
    /// The first request gets the first answer, and so on; silence after the last.
    void AnswerInTurn(const QList<QByteArray>& answers);
    /// Writes bytes that nobody asked for.
    void Send(const QByteArray& bytes) const;
    /// Hangs the line up: the pseudo-terminal goes away.
    void HangUp();

    /// What has arrived so far. A request ends with 2 ms of silence.
    QList<Request> Requests() const;
    QList<QByteArray> RequestBytes() const;
    void ClearRequests();
    /// Waits until that many requests have arrived; false after a generous time limit.
    bool WaitForRequests(int count) const;
    /// Waits until the near end could read that many bytes; false after a generous time limit.
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
