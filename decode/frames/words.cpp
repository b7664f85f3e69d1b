#include "decode/frames/words.h"

#include <array>
#include <charconv>

#include "client/words/printable.h"
#include "client/words/translation.h"

namespace Decode
{

namespace
{

using VesmarClient::Identity;

/// A text of the instrument's identity, and what people call it.
struct IdentityText {
    const char* label;
    QString Identity::*text;
};

constexpr std::array<IdentityText, 7> IdentityTexts{{
    {QT_TRANSLATE_NOOP("Decode", "device name"), &Identity::deviceName},
    {QT_TRANSLATE_NOOP("Decode", "device code"), &Identity::deviceCode},
    {QT_TRANSLATE_NOOP("Decode", "serial number"), &Identity::serialNumber},
    {QT_TRANSLATE_NOOP("Decode", "version"), &Identity::version},
    {QT_TRANSLATE_NOOP("Decode", "version code"), &Identity::versionCode},
    {QT_TRANSLATE_NOOP("Decode", "revision code"), &Identity::revisionCode},
    {QT_TRANSLATE_NOOP("Decode", "build number"), &Identity::buildNumber},
}};

} // namespace

/// The shortest decimal number that stands for this float and no other.
QString Text(float reading)
{
    if (!VesmarClient::IsPresent(reading)) {
        return QStringLiteral("-");
    }
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), reading);
    return QString::fromLatin1(buffer.data(), static_cast<int>(result.ptr - buffer.data()));
}

QString Text(const QDateTime& date)
{
    return date.isValid() ? date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : Words::tr("no valid date");
}

QString Text(Vesmar::Error error)
{
    return VesmarClient::NameAndNumber(error) + QStringLiteral(": ") + VesmarClient::Meaning(error);
}

QString Text(const Identity& identity)
{
    QString text;
    for (const IdentityText& entry : IdentityTexts) {
        text += text.isEmpty() ? QString() : QStringLiteral(", ");
        text += Words::tr(entry.label) + QLatin1Char(' ') + VesmarClient::Printable(identity.*entry.text);
    }
    return text;
}

QString Text(const Readings& readings)
{
    QString text = Text(readings.function);
    QString separator = QStringLiteral(": ");
    for (const VesmarClient::DriverReading& reading : readings.values) {
        text += separator + VesmarClient::Translated(reading.name) + QLatin1Char(' ') + Text(reading.value);
        separator = QStringLiteral(", ");
    }
    return text;
}

} // namespace Decode
