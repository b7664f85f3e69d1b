#include <VesmarClient/settings.h>

#include <QDebug>

#include "client/catalogue/catalogue.h"
#include "client/catalogue/validation.h"

namespace VesmarClient
{

Settings::Settings(const char* function) : Settings(QString::fromUtf8(function)) {}

Settings::Settings(const QString& function, const QVariantMap& options) : _function(function)
{
    for (auto option = options.cbegin(); option != options.cend(); ++option) {
        set(option.key(), option.value());
    }
}

Settings::Settings(Function function) : _function(Functions::find(function).identifier) {}

Settings& Settings::set(const char* option, const QVariant& value)
{
    return set(QString::fromUtf8(option), value);
}

Settings& Settings::set(const QString& option, const QVariant& value)
{
    const bool isNull = value.userType() == QMetaType::Nullptr; // What QML knows as null.
    if (value.isValid() && !isNull) {
        _options.insert(option, value);
    } else {
        _options.remove(option);
    }
    return *this;
}

QVariant Settings::value(const QString& option) const
{
    const QVariant value = _options.value(option);
    return value.isValid() ? value : Functions::find(_function).option(option).defaultValue;
}

QVector<SettingsProblem> Settings::validate() const
{
    return ProblemsOf(*this);
}

bool operator==(const Settings& left, const Settings& right)
{
    return left.function() == right.function() && left.options() == right.options();
}

bool operator!=(const Settings& left, const Settings& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Settings& settings)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << "Settings(" << settings.function();
    const QVariantMap options = settings.options();
    for (auto option = options.cbegin(); option != options.cend(); ++option) {
        debug << ", " << option.key() << '=' << option.value().toString();
    }
    debug << ')';
    return debug;
}

bool operator==(const SettingsProblem& left, const SettingsProblem& right)
{
    return left.option == right.option && left.message == right.message;
}

bool operator!=(const SettingsProblem& left, const SettingsProblem& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const SettingsProblem& problem)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << "SettingsProblem(" << problem.option << ": " << problem.message << ')';
    return debug;
}

} // namespace VesmarClient
