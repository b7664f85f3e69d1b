#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the protective-conductor current measurement (continuous).
class VESMAR_EXPORT IPESettings : public ContinuousMeasurementSettings
{
public:
    /// Measurement mode, by the instrument's number.
    enum class IPEMode : int { Mode1 = 1, Mode2 = 2 };

    /// Measurement configuration, by the instrument's number.
    enum class IPEConfiguration : int { Configuration1 = 1, Configuration2 = 2 };

    IPESettings();
    IPESettings(IPESettings& other);
    ~IPESettings() override;

    /// Default 0, to the instrument the same as `Mode1`.
    IPEMode GetMode() const { return _mode; }
    void SetMode(IPEMode value) { _mode = value; }

    /// Default 0, to the instrument the same as `Configuration1`.
    IPEConfiguration GetConfiguration() const { return _configuration; }
    void SetConfiguration(IPEConfiguration value) { _configuration = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    IPEMode _mode = IPEMode{};
    IPEConfiguration _configuration = IPEConfiguration{};
};

} // namespace Vesmar
