#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// The base of the settings of every continuous function, that is, of those that run for a time.
class VESMAR_EXPORT ContinuousMeasurementSettings : public MeasurementSettings
{
public:
    /// The parent is ignored.
    ContinuousMeasurementSettings(MeasurementType measurementType, QObject* parent);
    ContinuousMeasurementSettings(ContinuousMeasurementSettings& other);
    ~ContinuousMeasurementSettings() override;

    /// The measurement time in whole seconds, after which the library stops the measurement. Default 5. With
    /// -1 no time is set, and the measurement runs until it is aborted; any other negative number does the
    /// same. 0 ends it after one second, like 1.
    int GetTime() const { return _time; }
    void SetTime(int time) { _time = time; }

    MeasurementSettings* Clone() override;

protected:
    /// The second byte of the prepare payload: 0xFF when the time is -1, otherwise 0x05. The time itself is
    /// never sent.
    int TimeFlag() const;

private:
    int _time = 5;
};

} // namespace Vesmar
