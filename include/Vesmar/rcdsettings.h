#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// Settings of the residual-current device test. An option of -1 is not set and is sent as 0. An option above
/// 3 would change the others that are sent.
class VESMAR_EXPORT RCDSettings : public MeasurementSettings
{
public:
    /// What is measured.
    enum class RCDMode : int {
        UbRe = 0,  ///< The earth resistance Re.
        IaTa1 = 1, ///< The first of the instrument's two tests of Ia and Ta.
        IaTa2 = 2  ///< The second of the instrument's two tests of Ia and Ta.
    };

    /// The quantity, by the instrument's number.
    enum class RCDQuantity : int { Quantity0 = 0, Quantity1 = 1, Quantity2 = 2, Quantity3 = 3 };

    /// The phase, by the instrument's number.
    enum class RCDPhase : int { Phase0 = 0, Phase1 = 1, Phase2 = 2, Phase3 = 3 };

    /// The current, by the instrument's number.
    enum class RCDCurrent : int { Current0 = 0, Current1 = 1, Current2 = 2, Current3 = 3 };

    /// The type, by the instrument's number.
    enum class RCDType : int { Type0 = 0, Type1 = 1, Type2 = 2, Type3 = 3 };

    RCDSettings();
    RCDSettings(RCDSettings& other);
    ~RCDSettings() override;

    /// What is measured. Default -1: nothing, and the test is never started.
    RCDMode GetMode() const { return _mode; }
    void SetMode(RCDMode value) { _mode = value; }

    /// The quantity. Default -1.
    RCDQuantity GetQuantity() const { return _quantity; }
    void SetQuantity(RCDQuantity value) { _quantity = value; }

    /// The phase. Default -1.
    RCDPhase GetPhase() const { return _phase; }
    void SetPhase(RCDPhase value) { _phase = value; }

    /// The current. Default -1.
    RCDCurrent GetCurrent() const { return _current; }
    void SetCurrent(RCDCurrent value) { _current = value; }

    /// The type. Default -1.
    RCDType GetType() const { return _type; }
    void SetType(RCDType value) { _type = value; }

    /// The earth resistance that a Ub/Re test has measured (`RCDResults::_re`), which is handed back to the
    /// instrument for the Ia/Ta tests. The unit is the instrument's own and unknown. Default 0; not used by
    /// the Ub/Re test.
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
