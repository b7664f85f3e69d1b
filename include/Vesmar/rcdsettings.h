#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// Settings of the residual-current device test. A field of -1 is not set and goes out as zero bits.
class VESMAR_EXPORT RCDSettings : public MeasurementSettings
{
public:
    /// What is measured.
    enum class RCDMode : int { UbRe = 0, IaTa1 = 1, IaTa2 = 2 };

    /// By the instrument's number.
    enum class RCDQuantity : int { Quantity0 = 0, Quantity1 = 1, Quantity2 = 2, Quantity3 = 3 };

    /// By the instrument's number.
    enum class RCDPhase : int { Phase0 = 0, Phase1 = 1, Phase2 = 2, Phase3 = 3 };

    /// By the instrument's number.
    enum class RCDCurrent : int { Current0 = 0, Current1 = 1, Current2 = 2, Current3 = 3 };

    /// By the instrument's number.
    enum class RCDType : int { Type0 = 0, Type1 = 1, Type2 = 2, Type3 = 3 };

    RCDSettings();
    RCDSettings(RCDSettings& other);
    ~RCDSettings() override;

    /// Default -1. The fields are not masked: keep each to its named values.
    RCDMode GetMode() const { return _mode; }
    void SetMode(RCDMode value) { _mode = value; }

    /// Default -1.
    RCDQuantity GetQuantity() const { return _quantity; }
    void SetQuantity(RCDQuantity value) { _quantity = value; }

    /// Default -1.
    RCDPhase GetPhase() const { return _phase; }
    void SetPhase(RCDPhase value) { _phase = value; }

    /// Default -1.
    RCDCurrent GetCurrent() const { return _current; }
    void SetCurrent(RCDCurrent value) { _current = value; }

    /// Default -1.
    RCDType GetType() const { return _type; }
    void SetType(RCDType value) { _type = value; }

    /// The earth resistance measured before, handed back for the Ia/Ta tests; unit of the instrument. Default
    /// 0.
    float GetRe() const { return _re; }
    void SetRe(float value) { _re = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RCDMode _mode = static_cast<RCDMode>(-1);
    RCDQuantity _quantity = static_cast<RCDQuantity>(-1);
    RCDPhase _phase = static_cast<RCDPhase>(-1);
    RCDCurrent _current = static_cast<RCDCurrent>(-1);
    RCDType _type = static_cast<RCDType>(-1);
    float _re = 0.0F;
};

} // namespace Vesmar
