#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the differential current measurement (continuous).
class VESMAR_EXPORT IDELTASettings : public ContinuousMeasurementSettings
{
public:
    /// The measurement mode, by the instrument's number.
    enum class IDELTAMode : int { Mode1 = 1, Mode2 = 2 };

    /// The measurement configuration, by the instrument's number.
    enum class IDELTAConfiguration : int { Configuration1 = 1, Configuration2 = 2 };

    IDELTASettings();
    IDELTASettings(IDELTASettings& other);
    ~IDELTASettings() override;

    /// The measurement mode. Default 0; any other number than that of `Mode2` counts as `Mode1`.
    IDELTAMode GetMode() const { return _mode; }
    void SetMode(IDELTAMode value) { _mode = value; }

    /// The measurement configuration. Default 0; any other number than that of `Configuration2` counts as
    /// `Configuration1`.
    IDELTAConfiguration GetConfiguration() const { return _configuration; }
    void SetConfiguration(IDELTAConfiguration value) { _configuration = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    IDELTAMode _mode = IDELTAMode{};
    IDELTAConfiguration _configuration = IDELTAConfiguration{};
};

} // namespace Vesmar
