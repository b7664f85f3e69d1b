#pragma once

#include <QString>

#include <optional>

#include "cli/output/event.h"
#include "cli/output/output.h"
#include "decode/events/event.h"
#include "decode/lines/logreader.h"
#include "decode/log/history.h"
#include "decode/log/recording.h"
#include "decode/log/summary.h"

namespace Cli
{

/// Decodes one log: prints what the log tells, says what is wrong with it, and records it if that is wanted.
class DecodeSession
{
public:
    struct Task {
        QString logName;       ///< The name in messages.
        int logDescriptor;     ///< Open for reading, and the caller's; negative if the log cannot be opened.
        int openError;         ///< Why the log cannot be opened; 0 for a device, which is not opened.
        QString recordingPath; ///< Empty for none.
        bool isJson;
        int stopDescriptor = -1; ///< The reading ends when this becomes readable; negative for none.
    };

    DecodeSession(const Task& task, Output& output);

    /// Returns the exit status of the program.
    int Run();

private:
    bool Begin();
    void DecodeLine(const Decode::LogLine& line);
    void ShowEvent(const Decode::Event& event);
    const QByteArray& TimeJson();
    void ReportDamage(qint64 line, const QString& damage);
    void CloseRecording();
    void Fail(const char* reason, const QString& message);
    void DecideEnding();
    void PrintEnd();
    std::optional<Decode::LogLine> NextLine();
    void Print(const QByteArray& text);
    void Flush();
    QString DoneText() const;

    Task _task;
    Output& _output;
    QByteArray _kept; ///< What is to be printed soon.
    Output::Result _printed = Output::Result::Written;
    Decode::LogReader _reader;
    Decode::History _history;
    Decode::Summary _summary;
    std::optional<Decode::Recording> _recording;
    bool _isEmpty = true;
    int _damagedLines = 0;
    Ending _ending;
    qint64 _now = 0; ///< In milliseconds; what `_timeJson` tells.
    QByteArray _timeJson;
};

} // namespace Cli
