#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// Settings of the RLN measurement (single). It has no options.
class VESMAR_EXPORT RLNSettings : public MeasurementSettings
{
public:
    RLNSettings();
    RLNSettings(RLNSettings& other);
    ~RLNSettings() override;

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;
};

} // namespace Vesmar
