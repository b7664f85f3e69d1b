#pragma once

#include <QString>
#include <QStringList>

#include <VesmarClient/enumerations.h>

namespace VesmarClient
{

/// Why something was not done, in words for people. The texts are translated with
/// `QCoreApplication::translate`, context "VesmarClient".
struct VESMARCLIENT_EXPORT Failure {
    Q_GADGET
    Q_PROPERTY(VesmarClient::Error code MEMBER code)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString whatHappened MEMBER whatHappened)
    Q_PROPERTY(QStringList causes MEMBER causes)
    Q_PROPERTY(QString nextStep MEMBER nextStep)
    Q_PROPERTY(bool isFailure READ isFailure)

public:
    Error code =
        Error::NoErrors;  ///< The error with which the driver reports it; `NoErrors` where it has none.
    QString name;         ///< A word for programs that never changes: "device-missing", "PrepareFailed".
    QString whatHappened; ///< A sentence.
    QStringList causes;   ///< Likely ones, the likeliest first; may be empty.
    QString nextStep;     ///< What to do about it.

    /// False for a failure that is empty, where nothing has failed.
    bool isFailure() const { return !name.isEmpty(); }

    /// The failure that an error of the driver is. Empty for `Error::NoErrors`.
    static Failure ofError(Error error);
};

VESMARCLIENT_EXPORT bool operator==(const Failure& left, const Failure& right);
VESMARCLIENT_EXPORT bool operator!=(const Failure& left, const Failure& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Failure& failure);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::Failure)
