#include "client/catalogue/driversettings.h"

#include <algorithm>
#include <type_traits>

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

#include "client/catalogue/rcdtest.h"
#include "client/catalogue/validation.h"

namespace VesmarClient
{

namespace
{

using Vesmar::ContinuousMeasurementSettings;
using Vesmar::HVTestSettings;
using Vesmar::ITSettings;
using Vesmar::MeasurementSettings;
using Vesmar::POWERSettings;
using Vesmar::RCDIECSettings;
using Vesmar::RCDSettings;
using Vesmar::RISOSettings;
using Vesmar::RPESettings;

/// An option, and the setter that it reaches.
template <typename Class, typename Value>
struct OptionSetter {
    const char* option;
    void (Class::*set)(Value);
};

template <typename Class, typename Value>
OptionSetter(const char*, void (Class::*)(Value)) -> OptionSetter<Class, Value>;

template <typename Class, typename Value>
void SetNumber(Class& driver, const Settings& settings, const OptionSetter<Class, Value>& setter)
{
    const QVariant value = settings.options().value(QLatin1String(setter.option));
    if (value.isValid()) {
        (driver.*setter.set)(static_cast<Value>(value.toString().toDouble()));
    }
}

void SetTime(ContinuousMeasurementSettings& driver, const Settings& settings)
{
    constexpr int NoTime = -1;
    const QString time = settings.value(QStringLiteral("time")).toString();
    driver.SetTime(time == QLatin1String(Unlimited) ? NoTime : time.toInt());
}

template <typename Class, typename... Value>
std::unique_ptr<Class> Created(const Settings& settings, const OptionSetter<Class, Value>&... setters)
{
    auto driver = std::make_unique<Class>();
    (SetNumber(*driver, settings, setters), ...);
    if constexpr (std::is_base_of_v<ContinuousMeasurementSettings, Class>) {
        SetTime(*driver, settings);
    }
    return driver;
}

template <typename Class>
std::unique_ptr<Class> CreatedCurrent(const Settings& settings)
{
    return Created<Class>(settings, OptionSetter{"mode", &Class::SetMode},
                          OptionSetter{"configuration", &Class::SetConfiguration});
}

template <typename Class>
std::unique_ptr<Class> CreatedRcd(const Settings& settings, const RcdModes& modes)
{
    auto driver = Created<Class>(
        settings, OptionSetter{"quantity", &Class::SetQuantity}, OptionSetter{"phase", &Class::SetPhase},
        OptionSetter{"current", &Class::SetCurrent}, OptionSetter{"type", &Class::SetType});
    const QString name = settings.value(QStringLiteral("mode")).toString();
    const auto* const mode = std::find_if(modes.cbegin(), modes.cend(), [&name](const RcdMode& each) {
        return name == QLatin1String(each.name);
    });
    driver->SetMode(static_cast<decltype(driver->GetMode())>(mode->number));
    return driver;
}

std::unique_ptr<RCDSettings> CreatedRcd(const Settings& settings)
{
    auto driver = CreatedRcd<RCDSettings>(settings, ModesOfRcd);
    SetNumber(*driver, settings, OptionSetter{"re", &RCDSettings::SetRe});
    return driver;
}

std::unique_ptr<RCDIECSettings> CreatedRcdIec(const Settings& settings)
{
    auto driver = CreatedRcd<RCDIECSettings>(settings, ModesOfRcdIec);
    driver->SetIsLNSwapped(settings.value(QStringLiteral("swap-ln")).toBool());
    return driver;
}

} // namespace

std::unique_ptr<MeasurementSettings> CreateDriverSettings(const Settings& settings)
{
    if (!settings.isValid()) {
        return nullptr;
    }
    switch (Functions::find(settings.function()).function) {
    case Function::RLN:
        return Created<Vesmar::RLNSettings>(settings);
    case Function::IEC:
        return Created<Vesmar::IECSettings>(settings);
    case Function::RPE:
        return Created<RPESettings>(settings, OptionSetter{"current", &RPESettings::SetCurrent},
                                    OptionSetter{"method", &RPESettings::SetMethod});
    case Function::RISO:
        return Created<RISOSettings>(settings, OptionSetter{"voltage", &RISOSettings::SetVoltage},
                                     OptionSetter{"mode", &RISOSettings::SetMode});
    case Function::ISUB:
        return Created<Vesmar::ISUBSettings>(settings);
    case Function::IPE:
        return CreatedCurrent<Vesmar::IPESettings>(settings);
    case Function::IDELTA:
        return CreatedCurrent<Vesmar::IDELTASettings>(settings);
    case Function::IT:
        return Created<ITSettings>(settings, OptionSetter{"configuration", &ITSettings::SetConfiguration});
    case Function::POWER:
        return Created<POWERSettings>(settings, OptionSetter{"mode", &POWERSettings::SetMode});
    case Function::HVTest:
        return Created<HVTestSettings>(
            settings, OptionSetter{"mode", &HVTestSettings::SetMode},
            OptionSetter{"time-offset", &HVTestSettings::SetMeasurementTimeOffset});
    case Function::RCD:
        return CreatedRcd(settings);
    case Function::RCDIEC:
        return CreatedRcdIec(settings);
    case Function::None:
    case Function::Monitoring:
        break;
    }
    return nullptr;
}

} // namespace VesmarClient
