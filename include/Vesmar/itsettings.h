#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the touch current measurement (continuous).
class VESMAR_EXPORT ITSettings : public ContinuousMeasurementSettings
{
public:
    /// The measurement configuration, by the instrument's number.
    enum class ITConfiguration : int { Configuration1 = 1, Configuration2 = 2 };

    ITSettings();
    ITSettings(ITSettings& other);
    ~ITSettings() override;

    /// The measurement configuration. Default 0; any other number than that of `Configuration2` counts as
    /// `Configuration1`.
    ITConfiguration GetConfiguration() const { return _configuration; }
    void SetConfiguration(ITConfiguration value) { _configuration = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    ITConfiguration _configuration = ITConfiguration{};
};

} // namespace Vesmar
