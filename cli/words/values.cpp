#include "cli/words/values.h"

#include "cli/words/text.h"
#include "client/words/translation.h"
#include "decode/frames/words.h"

namespace Cli
{

QVector<IdentityText> TextsOf(const VesmarClient::Identity& identity)
{
    return {{"DeviceName", Text::tr("Device name"), identity.deviceName},
            {"DeviceCode", Text::tr("Device code"), identity.deviceCode},
            {"SerialNumber", Text::tr("Serial number"), identity.serialNumber},
            {"Version", Text::tr("Version"), identity.version},
            {"VersionCode", Text::tr("Version code"), identity.versionCode},
            {"RevisionCode", Text::tr("Revision code"), identity.revisionCode},
            {"BuildNumber", Text::tr("Build number"), identity.buildNumber}};
}

Shown Show(const VesmarClient::Identity& value)
{
    QJsonObject json;
    for (const IdentityText& entry : TextsOf(value)) {
        json.insert(QLatin1String(entry.field), entry.text);
    }
    return {Decode::Text(value), json};
}

Shown Show(VesmarClient::Error value)
{
    return Show(static_cast<Vesmar::Error>(value));
}

Shown Show(VesmarClient::Mode value)
{
    return Show(static_cast<Vesmar::OperationMode>(value));
}

Shown Show(VesmarClient::Function value)
{
    return Show(static_cast<Vesmar::MeasurementType>(value));
}

Shown Show(VesmarClient::FunctionState value)
{
    return Show(static_cast<Vesmar::FunctionState>(value));
}

Shown Show(VesmarClient::StartTestResult value)
{
    return Show(static_cast<Vesmar::StartTestResult>(value));
}

QString NameOf(const VesmarClient::Reading& reading)
{
    return VesmarClient::Translated(reading.name.toUtf8().constData());
}

Shown Show(const VesmarClient::Result& value)
{
    Shown shown = Show(value.function());
    QJsonObject readings;
    QStringList words;
    for (const VesmarClient::Reading& reading : value.readings()) {
        words.append(NameOf(reading) + QLatin1Char(' ') + reading.text());
        readings.insert(reading.name, reading.isPresent ? QJsonValue(reading.value) : QJsonValue());
    }
    QJsonObject json = shown.json.toObject();
    json.insert(QStringLiteral("readings"), readings);
    return {shown.text + QStringLiteral(": ") + words.join(QStringLiteral(", ")), json};
}

} // namespace Cli
