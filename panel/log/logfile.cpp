#include "panel/log/logfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace Panel
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Panel::Log)
};

/// Some more than are kept, so that they are not moved for each row.
void cut(DecodedLog& log, int most)
{
    if (log.rows.size() > most) {
        log.rows.remove(0, log.rows.size() - DecodedLog::MostRows);
        log.isCut = true;
    }
}

VesmarClient::Failure unreadable(const QString& path, const QString& reason)
{
    return {VesmarClient::Error::NoErrors,
            QStringLiteral("log-unreadable"),
            Texts::tr("The log %1 cannot be read: %2.").arg(path, reason),
            {},
            Texts::tr("Choose another file.")};
}

} // namespace

DecodedLog decodeLogFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        DecodedLog log;
        log.failure = unreadable(path, Texts::tr("it is not a file that may be read"));
        return log;
    }
    Decode::LogReader reader(file.handle());
    LogDecoder decoder(true);
    DecodedLog log;
    while (const auto line = reader.Next()) {
        decoder.read(*line);
        log.rows += decoder.consumeRows();
        cut(log, 2 * DecodedLog::MostRows);
    }
    decoder.finish();
    log.rows += decoder.consumeRows();
    cut(log, DecodedLog::MostRows);
    log.records = decoder.records();
    if (reader.LastError() != 0) {
        log.failure = unreadable(path, qt_error_string(reader.LastError()));
    } else if (log.rows.isEmpty()) {
        log.failure = unreadable(path, Texts::tr("it has no line of the library's log"));
    }
    return log;
}

} // namespace Panel
