#include <VesmarClient/settings.h>

#include <QDebug>

namespace VesmarClient
{

Settings::Settings(const char* function) : Settings(QString::fromUtf8(function)) {}

Settings::Settings(const QString& function, const QVariantMap& options)
    : _function(function), _options(options)
{
}

Settings& Settings::set(const char* option, const QVariant& value)
{
    return set(QString::fromUtf8(option), value);
}

Settings& Settings::set(const QString& option, const QVariant& value)
{
    if (value.isValid()) {
        _options.insert(option, value);
    } else {
        _options.remove(option);
    }
    return *this;
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
