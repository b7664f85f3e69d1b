#pragma once

#include <Vesmar/continuousmeasurementsettings.h>

namespace Vesmar
{

/// Settings of the protective-earth resistance measurement (continuous).
class VESMAR_EXPORT RPESettings : public ContinuousMeasurementSettings
{
public:
    /// The test current, by the instrument's number; the amperes are known to the instrument alone.
    /// `Current0` and `Current1` are sent alike.
    enum class RPECurrent : int { Current0 = 0, Current1 = 1, Current2 = 2, Current3 = 3 };

    /// The test method, by the instrument's number.
    enum class RPEMethod : int { Method0 = 0, Method1 = 1, Method2 = 2, Method3 = 3 };

    RPESettings();
    RPESettings(RPESettings& other);
    ~RPESettings() override;

    /// The test current. Default `Current0`; `Method0` does not use it.
    RPECurrent GetCurrent() const { return _current; }
    void SetCurrent(RPECurrent value) { _current = value; }

    /// The test method. Default `Method0`; a number that has no name counts as `Method1`.
    RPEMethod GetMethod() const { return _method; }
    void SetMethod(RPEMethod value) { _method = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RPECurrent _current = RPECurrent::Current0;
    RPEMethod _method = RPEMethod::Method0;
};

} // namespace Vesmar
