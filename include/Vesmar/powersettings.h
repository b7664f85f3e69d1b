#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the power measurement (continuous).
class VESMAR_EXPORT POWERSettings : public ContinuousMeasurementSettings
{
public:
    /// The measurement mode, by the instrument's number.
    enum class POWERMode : int { Mode1 = 1, Mode2 = 2 };

    POWERSettings();
    POWERSettings(POWERSettings& other);
    ~POWERSettings() override;

    /// The measurement mode. Default 0; any other number than that of `Mode2` counts as `Mode1`.
    POWERMode GetMode() const { return _mode; }
    void SetMode(POWERMode value) { _mode = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    POWERMode _mode = POWERMode{};
};

} // namespace Vesmar
