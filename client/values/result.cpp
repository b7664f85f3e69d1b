#include <VesmarClient/result.h>

#include <algorithm>
#include <tuple>

#include <QDebug>
#include <QLocale>

namespace VesmarClient
{

namespace
{

auto Fields(const Reading& reading)
{
    return std::tie(reading.name, reading.value, reading.isPresent, reading.unit, reading.decimals);
}

QString Number(const Reading& reading)
{
    return reading.decimals >= 0 ? QString::number(reading.value, 'f', reading.decimals)
                                 : QString::number(reading.value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

QString Reading::text() const
{
    if (!isPresent) {
        return QStringLiteral("-");
    }
    return unit.isEmpty() ? Number(*this) : Number(*this) + QLatin1Char(' ') + unit;
}

bool operator==(const Reading& left, const Reading& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const Reading& left, const Reading& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Reading& reading)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << reading.name << '=' << reading.text();
    return debug;
}

Result::Result(Function function, const QVector<Reading>& readings, const QDateTime& when)
    : _function(function), _readings(readings), _when(when)
{
}

Reading Result::reading(const QString& name) const
{
    const QVector<Reading>::const_iterator found =
        std::find_if(_readings.cbegin(), _readings.cend(),
                     [&name](const Reading& reading) { return reading.name == name; });
    if (found != _readings.cend()) {
        return *found;
    }
    Reading absent;
    absent.name = name;
    return absent;
}

bool operator==(const Result& left, const Result& right)
{
    return left.function() == right.function() && left.readings() == right.readings() &&
           left.when() == right.when();
}

bool operator!=(const Result& left, const Result& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Result& result)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << "Result(" << result.function() << ", "
                              << result.when().toString(Qt::ISODateWithMs);
    for (const Reading& reading : result.readings()) {
        debug << ", " << reading;
    }
    debug << ')';
    return debug;
}

} // namespace VesmarClient
