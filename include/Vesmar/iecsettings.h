#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// Settings of the IEC measurement (single). It has no options.
class VESMAR_EXPORT IECSettings : public MeasurementSettings
{
public:
    IECSettings();
    IECSettings(IECSettings& other);
    ~IECSettings() override;

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;
};

} // namespace Vesmar
