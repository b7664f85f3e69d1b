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

/// The group that lets its members read and write the device; empty where this user may do so already, and
/// where no group may that is not root's.
QString GroupToJoin(const DeviceFindings& device);

/// Why the instrument cannot be asked, and what to do. None where nothing is in the way.
std::optional<Ending> FindObstacle(const DeviceFindings& device, const DeviceHolders& holders);

/// How the examination ends, by the answers.
Ending DecideEnding(const LineRecord& line);

} // namespace Cli
