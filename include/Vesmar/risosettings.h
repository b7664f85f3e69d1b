#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the insulation resistance measurement (continuous).
class VESMAR_EXPORT RISOSettings : public ContinuousMeasurementSettings
{
public:
    /// Test voltage, by the instrument's number.
    enum class RISOVoltage : int { Voltage0 = 0, Voltage1 = 1, Voltage2 = 2, Voltage3 = 3 };

    /// Measurement mode, by the instrument's number.
    enum class RISOMode : int { Mode1 = 1, Mode2 = 2, Mode4 = 4 };

    RISOSettings();
    RISOSettings(RISOSettings& other);
    ~RISOSettings() override;

    /// Default `Voltage0`. The volt value of each number is the instrument's own. Not masked: keep to 0 to 3.
    RISOVoltage GetVoltage() const { return _voltage; }
    void SetVoltage(RISOVoltage value) { _voltage = value; }

    /// Default -1: no mode is set.
    RISOMode GetMode() const { return _mode; }
    void SetMode(RISOMode value) { _mode = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RISOMode _mode = static_cast<RISOMode>(-1);
    RISOVoltage _voltage = RISOVoltage::Voltage0;
};

} // namespace Vesmar
