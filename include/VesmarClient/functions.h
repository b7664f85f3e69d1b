#pragma once

#include <QString>
#include <QVariant>
#include <QVector>

#include <VesmarClient/enumerations.h>
#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// One of the values that an option of the kind `Choice` may have.
struct VESMARCLIENT_EXPORT Choice {
    Q_GADGET
    Q_PROPERTY(QString identifier MEMBER identifier CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)

public:
    QString identifier; ///< Such as "ia-ta-1", or the instrument's number as a text: "2".
    QString title;      ///< For people, translated.
};

/// What can be set of a function.
struct VESMARCLIENT_EXPORT Option {
    Q_GADGET
    Q_PROPERTY(QString identifier MEMBER identifier CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString description MEMBER description CONSTANT)
    Q_PROPERTY(VesmarClient::OptionKind kind MEMBER kind CONSTANT)
    Q_PROPERTY(QVector<VesmarClient::Choice> choices MEMBER choices CONSTANT)
    Q_PROPERTY(double minimum MEMBER minimum CONSTANT)
    Q_PROPERTY(double maximum MEMBER maximum CONSTANT)
    Q_PROPERTY(QString special MEMBER special CONSTANT)
    Q_PROPERTY(QString unit MEMBER unit CONSTANT)
    Q_PROPERTY(QVariant defaultValue MEMBER defaultValue CONSTANT)
    Q_PROPERTY(bool mayStayUnset MEMBER mayStayUnset CONSTANT)

public:
    QString identifier;  ///< Such as "time"; the name of the command line's option without its dashes.
    QString title;       ///< For people, translated.
    QString description; ///< A line about it for people, translated.
    OptionKind kind = OptionKind::Choice; ///< What its values are.
    QVector<Choice> choices;              ///< For `Choice`.
    double minimum = 0;                   ///< For `Integer` and `Decimal`.
    double maximum = 0;                   ///< For `Integer` and `Decimal`.
    QString special; ///< A word that is allowed beside the numbers: "unlimited" for the time; usually empty.
    QString unit;    ///< "s" where the value is a time; empty where the unit is the instrument's own.
    QVariant defaultValue;    ///< What holds while it is not set; invalid where there is no default.
    bool mayStayUnset = true; ///< Whether one may measure without it.
};

/// What a function reads.
struct VESMARCLIENT_EXPORT ReadingInfo {
    Q_GADGET
    Q_PROPERTY(QString identifier MEMBER identifier CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString unit MEMBER unit CONSTANT)
    Q_PROPERTY(int decimals MEMBER decimals CONSTANT)

public:
    QString identifier; ///< Such as "power factor"; `Reading::name`.
    QString title;      ///< For people, translated.
    QString unit;       ///< Empty unless a file of units names it.
    int decimals = -1;  ///< How many decimals a file of units asks for; -1 where it asks for none.
};

/// All that is known of a function.
struct VESMARCLIENT_EXPORT FunctionInfo {
    Q_GADGET
    Q_PROPERTY(VesmarClient::Function function MEMBER function CONSTANT)
    Q_PROPERTY(QString identifier MEMBER identifier CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(VesmarClient::FunctionKind kind MEMBER kind CONSTANT)
    Q_PROPERTY(bool isDangerous MEMBER isDangerous CONSTANT)
    Q_PROPERTY(QVector<VesmarClient::Option> options MEMBER options CONSTANT)
    Q_PROPERTY(QVector<VesmarClient::ReadingInfo> readings MEMBER readings CONSTANT)

public:
    Function function = Function::None;       ///< Its number.
    QString identifier;                       ///< Such as "rpe"; the name of the command line's function.
    QString title;                            ///< For people, translated.
    FunctionKind kind = FunctionKind::Single; ///< How it is measured.
    bool isDangerous = false;                 ///< Whether a dangerous voltage is present while it runs.
    QVector<Option> options;                  ///< In the order in which they are usually shown.
    QVector<ReadingInfo> readings;            ///< In the order of a result.

    /// Whether this describes a function at all.
    bool isValid() const { return function != Function::None; }
    /// The option with this identifier; one without an identifier where there is none.
    Option option(const QString& name) const;
};

/// The catalogue of the twelve functions that can be measured, and of the mains readings. Forms, columns and
/// command lines are drawn from it. Any thread may ask it.
class VESMARCLIENT_EXPORT Functions
{
public:
    /// The file of units that is read when the catalogue is first asked, if it is there.
    static constexpr char DefaultUnitsFile[] = "/etc/vesmar/units.json";

    /// The twelve functions, in the order in which they are usually shown.
    static QVector<FunctionInfo> all();
    /// The function with this identifier; not valid where there is none.
    static FunctionInfo find(const QString& identifier);
    /// This function, `Function::Monitoring` included; not valid where there is none.
    static FunctionInfo find(Function function);

    /// Reads the units of the readings from a file in place of those known so far. A file that cannot be read
    /// or is damaged is told with its line and reason, and changes nothing.
    static Failure readUnits(const QString& path);
    /// Why the default file of units was not used; empty when it was, or is not there.
    static Failure unitsFailure();
};

VESMARCLIENT_EXPORT bool operator==(const Choice& left, const Choice& right);
VESMARCLIENT_EXPORT bool operator!=(const Choice& left, const Choice& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Choice& choice);
VESMARCLIENT_EXPORT bool operator==(const Option& left, const Option& right);
VESMARCLIENT_EXPORT bool operator!=(const Option& left, const Option& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Option& option);
VESMARCLIENT_EXPORT bool operator==(const ReadingInfo& left, const ReadingInfo& right);
VESMARCLIENT_EXPORT bool operator!=(const ReadingInfo& left, const ReadingInfo& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const ReadingInfo& reading);
VESMARCLIENT_EXPORT bool operator==(const FunctionInfo& left, const FunctionInfo& right);
VESMARCLIENT_EXPORT bool operator!=(const FunctionInfo& left, const FunctionInfo& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const FunctionInfo& function);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::Choice)
Q_DECLARE_METATYPE(VesmarClient::Option)
Q_DECLARE_METATYPE(VesmarClient::ReadingInfo)
Q_DECLARE_METATYPE(VesmarClient::FunctionInfo)
