#include "client/catalogue/rcdtest.h"

#include <algorithm>

#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

namespace VesmarClient
{

namespace
{

template <typename Mode>
const RcdMode* Find(const RcdModes& modes, Mode mode)
{
    const int number = static_cast<int>(mode);
    const auto* const found = std::find_if(modes.cbegin(), modes.cend(),
                                           [number](const RcdMode& each) { return each.number == number; });
    return found != modes.cend() ? found : nullptr;
}

} // namespace

const RcdMode* RcdModeOf(const Vesmar::MeasurementSettings& settings)
{
    if (const auto* const rcd = dynamic_cast<const Vesmar::RCDSettings*>(&settings)) {
        return Find(ModesOfRcd, rcd->GetMode());
    }
    if (const auto* const rcdIec = dynamic_cast<const Vesmar::RCDIECSettings*>(&settings)) {
        return Find(ModesOfRcdIec, rcdIec->GetMode());
    }
    return nullptr;
}

} // namespace VesmarClient
