#include "panel/report/reporthtml.h"

#include <algorithm>
#include <cmath>

#include <QBuffer>
#include <QCoreApplication>

#include "panel/kit/words.h"
#include "panel/plan/planwords.h"
#include "panel/report/plotimage.h"

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::Gap;
using VesmarClient::Identity;
using VesmarClient::Option;
using VesmarClient::Reading;
using VesmarClient::ReadingInfo;

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Panel::Report)
};

const char Style[] = "<style>body{font-family:sans-serif;font-size:13px;max-width:720px;margin:auto}"
                     "th{text-align:left}td,th{padding:2px 12px 2px 0}"
                     "pre{font-family:'DejaVu Sans Mono',monospace;font-size:10px}</style>";

QString tagged(const char* tag, const QString& content)
{
    return QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), content);
}

QString escaped(const char* tag, const QString& text)
{
    return tagged(tag, text.toHtmlEscaped());
}

QString row(const QStringList& cells, const char* tag = "td")
{
    QString html;
    for (const QString& cell : cells) {
        html += escaped(tag, cell);
    }
    return tagged("tr", html);
}

QString dateTime(const QDateTime& time)
{
    return time.isValid() ? time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QStringLiteral("-");
}

QString textOf(const ReadingInfo& info, double value)
{
    return shownValue(value, info.unit, info.decimals);
}

/// Those of the first step that was measured: a plan is measured with one instrument.
QString instrumentTable(const PlanRecord& plan)
{
    const auto* const measured = std::find_if(plan.steps.cbegin(), plan.steps.cend(),
                                              [](const StepRecord& step) { return !step.record.isNull(); });
    const bool isMeasured = measured != plan.steps.cend();
    const Identity identity = isMeasured ? measured->record->identity : Identity();
    const QDateTime calibration = isMeasured ? measured->record->calibrationDate : QDateTime();
    return tagged("table", row({Texts::tr("Instrument"),
                                identity.deviceName + QLatin1Char(' ') + identity.deviceCode}) +
                               row({Texts::tr("Serial number"), identity.serialNumber}) +
                               row({Texts::tr("Firmware"),
                                    QStringLiteral("%1 (%2)").arg(identity.version, identity.buildNumber)}) +
                               row({Texts::tr("Calibrated on"), dateTime(calibration).left(10)}) +
                               row({Texts::tr("Begun"), dateTime(plan.begun)}) +
                               row({Texts::tr("Ended"), dateTime(plan.ended)}));
}

QString overview(const PlanRecord& plan)
{
    QString rows = row({QString(), Texts::tr("Step"), Texts::tr("Result"), Texts::tr("Readings")}, "th");
    for (int i = 0; i < plan.steps.size(); ++i) {
        const StepRecord& step = plan.steps.at(i);
        rows += row({QString::number(i + 1), step.step.name, words(step.state), readingsOf(step)});
    }
    return tagged("table", rows);
}

QString settingsOf(const StepRecord& step)
{
    QStringList texts;
    const FunctionInfo function = step.record->function();
    for (const Option& option : function.options) {
        const QVariant value = step.step.settings.value(option.identifier);
        if (value.isValid()) {
            texts.append(
                QStringLiteral("%1 %2 %3").arg(option.title, value.toString(), option.unit).trimmed());
        }
    }
    return texts.join(QStringLiteral(", "));
}

QString endOf(const Record& record)
{
    QString html =
        escaped("p", words(record.outcome) + QStringLiteral(". ") + stopWords(record.isStopConfirmed));
    if (record.failure.isFailure()) {
        html += escaped("p", record.failure.whatHappened + QLatin1Char(' ') + record.failure.nextStep);
    }
    for (const Gap& gap : record.gaps) {
        html += escaped("p", Texts::tr("No reading for %1 s after %2 s.")
                                 .arg(static_cast<double>(gap.duration) / 1000, 0, 'f', 1)
                                 .arg(static_cast<double>(gap.begin) / 1000, 0, 'f', 1));
    }
    return html;
}

QString readingTable(const StepRecord& step)
{
    QString rows = row({Texts::tr("Reading"), Texts::tr("Last"), Texts::tr("Lowest"), Texts::tr("Highest"),
                        Texts::tr("Has to be")},
                       "th");
    const FunctionInfo function = step.record->function();
    for (int i = 0; i < function.readings.size(); ++i) {
        const ReadingInfo& info = function.readings.at(i);
        double lowest = std::nan("");
        double highest = std::nan("");
        for (const double value : step.record->values.value(i)) {
            lowest = std::fmin(lowest, value); // Not a number counts only where there is nothing else.
            highest = std::fmax(highest, value);
        }
        const Reading last = step.record->latest.reading(info.identifier);
        const auto* const criterion =
            std::find_if(step.step.criteria.cbegin(), step.step.criteria.cend(),
                         [&info](const Criterion& each) { return each.reading == info.identifier; });
        const double lastValue = last.isPresent ? last.value : std::nan("");
        rows += row({info.title, textOf(info, lastValue), textOf(info, lowest), textOf(info, highest),
                     criterion != step.step.criteria.cend() ? rangeOf(*criterion, last) : QString()});
    }
    return tagged("table", rows);
}

QString plots(const Record& record)
{
    QString html;
    for (int i = 0; i < record.function().readings.size(); ++i) {
        QBuffer png;
        png.open(QIODevice::WriteOnly);
        plotImage(record, i).save(&png, "PNG");
        html += QStringLiteral("<p><img width=\"640\" height=\"180\" src=\"data:image/png;base64,%1\"></p>")
                    .arg(QString::fromLatin1(png.data().toBase64()));
    }
    return html;
}

QString everyReading(const Record& record)
{
    constexpr int Width = 16;
    const FunctionInfo function = record.function();
    QString text = QStringLiteral("s").rightJustified(Width);
    for (const ReadingInfo& info : function.readings) {
        text += info.title.rightJustified(Width);
    }
    for (int i = 0; i < record.times.size(); ++i) {
        text += QLatin1Char('\n') + QString::number(record.times.at(i), 'f', 1).rightJustified(Width);
        for (int reading = 0; reading < function.readings.size(); ++reading) {
            text +=
                textOf(function.readings.at(reading), record.values.at(reading).at(i)).rightJustified(Width);
        }
    }
    return escaped("h4", Texts::tr("Every reading")) + escaped("pre", text);
}

QString section(int number, const StepRecord& step)
{
    QString html = escaped(
        "h2", QStringLiteral("%1. %2: %3").arg(QString::number(number), step.step.name, words(step.state)));
    if (step.record.isNull()) {
        return html;
    }
    html += escaped("p", step.record->function().title + QStringLiteral(". ") + settingsOf(step));
    html += endOf(*step.record);
    for (const QString& miss : step.misses) {
        html += tagged("p", escaped("b", miss));
    }
    html += readingTable(step);
    return step.record->times.size() < 2 ? html : html + plots(*step.record) + everyReading(*step.record);
}

} // namespace

QString htmlOf(const PlanRecord& plan)
{
    QString body = escaped("h1", plan.name) + tagged("p", escaped("b", words(plan.verdict()))) +
                   instrumentTable(plan) + escaped("h2", Texts::tr("Overview")) + overview(plan);
    for (int i = 0; i < plan.steps.size(); ++i) {
        body += section(i + 1, plan.steps.at(i));
    }
    return QStringLiteral(
               "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">%1%2</head><body>%3</body></html>\n")
        .arg(escaped("title", plan.name), QLatin1String(Style), body);
}

} // namespace Panel
