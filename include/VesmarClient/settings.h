#pragma once

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <VesmarClient/functions.h>

namespace VesmarClient
{

/// What is wrong with one option.
struct VESMARCLIENT_EXPORT SettingsProblem {
    Q_GADGET
    Q_PROPERTY(QString option MEMBER option)
    Q_PROPERTY(QString message MEMBER message)

public:
    QString option;  ///< The option's identifier as it was set; empty where the function itself is wrong.
    QString message; ///< A sentence that says what the option may be, translated.
};

/// A function and its options. Anything can be set; `validate` tells what cannot be measured.
class VESMARCLIENT_EXPORT Settings
{
    Q_GADGET
    Q_PROPERTY(QString function READ function)
    Q_PROPERTY(QVariantMap options READ options)

public:
    /// Settings of no function, with which nothing can be measured.
    Settings() = default;
    /// Settings of the function with this identifier of the catalogue, such as "rpe".
    explicit Settings(const char* function);
    /// The same, with options by their identifiers.
    explicit Settings(const QString& function, const QVariantMap& options = {});
    /// Settings of this function.
    explicit Settings(Function function);

    /// The function's identifier, as it was given.
    QString function() const { return _function; }
    /// The options that were set, by identifier.
    QVariantMap options() const { return _options; }
    /// What was set; the default of the catalogue where nothing was.
    QVariant value(const QString& option) const;

    /// Sets an option by its identifier in the catalogue. An invalid value unsets it.
    Settings& set(const char* option, const QVariant& value);
    /// The same, for an identifier that is a QString.
    Settings& set(const QString& option, const QVariant& value);

    /// Everything that is wrong; empty where nothing is.
    QVector<SettingsProblem> validate() const;
    /// Whether nothing is wrong.
    bool isValid() const { return validate().isEmpty(); }

private:
    QString _function;
    QVariantMap _options;
};

VESMARCLIENT_EXPORT bool operator==(const SettingsProblem& left, const SettingsProblem& right);
VESMARCLIENT_EXPORT bool operator!=(const SettingsProblem& left, const SettingsProblem& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const SettingsProblem& problem);
VESMARCLIENT_EXPORT bool operator==(const Settings& left, const Settings& right);
VESMARCLIENT_EXPORT bool operator!=(const Settings& left, const Settings& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Settings& settings);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::SettingsProblem)
Q_DECLARE_METATYPE(VesmarClient::Settings)
