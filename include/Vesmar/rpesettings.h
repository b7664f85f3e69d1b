#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the protective-earth resistance measurement (continuous).
class VESMAR_EXPORT RPESettings : public ContinuousMeasurementSettings
{
public:
    /// Test current, by the instrument's number; 0 and 1 are alike to the instrument.
    enum class RPECurrent : int { Current0 = 0, Current1 = 1, Current2 = 2, Current3 = 3 };

    /// Test method, by the instrument's number.
    enum class RPEMethod : int { Method0 = 0, Method1 = 1, Method2 = 2, Method3 = 3 };

    RPESettings();
    RPESettings(RPESettings& other);
    ~RPESettings() override;

    /// Default `Current0`. The ampere value of each number is the instrument's own.
    RPECurrent GetCurrent() const { return _current; }
    void SetCurrent(RPECurrent value) { _current = value; }

    /// Default `Method0`, with which the current plays no part.
    RPEMethod GetMethod() const { return _method; }
    void SetMethod(RPEMethod value) { _method = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RPECurrent _current = RPECurrent::Current0;
    RPEMethod _method = RPEMethod::Method0;
};

} // namespace Vesmar
