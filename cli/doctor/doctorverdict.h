#pragma once

#include <QString>

#include <optional>

#include "cli/doctor/linerecord.h"
#include "cli/output/event.h"
#include "client/line/device.h"
#include "client/line/deviceholders.h"

namespace Cli
{

using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;

/// The serial device, as messages name it.
QString DevicePath();

/// The group whose members may read and write the device; empty if this user may do so already, or if no
/// group may but that of root.
QString GroupToJoin(const DeviceFindings& device);

/// Why the instrument cannot be asked, and what to do; none if nothing is in the way.
std::optional<Ending> FindObstacle(const DeviceFindings& device, const DeviceHolders& holders);

/// How the examination ends after these answers.
Ending DecideEnding(const LineRecord& line);

} // namespace Cli
