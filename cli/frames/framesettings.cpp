#include "cli/frames/framesettings.h"

#include <QStringList>
#include <QVector>
#include <QtEndian>

#include <utility>

#include <Vesmar/measurementresults.h>

#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::MeasurementType;

using Settings = QVector<std::pair<const char*, QString>>;

QString Number(unsigned value)
{
    return QString::number(value);
}

QString Bit(unsigned code, unsigned mask, const char* set, const char* clear)
{
    return QString::fromLatin1((code & mask) != 0 ? set : clear);
}

QString TimeWord(const QByteArray& payload)
{
    constexpr unsigned Unlimited = 0xFF;
    return ByteAt(payload, 1) == Unlimited ? QStringLiteral("none") : QStringLiteral("set");
}

/// Several combinations make the same code.
Settings SettingsOfRPE(unsigned code)
{
    struct Row {
        unsigned code;
        const char* method;
        const char* current;
    };
    constexpr Row Rows[] = {
        {0x00, "0 with any current, or 1", "0 or 1 with method 1"},
        {0x04, "1", "2"},
        {0x06, "1", "3"},
        {0x01, "2", "0 or 1"},
        {0x05, "2", "2"},
        {0x07, "2", "3"},
        {0x08, "3", "0 or 1"},
        {0x0C, "3", "2"},
        {0x0E, "3", "3"},
    };
    for (const Row& row : Rows) {
        if (row.code == code) {
            return {{"method", QString::fromLatin1(row.method)},
                    {"current", QString::fromLatin1(row.current)}};
        }
    }
    return {{"code", Number(code)}};
}

QString ModeOfRISO(unsigned code)
{
    switch (code & ~0x03U) {
    case 0x04:
        return QStringLiteral("1");
    case 0x08:
        return QStringLiteral("2");
    case 0x10:
        return QStringLiteral("4");
    default:
        return QStringLiteral("of code %1").arg(code & ~0x03U);
    }
}

Settings TestOptions(const QByteArray& payload)
{
    const unsigned options = ByteAt(payload, 3);
    return {{"mode", Number(ModeOfTest(payload))},
            {"phase", Number((options >> 4U) & 3U)},
            {"quantity", Number((options >> 2U) & 3U)},
            {"current", Number(options & 3U)},
            {"type", Number(ByteAt(payload, 2) >> 6U)}};
}

Settings SettingsOfRCD(const QByteArray& payload)
{
    constexpr unsigned UbRe = 0;
    Settings settings = TestOptions(payload);
    if (ModeOfTest(payload) != UbRe) {
        settings.append({"Re", ShowReading(ReOfTest(payload)).text});
    }
    return settings;
}

/// The swap takes the upper bit of the type.
Settings SettingsOfRCDIEC(const QByteArray& payload)
{
    constexpr unsigned Swapped = 0x80;
    const unsigned type = ByteAt(payload, 2);
    Settings settings = TestOptions(payload);
    if ((type & Swapped) != 0) {
        settings.last().second = QStringLiteral("%1 or %2").arg((type >> 6U) & 1U).arg(type >> 6U);
        settings.append({"L and N", QStringLiteral("swapped, unless the type says it")});
    }
    return settings;
}

Settings SettingsOf(MeasurementType function, const QByteArray& payload)
{
    const unsigned code = ByteAt(payload, 2);
    const Settings::value_type mode{"mode", Bit(code, 1, "2", "1")};
    const Settings::value_type configuration{"configuration", Bit(code, 4, "2", "1")};
    switch (function) {
    case MeasurementType::RPE:
        return SettingsOfRPE(code);
    case MeasurementType::RISO:
        return {{"voltage", Number(code & 3U)}, {"mode", ModeOfRISO(code)}};
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
        return SettingsOfRCDIEC(payload);
    default:
        return {};
    }
}

bool IsContinuous(MeasurementType function)
{
    return function >= MeasurementType::RPE && function <= MeasurementType::HVTest;
}

} // namespace

std::optional<MeasurementType> PreparedFunction(const QByteArray& payload)
{
    constexpr unsigned VariantIEC = 2;
    const auto function = static_cast<MeasurementType>(ByteAt(payload, 0));
    if (function < MeasurementType::RLN || function > MeasurementType::RCDIEC) {
        return std::nullopt;
    }
    const bool isIEC = function == MeasurementType::RLN && ByteAt(payload, 2) == VariantIEC;
    return isIEC ? MeasurementType::IEC : function;
}

FrameWords WordsOfSettings(const QByteArray& payload)
{
    const auto function = PreparedFunction(payload);
    if (!function) {
        return {QString(), {}, QStringLiteral("there is no function %1").arg(ByteAt(payload, 0)), {}};
    }
    Settings settings = SettingsOf(*function, payload);
    if (IsContinuous(*function)) {
        settings.prepend({"time", TimeWord(payload)});
    }
    const Shown shown = Show(*function);
    QStringList texts;
    QJsonObject json;
    for (const auto& [name, value] : settings) {
        texts.append(QString::fromLatin1(name) + QLatin1Char(' ') + value);
        json.insert(QLatin1String(name), value);
    }
    const QString colon = texts.isEmpty() ? QString() : QStringLiteral(": ");
    return {shown.text + colon + texts.join(QStringLiteral(", ")),
            {{QStringLiteral("function"), shown.json}, {QStringLiteral("settings"), json}},
            QString(),
            {}};
}

unsigned ModeOfTest(const QByteArray& payload)
{
    return ByteAt(payload, 3) >> 6U;
}

float ReOfTest(const QByteArray& payload)
{
    constexpr int Position = 4;
    return payload.size() == PreparePayloadSize ? qFromLittleEndian<float>(payload.constData() + Position)
                                                : Vesmar::MeasurementResults::NoValue;
}

} // namespace Cli
