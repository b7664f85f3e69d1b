#include "cli/words/info.h"

#include "cli/words/advice.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

Shown ShowClock(const Condition& condition, QDateTime Clocks::*clock)
{
    if (!condition.clocks) {
        return {Text::tr("cannot be read"), QJsonValue()};
    }
    return Show((*condition.clocks).*clock);
}

} // namespace

QByteArray InfoText(const VesmarClient::Identity& identity, const Condition& condition)
{
    QByteArray text;
    for (const IdentityText& entry : TextsOf(identity)) {
        text += InfoLine(entry.label, Printable(entry.text));
    }
    text += InfoLine(Text::tr("Clock"), ShowClock(condition, &Clocks::current).text);
    text += InfoLine(Text::tr("Last calibrated"), ShowClock(condition, &Clocks::calibration).text);
    text += InfoLine(Text::tr("Mode"), Show(condition.mode).text);
    text += InfoLine(Text::tr("Error"), Show(condition.error).text);
    const bool hasError = condition.error != VesmarClient::Error::NoErrors;
    return hasError ? text + AdviceText(condition.error) : text;
}

QJsonObject InfoFields(const VesmarClient::Identity& identity, const Condition& condition)
{
    return {{QStringLiteral("DeviceInformation"), Show(identity).json},
            {QStringLiteral("CurrentDateTime"), ShowClock(condition, &Clocks::current).json},
            {QStringLiteral("CalibrationDateTime"), ShowClock(condition, &Clocks::calibration).json},
            {QStringLiteral("TesterMode"), Show(condition.mode).json},
            {QStringLiteral("ErrorCode"), Show(condition.error).json}};
}

} // namespace Cli
