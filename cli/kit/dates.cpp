#include "cli/kit/dates.h"

#include <CLI/CLI.hpp>

#include "cli/words/text.h"

namespace Cli
{

namespace
{

bool IsKnownToTheInstrument(const QDate& date)
{
    constexpr int FirstYear = 2001;
    constexpr int LastYear = 2099;
    return date.isValid() && date.year() >= FirstYear && date.year() <= LastYear;
}

[[noreturn]] void Refuse(const std::string& text, const QString& complaint)
{
    throw CLI::ValidationError("set", complaint.arg(QString::fromLocal8Bit(text.c_str())).toStdString());
}

QDate DateIn(const QString& text)
{
    return QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
}

} // namespace

QDateTime WallClock()
{
    return AsWallClock(QDateTime::currentDateTime());
}

QDateTime AsWallClock(const QDateTime& value)
{
    return {value.date(), value.time(), Qt::UTC};
}

QDateTime ParseDateTime(const std::string& text)
{
    const QString given = QString::fromLocal8Bit(text.c_str()).replace(QLatin1Char(' '), QLatin1Char('T'));
    const QDate date = DateIn(given.section(QLatin1Char('T'), 0, 0));
    const QTime time = QTime::fromString(given.section(QLatin1Char('T'), 1), QStringLiteral("HH:mm:ss"));
    if (!IsKnownToTheInstrument(date) || !time.isValid()) {
        Refuse(text,
               Text::tr(
                   "\"%1\" is not a date and time from 2001-01-01T00:00:00 to 2099-12-31T23:59:59, nor now"));
    }
    return {date, time, Qt::UTC};
}

QDate ParseDate(const std::string& text)
{
    const QDate date = DateIn(QString::fromLocal8Bit(text.c_str()));
    if (!IsKnownToTheInstrument(date)) {
        Refuse(text, Text::tr("\"%1\" is not a date from 2001-01-01 to 2099-12-31"));
    }
    return date;
}

} // namespace Cli
