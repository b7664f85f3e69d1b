#pragma once

#include <QString>
#include <QStringList>

/// Records the pauses of its thread as long as it lives. There is one at a time on a thread.
///
/// It sees the sleeps of `QThread`. The waits of the serial line are of another kind.
class PauseLog
{
public:
    PauseLog();
    ~PauseLog();
    PauseLog(const PauseLog&) = delete;
    PauseLog& operator=(const PauseLog&) = delete;

    /// Milliseconds, in order, blank between them.
    QString Text() const { return _pauses.join(QLatin1Char(' ')); }

    void Record(qint64 milliseconds) { _pauses.append(QString::number(milliseconds)); }

private:
    QStringList _pauses;
};
