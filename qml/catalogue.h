#pragma once

#include <QObject>
#include <QVariantMap>

#include <VesmarClient/functions.h>
#include <VesmarClient/settings.h>

/// The catalogue of the functions, as models for QML.
class Catalogue : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList functions READ functions CONSTANT)

public:
    /// The twelve functions, each a `FunctionInfo`.
    QVariantList functions() const;
    /// The function with this identifier.
    Q_INVOKABLE VesmarClient::FunctionInfo find(const QString& identifier) const;
    /// This function, that of the mains readings included.
    Q_INVOKABLE VesmarClient::FunctionInfo find(VesmarClient::Function function) const;
    /// Everything that is wrong with these options, each a `SettingsProblem`.
    Q_INVOKABLE QVariantList validate(const QString& function, const QVariantMap& options) const;
};
