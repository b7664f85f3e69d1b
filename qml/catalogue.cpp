#include "qml/catalogue.h"

namespace
{

template <typename Values>
QVariantList Listed(const Values& values)
{
    QVariantList list;
    for (const auto& value : values) {
        list.append(QVariant::fromValue(value));
    }
    return list;
}

} // namespace

QVariantList Catalogue::functions() const
{
    return Listed(VesmarClient::Functions::all());
}

VesmarClient::Failure Catalogue::unitsFailure() const
{
    return VesmarClient::Functions::unitsFailure();
}

VesmarClient::Failure Catalogue::readUnits(const QString& path)
{
    VesmarClient::Failure failure = VesmarClient::Functions::readUnits(path);
    if (!failure.isFailure()) {
        Q_EMIT unitsChanged();
    }
    return failure;
}

VesmarClient::FunctionInfo Catalogue::find(const QString& identifier) const
{
    return VesmarClient::Functions::find(identifier);
}

VesmarClient::FunctionInfo Catalogue::find(VesmarClient::Function function) const
{
    return VesmarClient::Functions::find(function);
}

QVariantList Catalogue::validate(const QString& function, const QVariantMap& options) const
{
    return Listed(VesmarClient::Settings(function, options).validate());
}
