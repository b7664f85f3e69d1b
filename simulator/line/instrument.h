#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QVector>

#include "simulator/control/controlcommand.h"
#include "simulator/control/scenarios.h"
#include "simulator/faults/faultplan.h"
#include "simulator/line/descriptor.h"
#include "simulator/line/exchangelog.h"
#include "simulator/line/firmwarefile.h"
#include "simulator/line/player.h"
#include "simulator/line/ptyline.h"
#include "simulator/model/instrumentmodel.h"
#include "simulator/wire/requestcollector.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// How an instrument behaves on its line.
struct InstrumentOptions {
    ModelOptions model;
    std::chrono::microseconds answerAfter{0}; ///< from the end of a request to its answer
    QString logPath;                          ///< a line per exchange and per change; empty for no log
    QString firmwarePath;       ///< where the image of a confirmed update is written; empty for nowhere
    int baud = 0;               ///< bits per second that the line carries; 0 when bytes take no time
    bool keepsExchanges = true; ///< off for a program that runs for days
    std::vector<RecordedEntry> recording; ///< what answers instead of the model; empty for the model
};

/// A simulated instrument at a pseudo-terminal, served by a thread of its own from construction to
/// destruction. Every operation may be called from any thread.
class Instrument
{
public:
    /// Throws std::exception when there is no pseudo-terminal or a file cannot be written.
    explicit Instrument(const InstrumentOptions& options = {});
    ~Instrument();
    Instrument(const Instrument&) = delete;
    Instrument(Instrument&&) = delete;
    Instrument& operator=(const Instrument&) = delete;
    Instrument& operator=(Instrument&&) = delete;

    /// What programs open; empty while the line is hung up. A line that comes back is a new one, with a new
    /// path.
    QString DevicePath() const;

    /// Called whenever the line is about to break, with an empty path, and when there is a new one, with its
    /// path; by the serving thread, so it must call no operation of the instrument.
    void SetLineListener(std::function<void(const QString& devicePath)> listener);

    void Execute(const ControlCommand& command);

    /// False when there is no such command; *error then says why.
    bool Execute(const QString& command, QString* error = nullptr);

    // The model's; nothing of it is to be seen on the line while a recording is played.
    void SetMode(int mode);
    void SetError(int error);

    /// As if someone had started this function at the instrument; 0 ends it.
    void SetFunction(int function);

    /// How measurements and updates go from now on. The number is the one that follows the scenario's name.
    void SetScenario(Scenario scenario, int number = 1);

    void SetFault(Fault fault, std::chrono::milliseconds slowAnswer = DefaultSlowAnswer);
    void Unplug() { SetFault(Fault::Silent); }
    void Plug() { SetFault(Fault::None); }

    /// Faults that wait for their triggers, besides the one above. Their times and requests are counted from
    /// now on. False, and nothing is changed, when there would be more than `FaultPlan::MostFaults`.
    bool AddFaults(const std::vector<FaultEntry>& faults);
    void ClearFaults();

    void SetAnswerAfter(std::chrono::microseconds delay);

    /// The exact bytes that answer the next request, whatever it is; an empty array means silence. Calls
    /// queue up.
    void AnswerNextWith(const QByteArray& raw);

    /// Puts bytes on the line that nobody asked for.
    void Send(const QByteArray& raw);

    std::vector<Exchange> Exchanges() const;

    /// The requests that were received and dealt with so far, those that found no answer included.
    QVector<QByteArray> Requests() const;

    /// Forgets the exchanges so far.
    void ClearRequests();

    /// What the instrument's own clock shows.
    QDateTime Date() const;
    QDateTime CalibrationDate() const;

    /// What its status would tell now.
    StatusWord Status();

    /// The image of the last update that was confirmed; empty before the first.
    QByteArray Firmware() const;

private:
    struct PendingRequest {
        CollectedRequest request;
        TimePoint dueAt;
        std::vector<FaultEntry> faults; ///< what happens at it
    };

    /// An answer, or a piece of a frame that nobody asked for.
    struct PendingBytes {
        QByteArray bytes;
        std::optional<Exchange> exchange; ///< the one that the bytes answer
        TimePoint readyAt;
        std::chrono::microseconds pauseBefore{0}; ///< how long the line is quiet before them, at least
        bool isUnfinished = false;                ///< more of the same answer follows
    };

    void Serve();
    void TakeNewLine();
    void ChangeLine(std::unique_ptr<PtyLine> line);
    void ReturnLine();
    void CarryOutDue();
    void CarryOut(const FaultEntry& act);
    void ExecuteHere(const ControlCommand& command);
    void FollowModel();
    void TakeFrames();
    std::vector<FramePiece> DueFrames();
    std::optional<TimePoint> NextChangeAt() const;
    void ReadLine();
    void AnswerDueRequests();
    void AnswerRequest(const PendingRequest& pending);
    QByteArray AnswerTo(const QByteArray& request, const std::vector<FaultEntry>& faults);
    QByteArray UndamagedAnswerTo(const QByteArray& request);
    void QueueAnswer(const Exchange& exchange, const std::vector<FaultEntry>& faults);
    std::vector<FaultEntry> WithStanding(const std::vector<FaultEntry>& faults) const;
    void KeepFirmware();
    void SendDueBytes();
    std::optional<TimePoint> NextBytesAt() const;
    void NoteSent(const PendingBytes& sent);
    std::chrono::microseconds LineTime(int byteCount) const;
    std::chrono::microseconds AnswerDelay(const std::vector<FaultEntry>& faults) const;
    void WaitForWork(std::unique_lock<std::mutex>& lock);
    void ReplaceLine(std::unique_ptr<PtyLine> line, std::unique_lock<std::mutex>& lock);
    void Wake();

    mutable std::mutex _mutex; ///< guards everything below up to the thread
    InstrumentModel _model;
    std::optional<Player> _player;  ///< answers before the model does when there is one
    std::unique_ptr<PtyLine> _line; ///< none while hung up
    QString _devicePath;
    RequestCollector _collector;
    std::deque<PendingRequest> _pending;
    std::deque<PendingBytes> _sending; ///< in the order in which they go out
    TimePoint _lastSentAt;
    std::deque<QByteArray> _scriptedAnswers;
    std::vector<Exchange> _exchanges;
    ExchangeLog _log;
    FirmwareFile _firmwareFile;
    QByteArray _firmware;
    std::chrono::microseconds _answerAfter;
    int _baud;
    bool _keepsExchanges;
    FaultEntry _standingFault; ///< the one that was set by its name
    FaultPlan _faultPlan;
    std::function<void(const QString&)> _lineListener;
    std::optional<TimePoint> _lineBackAt; ///< set while hung up for a time
    std::unique_ptr<PtyLine> _newLine;
    bool _isLineChanging = false;
    bool _isStopping = false;
    std::condition_variable _lineChanged;
    Descriptor _wake; ///< tells the serving thread to look again
    std::thread _thread;
};

} // namespace Simulator
