#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include <QByteArray>

#include "storm/instrument.h"

/// What is wrong with the calls of the serial device. The counts are of the calls that fail next.
struct Trouble {
    int failingReads = 0;
    int interruptedReads = 0;
    int failingWrites = 0;
    int interruptedWrites = 0;
    int shortWrites = 0;
    int failingDrains = 0;
    int interruptedDrains = 0;
    int failingOpens = 0;
    int interruptedOpens = 0;
    int failingSettings = 0;
    int interruptedSettings = 0;
    int cutSleeps = 0;
    int locksUntilPreemption = 0;        ///< At the last of them the driver's thread has to wait.
    std::thread::id preempted;           ///< That thread.
    Nanoseconds preemption{0};           ///< For how long it does.
    Nanoseconds stall{0};                ///< How much longer the next sleep of the driver lasts.
    Nanoseconds hungUpUntil{0};          ///< Reads come back at once with nothing, and nothing gets through.
    Nanoseconds goneUntil{0};            ///< Every call fails.
    Nanoseconds unreadUntil{0};          ///< Nobody reads what is written.
    Nanoseconds babblesUntil{0};         ///< The line never falls silent.
    std::int64_t clockOffsetSeconds = 0; ///< Of the wall clock.

    /// Whether something is still wrong, or about to go wrong.
    bool IsActive(Nanoseconds now) const;
};

/// One request, on its way to the instrument.
class Exchange
{
public:
    Exchange(QByteArray bytes, Nanoseconds time, Instrument& instrument, Random& numbers, Trouble& calls)
        : request(std::move(bytes)), now(time), random(numbers), trouble(calls), _instrument(instrument)
    {
    }

    const QByteArray request;
    const Nanoseconds now;
    Random& random;
    Trouble& trouble;

    /// What the instrument sends. It has the request from the first call on.
    std::vector<Chunk>& Answer();
    /// The request does not reach the instrument.
    void Lose() { _isDone = true; }

private:
    Instrument& _instrument;
    bool _isDone = false;
    std::vector<Chunk> _answer;
};

/// A terminal that the bytes of the line go through.
class Terminal
{
public:
    virtual ~Terminal() = default;

    /// Returns the descriptor, or -1.
    virtual int Open() = 0;
    /// Writes to the descriptor, and returns what has come out at the instrument's end.
    virtual QByteArray Write(int descriptor, const QByteArray& bytes) = 0;
    /// Puts in at the instrument's end what has arrived, and reads from the descriptor.
    virtual long Read(int descriptor, const QByteArray& arrived, char* buffer, std::size_t size) = 0;
};

/// The serial device, played inside of the process: the functions of the C library come here for the one
/// descriptor that opening the device returned.
class SerialLine
{
public:
    static SerialLine& Get();
    /// In real time, the application and the driver's worker look at the line, the instrument and the checks
    /// at once. Whoever does so holds this, and does not sleep.
    static std::unique_lock<std::recursive_mutex> Lock();

    /// From now on the descriptor is that of the terminal. Without one it stands for nothing, and the bytes
    /// go straight to the instrument and back.
    void UseTerminal(Terminal& terminal) { _terminal = &terminal; }
    bool HasTerminal() const { return _terminal != nullptr; }

    /// Begins anew, faultless, with this instrument at its other end.
    void Connect(Instrument& instrument, Random& random);

    /// Sees every request before the instrument. True if it brought a fault upon it.
    std::function<bool(Exchange&)> onRequest;

    Trouble trouble;

    /// Ends everything that is wrong, and what is still on its way.
    void EndTrouble();
    /// The line is faultless, and was so for some exchanges.
    bool IsCalm() const;
    /// The machine has held up a thread of the driver for longer than can be left out of account.
    void RecordStall();
    /// The last time at which a thread of the driver was held up.
    Nanoseconds LastStall() const;
    /// Whether the driver's thread waits between two looks at the cells.
    bool IsPreempted() const;
    /// When the driver last read any bytes.
    Nanoseconds LastByte() const { return _lastByte; }
    /// How many bytes were read since something was last written.
    int BytesReadSinceWrite() const { return _bytesRead; }
    bool IsOpen() const;

    // What the C library's functions do.
    bool Owns(int descriptor) const;
    int Open();
    void Close();
    long Read(char* buffer, std::size_t size);
    long Write(const char* bytes, std::size_t size);
    int Drain();
    int Configure();
    int Flush();
    int Queued() const;
    /// How long a sleep of the driver really lasts; negative where a signal cuts it short.
    Nanoseconds SleepTime(Nanoseconds asked);
    /// Lets the driver's thread wait at a lock, if that is due.
    void PassLock();

private:
    void Receive(const QByteArray& bytes);
    void Deliver(const QByteArray& request);
    void Babble();
    int Fail(int error) const;

    Terminal* _terminal = nullptr;
    Instrument* _instrument = nullptr;
    Random* _random = nullptr;
    int _descriptor = -1;
    std::deque<Chunk> _incoming;
    QByteArray _request;
    Nanoseconds _requestBegan{0};
    Nanoseconds _lastStall{0};
    Nanoseconds _preemptedUntil{0};
    Nanoseconds _lastByte{0};
    Nanoseconds _babbled{0};
    Nanoseconds _faultEnds{0}; ///< The last bytes of a faulty answer have come.
    int _cleanExchanges = 0;
    int _bytesRead = 0;
};
