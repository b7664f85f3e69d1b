#pragma once

#include <Vesmar/measurementsettings.h>

namespace Vesmar
{

/// Settings of the IEC variant of the RCD test. An option of -1 is not set and is sent as 0. An option above
/// 3 would change the others that are sent.
class VESMAR_EXPORT RCDIECSettings : public MeasurementSettings
{
public:
    /// What is done.
    enum class RCDIECMode : int {
        IaTa1 = 1,  ///< The first of the instrument's two tests of Ia and Ta.
        IaTa2 = 2,  ///< The second of the instrument's two tests of Ia and Ta.
        CleanUp = 3 ///< The instrument's clean-up. It has no readings, and nobody tells when it is over.
    };

    /// The quantity, by the instrument's number.
    enum class RCDIECQuantity : int { Quantity0 = 0, Quantity1 = 1, Quantity2 = 2, Quantity3 = 3 };

    /// The phase, by the instrument's number.
    enum class RCDIECPhase : int { Phase0 = 0, Phase1 = 1, Phase2 = 2, Phase3 = 3 };

    /// The current, by the instrument's number.
    enum class RCDIECCurrent : int { Current0 = 0, Current1 = 1, Current2 = 2, Current3 = 3 };

    /// The type, by the instrument's number.
    enum class RCDIECType : int { Type0 = 0, Type1 = 1, Type2 = 2, Type3 = 3 };

    RCDIECSettings();
    RCDIECSettings(RCDIECSettings& other);
    ~RCDIECSettings() override;

    /// What is done. Default -1: nothing, and the test is never started.
    RCDIECMode GetMode() const { return _mode; }
    void SetMode(RCDIECMode value) { _mode = value; }

    /// The quantity. Default -1.
    RCDIECQuantity GetQuantity() const { return _quantity; }
    void SetQuantity(RCDIECQuantity value) { _quantity = value; }

    /// The phase. Default -1.
    RCDIECPhase GetPhase() const { return _phase; }
    void SetPhase(RCDIECPhase value) { _phase = value; }

    /// The current. Default -1.
    RCDIECCurrent GetCurrent() const { return _current; }
    void SetCurrent(RCDIECCurrent value) { _current = value; }

    /// The type. Default -1.
    RCDIECType GetType() const { return _type; }
    void SetType(RCDIECType value) { _type = value; }

    /// Whether line and neutral are swapped. Default false. It is sent in the higher bit of the type: a swap
    /// with type 0 or 1 is sent like type 2 or 3 without one.
    bool GetIsLNSwapped() const { return _isLNSwapped; }
    void SetIsLNSwapped(bool value) { _isLNSwapped = value; }

    QByteArray* CreateMeasurementFrame() override;
    MeasurementSettings* Clone() override;

private:
    RCDIECMode _mode = static_cast<RCDIECMode>(-1);
    RCDIECQuantity _quantity = static_cast<RCDIECQuantity>(-1);
    RCDIECPhase _phase = static_cast<RCDIECPhase>(-1);
    RCDIECCurrent _current = static_cast<RCDIECCurrent>(-1);
    RCDIECType _type = static_cast<RCDIECType>(-1);
    bool _isLNSwapped = false;
};

} // namespace Vesmar
