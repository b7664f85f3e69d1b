#include "cli/decode/summaryformat.h"

#include <QJsonArray>

#include "cli/words/format.h"
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
        return SummaryLine(QString::fromLatin1(label), QString::number(number));
    };
    QByteArray text = "\nSummary\n" + count("exchanges", summary.Exchanges()) +
                      count("refused", summary.Refused()) + count("damaged", summary.Damaged()) +
                      count("without an answer", summary.Silent()) + count("cut short", summary.Cut()) +
                      count("sent unasked", summary.Unasked()) + count("links", summary.Links());
    if (summary.LongestLine() != 0) {
        text += SummaryLine(
            QStringLiteral("longest"),
            QStringLiteral("within %1 ms, line %2").arg(summary.Longest()).arg(summary.LongestLine()));
    }
    for (const Decode::FoundError& found : summary.Errors()) {
        text += SummaryLine(
            QStringLiteral("error"),
            QStringLiteral("%1, line %2").arg(VesmarClient::NameAndNumber(found.error)).arg(found.line));
        text += SummaryLine(QString(), VesmarClient::Meaning(found.error));
        text += SummaryLine(
            QString(),
            QStringLiteral("vesmar explain %1 tells what to do").arg(static_cast<int>(found.error)));
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
