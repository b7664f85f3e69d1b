#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <QByteArray>

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

/// All settings classes as one table, so that one suite tests them all.
namespace SettingsClasses
{

using Vesmar::MeasurementSettings;

/// A field of a settings class. A double holds every value of every field.
struct Field {
    const char* name;
    double initial; ///< The default.
    double other;   ///< A value that differs from the default and from every other field's.
    std::function<double(const MeasurementSettings&)> get;
    std::function<void(MeasurementSettings&, double)> set;
};

struct Class {
    const char* name;
    int function; ///< The number of its measuring function.
    std::vector<Field> fields;
    std::function<std::unique_ptr<MeasurementSettings>()> create;
    std::function<std::unique_ptr<MeasurementSettings>(MeasurementSettings&)> copy;
};

template <typename Settings, typename Value>
Field MakeField(const char* name, double initial, double other, Value (Settings::*getter)() const,
                void (Settings::*setter)(Value))
{
    if constexpr (std::is_enum_v<Value>) {
        static_assert(std::is_same_v<std::underlying_type_t<Value>, int>);
    }
    return {name, initial, other,
            [getter](const MeasurementSettings& settings) {
                return static_cast<double>((static_cast<const Settings&>(settings).*getter)());
            },
            [setter](MeasurementSettings& settings, double value) {
                (static_cast<Settings&>(settings).*setter)(static_cast<Value>(value));
            }};
}

template <typename Settings>
Class MakeClass(const char* name, int function, std::vector<Field> fields)
{
    using Vesmar::ContinuousMeasurementSettings;
    static_assert(std::is_base_of_v<MeasurementSettings, Settings>);
    static_assert(std::has_virtual_destructor_v<Settings>);
    static_assert(std::is_constructible_v<Settings, Settings&>);
    static_assert(!std::is_constructible_v<Settings, const Settings&>);
    if constexpr (std::is_base_of_v<ContinuousMeasurementSettings, Settings>) {
        fields.push_back(MakeField("time", 5, 77, &ContinuousMeasurementSettings::GetTime,
                                   &ContinuousMeasurementSettings::SetTime));
    }
    return {name, function, std::move(fields), [] { return std::make_unique<Settings>(); },
            [](MeasurementSettings& source) {
                return std::make_unique<Settings>(static_cast<Settings&>(source));
            }};
}

/// The fields that both RCD tests have.
template <typename Settings>
std::vector<Field> RcdFields(Field special)
{
    return {MakeField("mode", -1, 101, &Settings::GetMode, &Settings::SetMode),
            MakeField("quantity", -1, 102, &Settings::GetQuantity, &Settings::SetQuantity),
            MakeField("phase", -1, 103, &Settings::GetPhase, &Settings::SetPhase),
            MakeField("current", -1, 104, &Settings::GetCurrent, &Settings::SetCurrent),
            MakeField("type", -1, 105, &Settings::GetType, &Settings::SetType),
            std::move(special)};
}

template <typename Settings>
Field ModeField(double initial)
{
    return MakeField("mode", initial, 51, &Settings::GetMode, &Settings::SetMode);
}

template <typename Settings>
Field ConfigurationField()
{
    return MakeField("configuration", 0, 52, &Settings::GetConfiguration, &Settings::SetConfiguration);
}

inline const std::vector<Class>& All()
{
    using namespace Vesmar;
    static const std::vector<Class> all = {
        MakeClass<RLNSettings>("RLN", 1, {}),
        MakeClass<RPESettings>(
            "RPE", 2,
            {MakeField("current", 0, 21, &RPESettings::GetCurrent, &RPESettings::SetCurrent),
             MakeField("method", 0, 22, &RPESettings::GetMethod, &RPESettings::SetMethod)}),
        MakeClass<RISOSettings>(
            "RISO", 3,
            {MakeField("voltage", 0, 31, &RISOSettings::GetVoltage, &RISOSettings::SetVoltage),
             ModeField<RISOSettings>(-1)}),
        MakeClass<ISUBSettings>("ISUB", 4, {}),
        MakeClass<IPESettings>("IPE", 5, {ModeField<IPESettings>(0), ConfigurationField<IPESettings>()}),
        MakeClass<IDELTASettings>("IDELTA", 6,
                                  {ModeField<IDELTASettings>(0), ConfigurationField<IDELTASettings>()}),
        MakeClass<ITSettings>("IT", 7, {ConfigurationField<ITSettings>()}),
        MakeClass<POWERSettings>("POWER", 8, {ModeField<POWERSettings>(0)}),
        MakeClass<HVTestSettings>("HVTest", 9,
                                  {ModeField<HVTestSettings>(1),
                                   MakeField("offset", 3.5, 92.5, &HVTestSettings::GetMeasurementTimeOffset,
                                             &HVTestSettings::SetMeasurementTimeOffset)}),
        MakeClass<RCDSettings>(
            "RCD", 10,
            RcdFields<RCDSettings>(MakeField("Re", 0, 106.5, &RCDSettings::GetRe, &RCDSettings::SetRe))),
        MakeClass<RCDIECSettings>(
            "RCDIEC", 11,
            RcdFields<RCDIECSettings>(MakeField("swapped", 0, 1, &RCDIECSettings::GetIsLNSwapped,
                                                &RCDIECSettings::SetIsLNSwapped))),
        MakeClass<IECSettings>("IEC", 97, {}),
    };
    return all;
}

/// The one of that name; a test that names another one ends.
template <typename Named>
const Named& Find(const std::vector<Named>& all, const QByteArray& name)
{
    for (const Named& one : all) {
        if (name == one.name) {
            return one;
        }
    }
    qFatal("%s is not in the table", name.constData());
}

} // namespace SettingsClasses
