#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the high-voltage test (continuous). A dangerous voltage is present while it runs.
class VESMAR_EXPORT HVTestSettings : public ContinuousMeasurementSettings
{
public:
    /// The test mode, by the instrument's number.
    enum class HVMode : int { Mode1 = 1, Mode2 = 2 };

    HVTestSettings();
    HVTestSettings(HVTestSettings& other);
    ~HVTestSettings() override;

    /// The test mode. Default `Mode1`; any other number than that of `Mode2` counts as `Mode1`.
    HVMode GetMode() const { return _mode; }
    void SetMode(HVMode value) { _mode = value; }

    /// The seconds by which the first second of the measurement is lengthened while the voltage rises. They
    /// count in addition to the measurement time. Default 3.5; resolution 0.001.
    float GetMeasurementTimeOffset() const { return _measurementTimeOffset; }
    void SetMeasurementTimeOffset(float value) { _measurementTimeOffset = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    HVMode _mode = HVMode::Mode1;
    float _measurementTimeOffset = 3.5F;
};

} // namespace Vesmar
