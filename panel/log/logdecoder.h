#pragma once

#include "decode/lines/logreader.h"
#include "decode/log/history.h"
#include "panel/session/record.h"

namespace Panel
{

/// One thing that a log tells.
struct LogRow {
    qint64 line; ///< Counts from 1.
    QTime at;    ///< In UTC; invalid where the log has none.
    QString title;
    QString text;
    bool isProblem;
};

/// Decodes a log line by line: into rows and, where they are wanted, records of what was measured.
class LogDecoder
{
public:
    explicit LogDecoder(bool keepsRecords);

    void read(const Decode::LogLine& line);
    /// The log has ended: what was held back is told now.
    void finish();

    /// The rows since this was asked last.
    QVector<LogRow> consumeRows();
    /// The measurements so far, each named with the time at which it began.
    const QVector<QPair<QString, RecordPointer>>& records() const { return _records; }

private:
    void add(const Decode::Event& event);
    void record(const Decode::Event& event);

    bool _keepsRecords;
    Decode::History _history;
    QVector<LogRow> _rows;
    QVector<QPair<QString, RecordPointer>> _records;
    QSharedPointer<Record> _record; ///< Of the function that is being measured; null between two.
    QTime _recordBegan;
};

} // namespace Panel
