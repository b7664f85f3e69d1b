#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

#include "simulator/control/controlcommand.h"
#include "simulator/faults/faultplan.h"
#include "simulator/line/exchangelog.h"
#include "simulator/line/firmwarefile.h"
#include "simulator/line/outbox.h"
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

/// Answers the requests of a line as the model or a recording says, with the faults that are in force. It
/// knows nothing of threads and never waits: its owner calls `Work()` whenever `Handle()` is readable or the
/// time `NextWorkAt()` has come. Only the thread that waits at the handle may call `Execute()` and `Work()`,
/// because both may close it.
class LineServer
{
public:
    /// Throws std::exception when there is no pseudo-terminal or a file cannot be written.
    explicit LineServer(const InstrumentOptions& options);

    /// Empty while the line is hung up.
    QString DevicePath() const { return _line ? _line->DevicePath() : QString(); }

    /// Called with an empty path whenever the line is about to break, and with its path when there is a new
    /// one.
    void SetLineListener(std::function<void(const QString& devicePath)> listener);

    void Execute(const ControlCommand& command);

    bool AddFaults(const std::vector<FaultEntry>& faults);
    void ClearFaults() { _faultPlan.Clear(); }
    void SetAnswerAfter(std::chrono::microseconds delay) { _answerAfter = delay; }
    void AnswerNextWith(const QByteArray& raw) { _scriptedAnswers.push_back(raw); }
    void Send(const QByteArray& raw);

    const std::vector<Exchange>& Exchanges() const { return _exchanges; }
    void ClearExchanges() { _exchanges.clear(); }
    const QByteArray& Firmware() const { return _firmware; }
    const InstrumentModel& Model() const { return _model; }

    /// Brings the model up to the present time, sends what it has to send unasked, and logs its changes.
    void AdvanceModel();

    /// Does everything that is due.
    void Work();

    /// What is readable when a request arrives; -1 while the line is hung up.
    int Handle() const { return _line ? _line->Handle() : -1; }

    /// When there is work without a request; nothing when there is none.
    std::optional<TimePoint> NextWorkAt() const;

private:
    struct PendingRequest {
        CollectedRequest request;
        TimePoint dueAt;
        std::vector<FaultEntry> faults; ///< the faults that happen at the request
    };

    void SetFault(Fault fault, std::chrono::milliseconds delay);
    void HangUp(std::optional<std::chrono::milliseconds> backIn);
    void ReturnLine();
    void ReplaceLine(std::unique_ptr<PtyLine> line);
    void CarryOutDue();
    void CarryOut(const FaultEntry& act);
    void QueueUnaskedFrames();
    void ReadLine();
    void AnswerDueRequests();
    void Answer(const PendingRequest& pending);
    QByteArray AnswerTo(const QByteArray& request, const std::vector<FaultEntry>& faults);
    QByteArray UndamagedAnswerTo(const QByteArray& request);
    std::vector<FaultEntry> WithStanding(std::vector<FaultEntry> faults) const;
    std::chrono::microseconds AnswerDelay(const std::vector<FaultEntry>& faults) const;
    void SaveFirmware();
    void SendDueBytes();
    void Record(const OutgoingBytes& sent, TimePoint sentAt);

    InstrumentModel _model;
    std::optional<Player> _player;  ///< answers before the model does when there is a recording
    std::unique_ptr<PtyLine> _line; ///< none while hung up
    std::function<void(const QString&)> _lineListener;
    std::optional<TimePoint> _lineBackAt; ///< set while hung up for a time
    RequestCollector _collector;
    std::deque<PendingRequest> _pending;
    Outbox _outbox;
    std::deque<QByteArray> _scriptedAnswers;
    std::chrono::microseconds _answerAfter;
    FaultEntry _standingFault; ///< the fault that was set by its name
    FaultPlan _faultPlan;
    ExchangeLog _log;
    bool _keepsExchanges;
    std::vector<Exchange> _exchanges;
    FirmwareFile _firmwareFile;
    QByteArray _firmware;
};

} // namespace Simulator
