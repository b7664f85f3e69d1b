#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

#include <VesmarClient/enumerations.h>

namespace VesmarClient
{

/// One value that a function has read.
struct VESMARCLIENT_EXPORT Reading {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(double value MEMBER value)
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(QString unit MEMBER unit)
    Q_PROPERTY(int decimals MEMBER decimals)
    Q_PROPERTY(QString text READ text)

public:
    QString name;           ///< The reading's identifier in the catalogue, such as "resistance".
    double value = 0;       ///< In the instrument's own unit, which is known only from a file of units.
    bool isPresent = false; ///< False where the instrument has no value; `value` is 0 then.
    QString unit;           ///< Empty unless a file of units names it.
    int decimals = -1;      ///< How many decimals a file of units asks for; -1 where it asks for none.

    /// The value for people, with its unit and decimals where a file of units names them: "0.12", "230.1 V".
    /// A dash where there is none.
    QString text() const;
};

/// What a function has read at one moment.
class VESMARCLIENT_EXPORT Result
{
    Q_GADGET
    Q_PROPERTY(VesmarClient::Function function READ function)
    Q_PROPERTY(QVector<VesmarClient::Reading> readings READ readings)
    Q_PROPERTY(QDateTime when READ when)
    Q_PROPERTY(bool isEmpty READ isEmpty)

public:
    Result() = default;
    /// A result of a function, with readings in the order of the catalogue.
    Result(Function function, const QVector<Reading>& readings, const QDateTime& when);

    /// What was measured.
    Function function() const { return _function; }
    /// In the order of the catalogue.
    const QVector<Reading>& readings() const { return _readings; }
    /// The reading with this identifier; one that is not present where there is none.
    Q_INVOKABLE VesmarClient::Reading reading(const QString& name) const;
    /// When the driver has reported it, by this computer's clock, in local time.
    QDateTime when() const { return _when; }
    /// Whether nothing has been read yet.
    bool isEmpty() const { return _readings.isEmpty(); }

private:
    Function _function = Function::None;
    QVector<Reading> _readings;
    QDateTime _when;
};

VESMARCLIENT_EXPORT bool operator==(const Reading& left, const Reading& right);
VESMARCLIENT_EXPORT bool operator!=(const Reading& left, const Reading& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Reading& reading);
VESMARCLIENT_EXPORT bool operator==(const Result& left, const Result& right);
VESMARCLIENT_EXPORT bool operator!=(const Result& left, const Result& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Result& result);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::Reading)
Q_DECLARE_METATYPE(VesmarClient::Result)
