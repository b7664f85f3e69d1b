#pragma once

#include <QByteArray>
#include <QList>
#include <QTemporaryFile>

#include "cli/decode/decodedevent.h"
#include "cli/decode/decodehistory.h"
#include "cli/decode/logentry.h"

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
inline QList<Cli::DecodedEvent> EventsOf(const QByteArrayList& lines)
{
    QList<Cli::DecodedEvent> events;
    Cli::DecodeHistory history([&events](const Cli::DecodedEvent& event) { events.append(event); });
    qint64 number = 0;
    for (const QByteArray& line : lines) {
        history.Read(++number, Cli::ParseLogLine(line));
    }
    history.Finish();
    return events;
}
