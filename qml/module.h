#pragma once

#include <QQmlExtensionPlugin>

/// `import Vesmar 1.0`: the instrument, its jobs and values, the enumerations and the catalogue.
class VesmarModule : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char* uri) override;
};
