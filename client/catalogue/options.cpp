#include "client/catalogue/options.h"

#include "client/catalogue/rcdtest.h"
#include "client/catalogue/validation.h"
#include "client/words/translation.h"

namespace VesmarClient::Options
{

namespace
{

constexpr double LongestTime = 86400; // In seconds, as all times here.
constexpr double LongestTimeOffset = 600;
constexpr double ShortestCleanUp = 0.1;
constexpr double HighestResistance = 1e6;

Option Described(const char* identifier, OptionKind kind, const char* title, const char* description)
{
    Option option;
    option.identifier = QLatin1String(identifier);
    option.kind = kind;
    option.title = Translated(title);
    option.description = Translated(description);
    return option;
}

/// One of the instrument's numbers. Without a default, the driver sends a value that no number stands for.
Option Number(const char* identifier, const char* title, const QVector<int>& numbers,
              const QVariant& defaultValue = {})
{
    Option option = Described(identifier, OptionKind::Choice, title,
                              QT_TRANSLATE_NOOP("VesmarClient", "The instrument's number"));
    for (const int number : numbers) {
        option.choices.append({QString::number(number), QString::number(number)});
    }
    option.defaultValue = defaultValue;
    return option;
}

Option Flag(const char* identifier, const char* title, const char* description)
{
    Option option = Described(identifier, OptionKind::Flag, title, description);
    option.defaultValue = false;
    return option;
}

Option Ranged(Option option, double minimum, double maximum, const QVariant& defaultValue)
{
    option.minimum = minimum;
    option.maximum = maximum;
    option.defaultValue = defaultValue;
    return option;
}

Option Seconds(const Option& option, double minimum, double maximum, const QVariant& defaultValue)
{
    Option seconds = Ranged(option, minimum, maximum, defaultValue);
    seconds.unit = QStringLiteral("s");
    return seconds;
}

/// Without a mode, the driver would do nothing.
Option RequiredMode(const RcdModes& modes)
{
    Option option = Described("mode", OptionKind::Choice, QT_TRANSLATE_NOOP("VesmarClient", "Mode"),
                              QT_TRANSLATE_NOOP("VesmarClient", "What is done"));
    for (const RcdMode& mode : modes) {
        option.choices.append({QLatin1String(mode.name), Translated(mode.title)});
    }
    option.mayStayUnset = false;
    return option;
}

/// The options that both tests of residual-current devices have.
QVector<Option> OfBothRcd(const RcdModes& modes)
{
    return {RequiredMode(modes),
            Number("quantity", QT_TRANSLATE_NOOP("VesmarClient", "Quantity"), {0, 1, 2, 3}),
            Number("phase", QT_TRANSLATE_NOOP("VesmarClient", "Phase"), {0, 1, 2, 3}),
            Number("current", QT_TRANSLATE_NOOP("VesmarClient", "Current"), {0, 1, 2, 3}),
            Number("type", QT_TRANSLATE_NOOP("VesmarClient", "Type"), {0, 1, 2, 3})};
}

} // namespace

Option Time()
{
    Option option = Described("time", OptionKind::Integer, QT_TRANSLATE_NOOP("VesmarClient", "Time"),
                              QT_TRANSLATE_NOOP("VesmarClient", "How long to measure"));
    option.special = QLatin1String(Unlimited);
    return Seconds(option, 1, LongestTime, 5);
}

QVector<Option> None()
{
    return {};
}

QVector<Option> Rpe()
{
    return {
        Number("current", QT_TRANSLATE_NOOP("VesmarClient", "Current"), {0, 1, 2, 3}, QStringLiteral("0")),
        Number("method", QT_TRANSLATE_NOOP("VesmarClient", "Method"), {0, 1, 2, 3}, QStringLiteral("0"))};
}

QVector<Option> Riso()
{
    return {
        Number("voltage", QT_TRANSLATE_NOOP("VesmarClient", "Voltage"), {0, 1, 2, 3}, QStringLiteral("0")),
        Number("mode", QT_TRANSLATE_NOOP("VesmarClient", "Mode"), {1, 2, 4})};
}

QVector<Option> ModeAndConfiguration()
{
    return Mode() + Configuration();
}

QVector<Option> Configuration()
{
    return {Number("configuration", QT_TRANSLATE_NOOP("VesmarClient", "Configuration"), {1, 2})};
}

QVector<Option> Mode()
{
    return {Number("mode", QT_TRANSLATE_NOOP("VesmarClient", "Mode"), {1, 2})};
}

QVector<Option> HvTest()
{
    const Option timeOffset =
        Described("time-offset", OptionKind::Decimal, QT_TRANSLATE_NOOP("VesmarClient", "Time offset"),
                  QT_TRANSLATE_NOOP("VesmarClient", "Added to the time for the voltage to rise"));
    return {Number("mode", QT_TRANSLATE_NOOP("VesmarClient", "Mode"), {1, 2}, QStringLiteral("1")),
            Seconds(timeOffset, 0, LongestTimeOffset, 3.5)};
}

QVector<Option> Rcd()
{
    const Option resistance =
        Described("re", OptionKind::Decimal, QT_TRANSLATE_NOOP("VesmarClient", "Re"),
                  QT_TRANSLATE_NOOP(
                      "VesmarClient",
                      "For ia-ta-1 and ia-ta-2: the Re that ub-re has given, in the instrument's own unit"));
    return OfBothRcd(ModesOfRcd) +
           QVector<Option>{Ranged(resistance, 0, HighestResistance, 0),
                           Flag("with-ub-re", QT_TRANSLATE_NOOP("VesmarClient", "Measure Re first"),
                                QT_TRANSLATE_NOOP("VesmarClient", "For ia-ta-1 and ia-ta-2: run a ub-re test "
                                                                  "first, and take its Re"))};
}

QVector<Option> RcdIec()
{
    const Option cleanUp =
        Described("clean-up-time", OptionKind::Decimal, QT_TRANSLATE_NOOP("VesmarClient", "Clean-up time"),
                  QT_TRANSLATE_NOOP("VesmarClient", "How long the instrument is left alone for a clean-up"));
    return OfBothRcd(ModesOfRcdIec) +
           QVector<Option>{Flag("swap-ln", QT_TRANSLATE_NOOP("VesmarClient", "Swap L and N"),
                                QT_TRANSLATE_NOOP("VesmarClient", "Swap line and neutral")),
                           Seconds(cleanUp, ShortestCleanUp, LongestTime, 5)};
}

} // namespace VesmarClient::Options
