#include <VesmarClient/functions.h>

#include <algorithm>
#include <tuple>
#include <utility>

#include <QDebug>

namespace VesmarClient
{

namespace
{

auto Fields(const Choice& choice)
{
    return std::tie(choice.identifier, choice.title);
}

auto Fields(const Option& option)
{
    return std::tie(option.identifier, option.title, option.kind, option.choices, option.minimum,
                    option.maximum, option.special, option.unit, option.defaultValue, option.mayStayUnset);
}

auto Fields(const ReadingInfo& reading)
{
    return std::tie(reading.identifier, reading.title, reading.unit, reading.decimals);
}

auto Fields(const FunctionInfo& function)
{
    return std::tie(function.function, function.identifier, function.title, function.kind,
                    function.isDangerous, function.options, function.readings);
}

/// Writes "NAME(identifier)": the catalogue tells the rest.
QDebug WriteIdentified(QDebug debug, const char* name, const QString& identifier)
{
    const QDebugStateSaver saver(debug);
    debug.nospace().noquote() << name << '(' << identifier << ')';
    return debug;
}

} // namespace

Option FunctionInfo::option(const QString& name) const
{
    const QVector<Option>::const_iterator found =
        std::find_if(options.cbegin(), options.cend(),
                     [&name](const Option& option) { return option.identifier == name; });
    return found != options.cend() ? *found : Option();
}

bool operator==(const Choice& left, const Choice& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const Choice& left, const Choice& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Choice& choice)
{
    return WriteIdentified(std::move(debug), "Choice", choice.identifier);
}

bool operator==(const Option& left, const Option& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const Option& left, const Option& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Option& option)
{
    return WriteIdentified(std::move(debug), "Option", option.identifier);
}

bool operator==(const ReadingInfo& left, const ReadingInfo& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const ReadingInfo& left, const ReadingInfo& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const ReadingInfo& reading)
{
    return WriteIdentified(std::move(debug), "ReadingInfo", reading.identifier);
}

bool operator==(const FunctionInfo& left, const FunctionInfo& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const FunctionInfo& left, const FunctionInfo& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const FunctionInfo& function)
{
    return WriteIdentified(std::move(debug), "FunctionInfo", function.identifier);
}

} // namespace VesmarClient
