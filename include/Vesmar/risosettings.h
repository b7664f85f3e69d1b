#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the insulation resistance measurement (continuous).
class VESMAR_EXPORT RISOSettings : public ContinuousMeasurementSettings
{
public:
    /// The test voltage, by the instrument's number; the volts are known to the instrument alone.
    enum class RISOVoltage : int { Voltage0 = 0, Voltage1 = 1, Voltage2 = 2, Voltage3 = 3 };

    /// The measurement mode, by the instrument's number.
    enum class RISOMode : int { Mode1 = 1, Mode2 = 2, Mode4 = 4 };

    RISOSettings();
    RISOSettings(RISOSettings& other);
    ~RISOSettings() override;

    /// The test voltage. Default `Voltage0`. A number above 3 would change the mode that is sent.
    RISOVoltage GetVoltage() const { return _voltage; }
    void SetVoltage(RISOVoltage value) { _voltage = value; }

    /// The measurement mode. Default -1: no mode is set.
    RISOMode GetMode() const { return _mode; }
    void SetMode(RISOMode value) { _mode = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RISOMode _mode = static_cast<RISOMode>(-1);
    RISOVoltage _voltage = RISOVoltage::Voltage0;
};

} // namespace Vesmar
