#pragma once

#include <QString>
#include <QStringList>

/// The pauses that its thread takes while it lives: noted, and not waited for. One at a time on a thread.
///
/// It sees the sleeps of `QThread`. The waits of the serial line are of another kind and stay real.
class PauseLog
{
public:
    PauseLog();
    ~PauseLog();
    PauseLog(const PauseLog&) = delete;
    PauseLog& operator=(const PauseLog&) = delete;

    /// Milliseconds, in order, blank between them.
    QString Text() const { return _pauses.join(QLatin1Char(' ')); }

    void Note(qint64 milliseconds) { _pauses.append(QString::number(milliseconds)); }

private:
    QStringList _pauses;
};
