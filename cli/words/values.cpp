#include "cli/words/values.h"

#include "cli/words/text.h"

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
    QStringList words;
    QJsonObject json;
    for (const IdentityText& entry : TextsOf(value)) {
        words.append(entry.label.toLower() + QLatin1Char(' ') + Printable(entry.text));
        json.insert(QLatin1String(entry.field), entry.text);
    }
    return {words.join(QStringLiteral(", ")), json};
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

} // namespace Cli
