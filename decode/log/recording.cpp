#include "decode/log/recording.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include "client/words/printable.h"
#include "decode/frames/words.h"
#include "decode/lines/logentry.h"

namespace Decode
{

namespace
{

const char End[] = "\n]}\n";

QByteArray Compact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

Recording::Recording(const QString& path, const QString& comment)
    : _path(VesmarClient::Printable(path)), _file(path)
{
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        _problem = Words::tr("cannot write the file %1: not a regular file").arg(_path);
        return;
    }
    if (!_file.open(QIODevice::WriteOnly)) {
        _problem = Words::tr("cannot write the file %1: %2").arg(_path, _file.errorString());
        return;
    }
    const QByteArray head = Compact({{QStringLiteral("comment"), comment}}).chopped(1);
    Write(head + ", \"exchanges\": [");
}

void Recording::Record(const Event& event)
{
    const bool isExchange = event.kind == Event::Kind::Exchange;
    const bool isUnasked = event.kind == Event::Kind::Unasked && _entries > 0;
    if ((!isExchange && !isUnasked) || event.outcome == AnswerKind::Cut || !_problem.isEmpty()) {
        return;
    }
    if (event.request.size() > LongestFrame || event.answer.size() > LongestFrame) {
        _problem =
            Words::tr("line %1 has more than %2 bytes in one frame, which a recording cannot have; cut it "
                      "out of the log")
                .arg(event.line)
                .arg(LongestFrame);
        return;
    }
    QJsonObject entry;
    if (isUnasked) {
        entry = {{QStringLiteral("unasked"), Hex(event.answer)},
                 {QStringLiteral("after"), SinceEntryBefore(event.at)}};
    } else {
        entry.insert(QStringLiteral("request"), Hex(event.request));
        if (!event.answer.isEmpty()) {
            entry.insert(QStringLiteral("answer"), Hex(event.answer));
        }
    }
    _previousTime = event.at;
    Append(entry);
}

void Recording::Append(const QJsonObject& entry)
{
    const QByteArray text = (_entries > 0 ? ",\n" : "\n") + Compact(entry);
    constexpr int EndSize = sizeof End - 1;
    if (_entries == MostEntries || _size + text.size() + EndSize > LargestFile) {
        _problem =
            Words::tr("the log has more than a recording can have, %1 exchanges and %2 bytes; cut it into "
                      "parts")
                .arg(MostEntries)
                .arg(LargestFile);
        return;
    }
    ++_entries;
    Write(text);
}

void Recording::Write(const QByteArray& text)
{
    _size += text.size();
    if (_file.write(text) != text.size()) {
        _problem = Words::tr("cannot write the file %1: %2").arg(_path, _file.errorString());
    }
}

/// The pause in milliseconds; one that is longer than any that the player makes counts as the longest one.
int Recording::SinceEntryBefore(const QTime& at) const
{
    constexpr int LongestPause = 600000;
    return qMin(MillisecondsBetween(_previousTime, at).value_or(0), LongestPause);
}

bool Recording::Commit()
{
    if (_problem.isEmpty() && _entries == 0) {
        _problem = Words::tr("there is no exchange to record");
    }
    if (_problem.isEmpty()) {
        Write(End);
    }
    if (_problem.isEmpty() && !_file.commit()) {
        _problem = Words::tr("cannot write the file %1: %2").arg(_path, _file.errorString());
    }
    return _problem.isEmpty();
}

} // namespace Decode
