#pragma once

#include <QByteArray>
#include <QList>
#include <QTemporaryFile>

#include "decode/events/event.h"
#include "decode/lines/logentry.h"
#include "decode/log/history.h"

/// A file with the text in it, to be read from its beginning.
class LogText
{
public:
    explicit LogText(const QByteArray& text)
    {
        _isThere = _file.open() && _file.write(text) == text.size() && _file.flush() && _file.seek(0);
    }

    bool IsThere() const { return _isThere; }
    int Descriptor() const { return _file.handle(); }
    QByteArray Path() const { return _file.fileName().toLocal8Bit(); }

private:
    QTemporaryFile _file;
    bool _isThere = false;
};

/// What the lines tell. None of them is damaged.
inline QList<Decode::Event> EventsOf(const QByteArrayList& lines)
{
    QList<Decode::Event> events;
    Decode::History history([&events](const Decode::Event& event) { events.append(event); });
    qint64 number = 0;
    for (const QByteArray& line : lines) {
        history.Read(++number, Decode::ParseLogLine(line));
    }
    history.Finish();
    return events;
}
