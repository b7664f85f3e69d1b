#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// The base of the settings of every function that runs for a time.
class VESMAR_EXPORT ContinuousMeasurementSettings : public MeasurementSettings
{
public:
    /// The parent is ignored.
    ContinuousMeasurementSettings(MeasurementType measurementType, QObject* parent);
    ContinuousMeasurementSettings(ContinuousMeasurementSettings& other);
    ~ContinuousMeasurementSettings() override;

    /// The measurement time in seconds after which the library stops the measurement; -1: not set, the
    /// measurement runs until it is aborted. Default 5.
    int GetTime() const { return _time; }
    void SetTime(int time) { _time = time; }

    MeasurementSettings* Clone() override;

protected:
    /// The second byte of every continuous function's prepare payload: whether a time is set, never the time
    /// itself.
    int TimeFlag() const;

private:
    int _time = 5;
};

} // namespace Vesmar
