#pragma once

#include <QSaveFile>
#include <QString>
#include <QTime>

#include "decode/events/event.h"

namespace Decode
{

/// A file that the simulated instrument can play back: what the instrument was asked and what it said. The
/// file appears whole or not at all, and a file that was there before stays until then.
class Recording
{
public:
    static constexpr int MostEntries = 100000;
    static constexpr qint64 LargestFile = qint64{16} * 1024 * 1024; ///< In bytes.
    static constexpr int LongestFrame = 2048;                       ///< In bytes.

    /// The comment tells people where the recording comes from. `Problem()` tells what went wrong.
    Recording(const QString& path, const QString& comment);

    /// Only what went over the line is recorded. What was sent unasked before the first exchange is not, nor
    /// is an exchange that was cut short by the closing of the link.
    void Record(const Event& event);

    /// Makes the file appear. False where a problem, of now or of before, prevents it.
    bool Commit();

    int Entries() const { return _entries; }
    /// Empty where there is none; nothing more is written after one.
    const QString& Problem() const { return _problem; }

private:
    void Append(const QJsonObject& entry);
    void Write(const QByteArray& text);
    int SinceEntryBefore(const QTime& at) const;

    QString _path;
    QSaveFile _file;
    QString _problem;
    qint64 _size = 0;
    int _entries = 0;
    QTime _previousTime;
};

} // namespace Decode
