#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the substitute leakage current measurement (continuous). It has no options but the time.
class VESMAR_EXPORT ISUBSettings : public ContinuousMeasurementSettings
{
public:
    ISUBSettings();
    ISUBSettings(ISUBSettings& other);
    ~ISUBSettings() override;

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;
};

} // namespace Vesmar
