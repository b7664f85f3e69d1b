#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the protective-conductor current measurement (continuous).
class VESMAR_EXPORT IPESettings : public ContinuousMeasurementSettings
{
public:
    /// The measurement mode, by the instrument's number.
    enum class IPEMode : int { Mode1 = 1, Mode2 = 2 };

    /// The measurement configuration, by the instrument's number.
    enum class IPEConfiguration : int { Configuration1 = 1, Configuration2 = 2 };

    IPESettings();
    IPESettings(IPESettings& other);
    ~IPESettings() override;

    /// The measurement mode. Default 0; any other number than that of `Mode2` counts as `Mode1`.
    IPEMode GetMode() const { return _mode; }
    void SetMode(IPEMode value) { _mode = value; }

    /// The measurement configuration. Default 0; any other number than that of `Configuration2` counts as
    /// `Configuration1`.
    IPEConfiguration GetConfiguration() const { return _configuration; }
    void SetConfiguration(IPEConfiguration value) { _configuration = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    IPEMode _mode = IPEMode{};
    IPEConfiguration _configuration = IPEConfiguration{};
};

} // namespace Vesmar
