#include "decode/frames/settings.h"

#include <QStringList>

#include "protocol/frames.h"
#include "protocol/payload.h"

namespace Decode
{

namespace
{

using Vesmar::MeasurementType;
using Vesmar::PreparePayload;

QString Number(int value)
{
    return QString::number(value);
}

/// Several combinations of method and current make the same code.
Settings SettingsOfRPE(int code)
{
    const auto options = Vesmar::DecodeRPE(code);
    if (!options) {
        return {{"code", Number(code)}};
    }
    const bool isAnyMethod = options->method == 1 && options->current == 1;
    const QString firstCurrent = isAnyMethod ? Words::tr("0 or 1 with method 1") : Words::tr("0 or 1");
    return {{"method", isAnyMethod ? Words::tr("0 with any current, or 1") : Number(options->method)},
            {"current", options->current == 1 ? firstCurrent : Number(options->current)}};
}

Settings SettingsOfRISO(int code)
{
    constexpr int NoMode = -1;
    const auto [voltage, mode] = Vesmar::DecodeRISO(code);
    return {{"voltage", Number(voltage)},
            {"mode", mode == NoMode ? Words::tr("of code %1").arg(code - voltage) : Number(mode)}};
}

Settings TestOptions(const Vesmar::RCDOptions& options)
{
    return {{"mode", Number(options.mode)},
            {"phase", Number(options.phase)},
            {"quantity", Number(options.quantity)},
            {"current", Number(options.current)},
            {"type", Number(options.type)}};
}

Settings SettingsOfRCD(const PreparePayload& payload)
{
    constexpr int UbRe = 0;
    Settings settings = TestOptions(payload.options);
    if (payload.options.mode != UbRe) {
        settings.append({"Re", Text(payload.re)});
    }
    return settings;
}

/// The swap of line and neutral shares the upper bit of the type.
Settings SettingsOfRCDIEC(const Vesmar::RCDOptions& options)
{
    constexpr int LowerBit = 1;
    Settings settings = TestOptions(options);
    if (options.isLNSwapped) {
        settings.last().second = Words::tr("%1 or %2").arg(options.type & LowerBit).arg(options.type);
        settings.append({"L and N", Words::tr("swapped, unless the type says it")});
    }
    return settings;
}

Settings SettingsOf(const PreparePayload& payload)
{
    const Settings::value_type mode{"mode", Number(Vesmar::DecodeMode(payload.code))};
    const Settings::value_type configuration{"configuration",
                                             Number(Vesmar::DecodeConfiguration(payload.code))};
    switch (payload.function) {
    case MeasurementType::RPE:
        return SettingsOfRPE(payload.code);
    case MeasurementType::RISO:
        return SettingsOfRISO(payload.code);
    case MeasurementType::IPE:
    case MeasurementType::IDELTA:
        return {mode, configuration};
    case MeasurementType::IT:
        return {configuration};
    case MeasurementType::POWER:
    case MeasurementType::HVTest:
        return {mode};
    case MeasurementType::RCD:
        return SettingsOfRCD(payload);
    case MeasurementType::RCDIEC:
        return SettingsOfRCDIEC(payload.options);
    default:
        return {};
    }
}

bool IsContinuous(MeasurementType function)
{
    return function >= MeasurementType::RPE && function <= MeasurementType::HVTest;
}

} // namespace

FrameWords WordsOfSettings(const QByteArray& bytes)
{
    const auto payload = Vesmar::DecodePayload(bytes);
    if (!payload) {
        return {QString(), {}, Words::tr("there is no function %1").arg(Vesmar::ByteAt(bytes, 0)), {}};
    }
    Settings settings = SettingsOf(*payload);
    if (IsContinuous(payload->function)) {
        settings.prepend({"time", payload->isTimeSet ? Words::tr("set") : Words::tr("none")});
    }
    QStringList texts;
    for (const auto& [name, value] : settings) {
        texts.append(QString::fromLatin1(name) + QLatin1Char(' ') + value);
    }
    const QString colon = texts.isEmpty() ? QString() : QStringLiteral(": ");
    return {Text(payload->function) + colon + texts.join(QStringLiteral(", ")),
            {{"function", payload->function}, {"settings", settings}},
            QString(),
            {}};
}

} // namespace Decode
