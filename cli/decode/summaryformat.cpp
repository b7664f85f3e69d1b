#include "cli/decode/summaryformat.h"

#include <QJsonArray>

#include "cli/words/format.h"
#include "cli/words/text.h"
#include "client/words/names.h"

namespace Cli
{

namespace
{

QByteArray SummaryLine(const QString& label, const QString& text)
{
    constexpr int LabelWidth = 19;
    return (QStringLiteral("  ") + label.leftJustified(LabelWidth) + text + QLatin1Char('\n')).toUtf8();
}

} // namespace

QByteArray SummaryText(const Decode::Summary& summary)
{
    const auto count = [](const char* label, int number) {
        return SummaryLine(Text::tr(label), QString::number(number));
    };
    QByteArray text = '\n' + Text::tr("Summary").toUtf8() + '\n' +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "exchanges"), summary.Exchanges()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "refused"), summary.Refused()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "damaged"), summary.Damaged()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "without an answer"), summary.Silent()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "cut short"), summary.Cut()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "sent unasked"), summary.Unasked()) +
                      count(QT_TRANSLATE_NOOP("Cli::Text", "links"), summary.Links());
    if (summary.LongestLine() != 0) {
        text +=
            SummaryLine(Text::tr("longest"),
                        Text::tr("within %1 ms, line %2").arg(summary.Longest()).arg(summary.LongestLine()));
    }
    for (const Decode::FoundError& found : summary.Errors()) {
        text += SummaryLine(
            Text::tr("error"),
            Text::tr("%1, line %2").arg(VesmarClient::NameAndNumber(found.error)).arg(found.line));
        text += SummaryLine(QString(), VesmarClient::Meaning(found.error));
        text += SummaryLine(
            QString(), Text::tr("vesmar explain %1 tells what to do").arg(static_cast<int>(found.error)));
    }
    return text;
}

QJsonObject SummaryFields(const Decode::Summary& summary)
{
    QJsonArray errors;
    for (const Decode::FoundError& found : summary.Errors()) {
        errors.append(QJsonObject{{QStringLiteral("line"), found.line},
                                  {QStringLiteral("ErrorCode"), Show(found.error).json}});
    }
    const bool hasLongest = summary.LongestLine() != 0;
    return {{QStringLiteral("exchanges"), summary.Exchanges()},
            {QStringLiteral("refused"), summary.Refused()},
            {QStringLiteral("damaged"), summary.Damaged()},
            {QStringLiteral("unanswered"), summary.Silent()},
            {QStringLiteral("cut"), summary.Cut()},
            {QStringLiteral("unasked"), summary.Unasked()},
            {QStringLiteral("links"), summary.Links()},
            {QStringLiteral("longest"), hasLongest ? QJsonValue(summary.Longest()) : QJsonValue()},
            {QStringLiteral("longestLine"), hasLongest ? QJsonValue(summary.LongestLine()) : QJsonValue()},
            {QStringLiteral("errors"), errors}};
}

} // namespace Cli
