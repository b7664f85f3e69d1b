#pragma once

#include <QObject>
#include <QVariantMap>

#include <VesmarClient/functions.h>
#include <VesmarClient/settings.h>

/// The catalogue of the functions, as models for QML.
class Catalogue : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList functions READ functions NOTIFY unitsChanged)
    Q_PROPERTY(VesmarClient::Failure unitsFailure READ unitsFailure CONSTANT)

public:
    /// The twelve functions, each a `FunctionInfo`.
    QVariantList functions() const;
    /// Why the default file of units was not used; empty when it was, or is not there.
    VesmarClient::Failure unitsFailure() const;
    /// Reads the units of the readings from the file at this path. Empty when that was done.
    Q_INVOKABLE VesmarClient::Failure readUnits(const QString& path);
    /// The function with this identifier.
    Q_INVOKABLE VesmarClient::FunctionInfo find(const QString& identifier) const;
    /// This function, that of the mains readings included.
    Q_INVOKABLE VesmarClient::FunctionInfo find(VesmarClient::Function function) const;
    /// Everything that is wrong with these options, each a `SettingsProblem`.
    Q_INVOKABLE QVariantList validate(const QString& function, const QVariantMap& options) const;

Q_SIGNALS:
    void unitsChanged();
};
