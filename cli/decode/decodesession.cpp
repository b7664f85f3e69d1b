#include "cli/decode/decodesession.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

#include <sys/stat.h>

#include "cli/decode/decodeformat.h"
#include "cli/decode/jsontext.h"
#include "cli/decode/summaryformat.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "cli/words/text.h"
#include "decode/lines/logentry.h"

namespace Cli
{

namespace
{

/// Limits what is written about a file that is no log at all.
constexpr int MostComplaints = 20;

/// Whether the path leads to the open file, under whatever name.
bool IsSameFile(int descriptor, const QString& path)
{
    struct stat opened = {};
    struct stat other = {};
    return ::fstat(descriptor, &opened) == 0 && ::stat(QFile::encodeName(path).constData(), &other) == 0 &&
           opened.st_dev == other.st_dev && opened.st_ino == other.st_ino;
}

} // namespace

DecodeSession::DecodeSession(const Task& task, Output& output)
    : _task(task),
      _output(output),
      _reader(task.logDescriptor, task.stopDescriptor),
      _history([this](const Decode::Event& event) { ShowEvent(event); }),
      _ending(DoneWith({}))
{
}

int DecodeSession::Run()
{
    if (Begin()) {
        for (auto line = NextLine(); line; line = NextLine()) {
            DecodeLine(*line);
            if (_printed != Output::Result::Written) {
                return PrintingStatus(_output, _printed);
            }
        }
        _history.Finish();
        Flush();
        DecideEnding();
    }
    PrintEnd();
    Flush();
    const int status = PrintingStatus(_output, _printed);
    return status != ExitStatus::Done ? status : _ending.status;
}

/// False when the log is not to be read.
bool DecodeSession::Begin()
{
    if (_task.logDescriptor < 0 && _task.openError == 0) {
        Fail("unreadable",
             Text::tr("%1 is a device; name a file, or - for the standard input").arg(_task.logName));
    } else if (_task.logDescriptor < 0) {
        Fail("unreadable",
             Text::tr("cannot read %1: %2").arg(_task.logName, qt_error_string(_task.openError)));
    } else if (IsSameFile(_task.logDescriptor, _task.recordingPath)) {
        Fail("cannot-record", Text::tr("%1 is the log itself; give the recording a name of its own")
                                  .arg(Printable(_task.recordingPath)));
    } else if (!_task.recordingPath.isEmpty()) {
        _recording.emplace(
            _task.recordingPath,
            Text::tr("Recorded by vesmar decode from %1").arg(QFileInfo(_task.logName).fileName()));
        if (!_recording->Problem().isEmpty()) {
            Fail("cannot-record", _recording->Problem());
        }
    }
    return _ending.status == ExitStatus::Done;
}

void DecodeSession::DecodeLine(const Decode::LogLine& line)
{
    _isEmpty = false;
    if (!line.damage.isEmpty()) {
        ReportDamage(line.number, line.damage);
        return;
    }
    const Decode::LogEntry entry = Decode::ParseLogLine(line.text);
    if (!entry.damage.isEmpty()) {
        ReportDamage(line.number, entry.damage);
        return;
    }
    _history.Read(line.number, entry);
}

void DecodeSession::ShowEvent(const Decode::Event& event)
{
    _summary.Add(event);
    if (_recording) {
        _recording->Record(event);
    }
    Print(_task.isJson ? DecodedJson(TimeJson(), event) : DecodedText(event));
}

/// The present time. Within a millisecond, many events are shown.
const QByteArray& DecodeSession::TimeJson()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now != _now) {
        _now = now;
        _timeJson = JsonText(TimeStamp(QDateTime::fromMSecsSinceEpoch(now, Qt::UTC)));
    }
    return _timeJson;
}

void DecodeSession::ReportDamage(qint64 line, const QString& damage)
{
    ++_damagedLines;
    if (_damagedLines <= MostComplaints) {
        Flush();
        WriteError(Text::tr("%1, line %2: %3").arg(_task.logName, QString::number(line), Printable(damage)));
    }
}

void DecodeSession::Fail(const char* reason, const QString& message)
{
    if (_ending.status != ExitStatus::Done) {
        return;
    }
    _ending = {ExitStatus::BadUsage, Ending::Outcome::Failed, message, QString::fromLatin1(reason)};
    WriteError(message);
}

void DecodeSession::DecideEnding()
{
    const QString& log = _task.logName;
    if (_damagedLines > MostComplaints) {
        WriteError(Text::tr("%1: %2 more lines are damaged")
                       .arg(log, QString::number(_damagedLines - MostComplaints)));
    }
    if (_reader.LastError() != 0) {
        Fail("unreadable", Text::tr("cannot read %1: %2").arg(log, qt_error_string(_reader.LastError())));
    } else if (_reader.IsStopped() && _summary.Exchanges() == 0) {
        Fail("no-exchange",
             Text::tr("%1: the reading was ended before an exchange with an instrument").arg(log));
    } else if (_isEmpty) {
        Fail("empty", Text::tr("%1 is empty; check that it is the right file").arg(log));
    } else if (_damagedLines > 0) {
        const QString message =
            _recording ? Text::tr("%1: lines that are not decoded because they are damaged: %2, and no "
                                  "recording is written; get the whole log, or remove them")
                       : Text::tr("%1: lines that are not decoded because they are damaged: %2; get the "
                                  "whole log, or remove them");
        Fail("damaged-log", message.arg(log, QString::number(_damagedLines)));
    } else if (_summary.Exchanges() == 0) {
        Fail("no-exchange",
             Text::tr("%1 has no exchange with an instrument; check that it is a log of the library")
                 .arg(log));
    }
    CloseRecording();
}

void DecodeSession::PrintEnd()
{
    const bool isDone = _ending.status == ExitStatus::Done;
    if (isDone) {
        _ending.message = DoneText();
    }
    if (_task.isJson) {
        QJsonObject fields = SummaryFields(_summary);
        fields.insert(QStringLiteral("damagedLines"), _damagedLines);
        Print(ResultLine(QDateTime::currentDateTimeUtc(), _ending, fields));
    } else if (_summary.Exchanges() > 0) {
        Print(SummaryText(_summary) + (isDone ? _ending.message.toUtf8() + '\n' : QByteArray()));
    }
}

void DecodeSession::CloseRecording()
{
    if (_recording && _ending.status == ExitStatus::Done && !_recording->Commit()) {
        Fail("cannot-record", QStringLiteral("%1: %2").arg(_task.logName, _recording->Problem()));
    }
}

QString DecodeSession::DoneText() const
{
    const QString decoded = _reader.IsStopped() ? Text::tr("The log is decoded as far as it was read")
                                                : Text::tr("The log is decoded");
    if (!_recording) {
        return decoded + QLatin1Char('.');
    }
    const QString entries = QString::number(_recording->Entries());
    return _summary.Links() > 1 ? Text::tr("%1, and %2 entries are recorded, of all %3 links.")
                                      .arg(decoded, entries, QString::number(_summary.Links()))
                                : Text::tr("%1, and %2 entries are recorded.").arg(decoded, entries);
}

/// Whoever watches a log that grows sees all of it while the program waits for more.
std::optional<Decode::LogLine> DecodeSession::NextLine()
{
    if (!_reader.HasLine()) {
        Flush();
    }
    return _reader.Next();
}

void DecodeSession::Print(const QByteArray& text)
{
    constexpr int MostKept = 65536;
    _kept += text;
    if (_kept.size() > MostKept) {
        Flush();
    }
}

void DecodeSession::Flush()
{
    _printed = _output.Write(_kept);
    _kept.clear();
}

} // namespace Cli
