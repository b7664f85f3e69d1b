#include "settings.h"

#include <QMap>
#include <Vesmar/hvtestsettings.h>
#include <Vesmar/ideltasettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/ipesettings.h>
#include <Vesmar/isubsettings.h>
#include <Vesmar/itsettings.h>
#include <Vesmar/powersettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/risosettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

using namespace Vesmar;

namespace
{

using Made = std::unique_ptr<MeasurementSettings>;

/// The driver works on a clone as well: settings stay the caller's.
Made Keep(MeasurementSettings& settings)
{
    return Made(settings.Clone());
}

/// A continuous function goes on until its time is over.
Made KeepShort(ContinuousMeasurementSettings& settings)
{
    settings.SetTime(3);
    return Keep(settings);
}

Made MakeRln()
{
    RLNSettings settings;
    return Keep(settings);
}

Made MakeIec()
{
    IECSettings settings;
    return Keep(settings);
}

Made MakeRpe()
{
    RPESettings settings;
    settings.SetCurrent(RPESettings::RPECurrent::Current1);
    settings.SetMethod(RPESettings::RPEMethod::Method0);
    return KeepShort(settings);
}

Made MakeRiso()
{
    RISOSettings settings;
    settings.SetVoltage(RISOSettings::RISOVoltage::Voltage0);
    return KeepShort(settings);
}

Made MakeIsub()
{
    ISUBSettings settings;
    return KeepShort(settings);
}

Made MakeIpe()
{
    IPESettings settings;
    settings.SetMode(IPESettings::IPEMode::Mode1);
    return KeepShort(settings);
}

Made MakeIdelta()
{
    IDELTASettings settings;
    settings.SetMode(IDELTASettings::IDELTAMode::Mode1);
    return KeepShort(settings);
}

Made MakeIt()
{
    ITSettings settings;
    return KeepShort(settings);
}

Made MakePower()
{
    POWERSettings settings;
    settings.SetMode(POWERSettings::POWERMode::Mode1);
    return KeepShort(settings);
}

/// A dangerous voltage is present while it runs.
Made MakeHighVoltage()
{
    HVTestSettings settings;
    settings.SetMode(HVTestSettings::HVMode::Mode1);
    return KeepShort(settings);
}

/// The settings of an RCD test have no defaults: all of them have to be set.
Made MakeRcd()
{
    RCDSettings settings;
    settings.SetMode(RCDSettings::RCDMode::UbRe);
    settings.SetQuantity(RCDSettings::RCDQuantity::Quantity0);
    settings.SetPhase(RCDSettings::RCDPhase::Phase0);
    settings.SetCurrent(RCDSettings::RCDCurrent::Current0);
    settings.SetType(RCDSettings::RCDType::Type0);
    return Keep(settings);
}

Made MakeRcdIec()
{
    RCDIECSettings settings;
    settings.SetMode(RCDIECSettings::RCDIECMode::IaTa1);
    settings.SetQuantity(RCDIECSettings::RCDIECQuantity::Quantity0);
    settings.SetPhase(RCDIECSettings::RCDIECPhase::Phase0);
    settings.SetCurrent(RCDIECSettings::RCDIECCurrent::Current0);
    settings.SetType(RCDIECSettings::RCDIECType::Type0);
    return Keep(settings);
}

} // namespace

std::unique_ptr<MeasurementSettings> MakeSettings(const QString& name)
{
    const QMap<QString, Made (*)()> functions = {
        {"rln", MakeRln},     {"iec", MakeIec},        {"rpe", MakeRpe},       {"riso", MakeRiso},
        {"isub", MakeIsub},   {"ipe", MakeIpe},        {"idelta", MakeIdelta}, {"it", MakeIt},
        {"power", MakePower}, {"hv", MakeHighVoltage}, {"rcd", MakeRcd},       {"rcd-iec", MakeRcdIec}};
    const auto make = functions.value(name);
    return make != nullptr ? make() : nullptr;
}
