#include "panel/report/reportcsv.h"

#include <cmath>

#include <QLocale>

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::ReadingInfo;

namespace
{

QString quoted(QString text)
{
    return QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

QString numberOf(double value)
{
    return std::isnan(value) ? QString() : QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString rowsOf(const QString& front, const Record& record)
{
    const FunctionInfo function = record.function();
    QString rows;
    for (int i = 0; i < record.times.size(); ++i) {
        const QDateTime at = record.begun.addMSecs(std::llround(record.times.at(i) * 1000));
        const QString time =
            QStringLiteral("%1,%2").arg(at.toString(Qt::ISODateWithMs), numberOf(record.times.at(i)));
        for (int reading = 0; reading < function.readings.size(); ++reading) {
            const ReadingInfo& info = function.readings.at(reading);
            const QStringList cells{front, time, info.identifier, numberOf(record.values.at(reading).at(i)),
                                    quoted(info.unit)};
            rows += cells.join(QLatin1Char(',')) + QLatin1Char('\n');
        }
    }
    return rows;
}

} // namespace

QByteArray csvOf(const PlanRecord& plan)
{
    QString text = QStringLiteral("step,name,function,at,seconds,reading,value,unit\n");
    for (int i = 0; i < plan.steps.size(); ++i) {
        const StepRecord& step = plan.steps.at(i);
        if (!step.record.isNull()) {
            const QString front =
                QStringLiteral("%1,%2,%3")
                    .arg(QString::number(i + 1), quoted(step.step.name), step.step.settings.function());
            text += rowsOf(front, *step.record);
        }
    }
    return text.toUtf8();
}

} // namespace Panel
