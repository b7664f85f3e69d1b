#include "client/catalogue/validation.h"

#include <algorithm>

#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

template <typename Identified>
QString Listed(const QVector<Identified>& all)
{
    QStringList identifiers;
    for (const Identified& each : all) {
        identifiers.append(each.identifier);
    }
    return identifiers.join(QStringLiteral(", "));
}

bool IsInRange(const Option& option, double number)
{
    return number >= option.minimum && number <= option.maximum;
}

bool IsWholeInRange(const Option& option, const QString& text)
{
    bool isWhole = false;
    const int number = text.toInt(&isWhole);
    return isWhole && IsInRange(option, number);
}

bool IsDecimalInRange(const Option& option, const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && IsInRange(option, number);
}

/// A number and the text of it mean the same.
bool Suits(const Option& option, const QString& text)
{
    switch (option.kind) {
    case OptionKind::Choice:
        return std::any_of(option.choices.cbegin(), option.choices.cend(),
                           [&text](const Choice& choice) { return choice.identifier == text; });
    case OptionKind::Integer:
        return IsWholeInRange(option, text) || (text == option.special && !text.isEmpty());
    case OptionKind::Decimal:
        return IsDecimalInRange(option, text);
    case OptionKind::Flag:
        return text == QLatin1String("true") || text == QLatin1String("false");
    }
    return false;
}

QString RangeOf(const Option& option)
{
    const QString unit = option.unit.isEmpty() ? QString() : QLatin1Char(' ') + option.unit;
    const QString range =
        Translated(QT_TRANSLATE_NOOP("VesmarClient", "from %1 to %2"))
            .arg(QString::number(option.minimum, 'g', 10), QString::number(option.maximum, 'g', 10) + unit);
    return option.special.isEmpty()
               ? range
               : Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1, or \"%2\"")).arg(range, option.special);
}

/// What the option may be, as a sentence.
QString Allowed(const Option& option)
{
    switch (option.kind) {
    case OptionKind::Choice:
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "It is one of %1.")).arg(Listed(option.choices));
    case OptionKind::Integer:
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "It is a whole number %1.")).arg(RangeOf(option));
    case OptionKind::Decimal:
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "It is a number %1.")).arg(RangeOf(option));
    case OptionKind::Flag:
        break;
    }
    return Translated(QT_TRANSLATE_NOOP("VesmarClient", "It is true or false."));
}

QString UnknownFunction(const QString& identifier)
{
    return Translated(QT_TRANSLATE_NOOP("VesmarClient", "There is no function \"%1\"; it is one of %2."))
        .arg(identifier, Listed(Functions::all()));
}

QString UnknownOption(const FunctionInfo& function)
{
    return function.options.isEmpty()
               ? Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1 has no options.")).arg(function.identifier)
               : Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1 has no such option; it has %2."))
                     .arg(function.identifier, Listed(function.options));
}

/// Re comes from one place, and no test is given the Re that it measures itself.
QVector<SettingsProblem> ProblemsOfRe(const Settings& settings)
{
    const QString given = QStringLiteral("re");
    const QString measured = QStringLiteral("with-ub-re");
    const bool isGiven = settings.options().contains(given);
    const bool isMeasured = settings.value(measured).toBool();
    QVector<SettingsProblem> problems;
    if (settings.value(QStringLiteral("mode")).toString() == QLatin1String("ub-re") &&
        (isGiven || isMeasured)) {
        problems.append({isGiven ? given : measured,
                         Translated(QT_TRANSLATE_NOOP(
                             "VesmarClient", "The test ub-re measures Re itself; leave this option out."))});
    }
    if (isGiven && isMeasured) {
        problems.append({given, Translated(QT_TRANSLATE_NOOP(
                                    "VesmarClient", "Not together with with-ub-re, which measures Re."))});
    }
    return problems;
}

QVector<SettingsProblem> MissingOptions(const FunctionInfo& function, const QVariantMap& given)
{
    QVector<SettingsProblem> problems;
    for (const Option& option : function.options) {
        if (!option.mayStayUnset && !given.contains(option.identifier)) {
            problems.append(
                {option.identifier, Translated(QT_TRANSLATE_NOOP("VesmarClient", "It has to be given.")) +
                                        QLatin1Char(' ') + Allowed(option)});
        }
    }
    return problems;
}

} // namespace

QVector<SettingsProblem> ProblemsOf(const Settings& settings)
{
    const FunctionInfo function = Functions::find(settings.function());
    if (!function.isValid()) {
        return {{QString(), UnknownFunction(settings.function())}};
    }
    const QVariantMap given = settings.options();
    QVector<SettingsProblem> problems = MissingOptions(function, given);
    for (auto each = given.cbegin(); each != given.cend(); ++each) {
        const Option option = function.option(each.key());
        if (option.identifier.isEmpty()) {
            problems.append({each.key(), UnknownOption(function)});
        } else if (!Suits(option, each.value().toString())) {
            problems.append({each.key(), Allowed(option)});
        }
    }
    return problems + ProblemsOfRe(settings);
}

} // namespace VesmarClient
