#pragma once

#include <array>

#include <QCoreApplication>

#include <Vesmar/measurementsettings.h>

namespace VesmarClient
{

/// The tests of a residual-current device that the library leads in ways of their own.
enum class RcdTest { UbRe, IaTa, IecIaTa, CleanUp };

/// A mode of such a test.
struct RcdMode {
    const char* name;  ///< As people call it, such as "ub-re".
    const char* title; ///< The same for a form; it can be translated.
    int number;        ///< The mode's number in the settings.
    RcdTest test;
};

using RcdModes = std::array<RcdMode, 3>;

constexpr RcdModes ModesOfRcd{
    {{"ub-re", QT_TRANSLATE_NOOP("VesmarClient", "Ub/Re"), 0, RcdTest::UbRe},
     {"ia-ta-1", QT_TRANSLATE_NOOP("VesmarClient", "Ia/Ta, first test"), 1, RcdTest::IaTa},
     {"ia-ta-2", QT_TRANSLATE_NOOP("VesmarClient", "Ia/Ta, second test"), 2, RcdTest::IaTa}}};
constexpr RcdModes ModesOfRcdIec{
    {{"ia-ta-1", QT_TRANSLATE_NOOP("VesmarClient", "Ia/Ta, first test"), 1, RcdTest::IecIaTa},
     {"ia-ta-2", QT_TRANSLATE_NOOP("VesmarClient", "Ia/Ta, second test"), 2, RcdTest::IecIaTa},
     {"clean-up", QT_TRANSLATE_NOOP("VesmarClient", "Clean-up"), 3, RcdTest::CleanUp}}};

/// The mode of the settings. Null where none is set, and for the settings of any other function.
const RcdMode* RcdModeOf(const Vesmar::MeasurementSettings& settings);

} // namespace VesmarClient
