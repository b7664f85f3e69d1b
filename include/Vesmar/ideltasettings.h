#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the differential current measurement (continuous).
class VESMAR_EXPORT IDELTASettings : public ContinuousMeasurementSettings
{
public:
    /// Measurement mode, by the instrument's number.
    enum class IDELTAMode : int { Mode1 = 1, Mode2 = 2 };

    /// Measurement configuration, by the instrument's number.
    enum class IDELTAConfiguration : int { Configuration1 = 1, Configuration2 = 2 };

    IDELTASettings();
    IDELTASettings(IDELTASettings& other);
    ~IDELTASettings() override;

    /// Default 0, to the instrument the same as `Mode1`.
    IDELTAMode GetMode() const { return _mode; }
    void SetMode(IDELTAMode value) { _mode = value; }

    /// Default 0, to the instrument the same as `Configuration1`.
    IDELTAConfiguration GetConfiguration() const { return _configuration; }
    void SetConfiguration(IDELTAConfiguration value) { _configuration = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    IDELTAMode _mode = IDELTAMode{};
    IDELTAConfiguration _configuration = IDELTAConfiguration{};
};

} // namespace Vesmar
