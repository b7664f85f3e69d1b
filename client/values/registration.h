#pragma once

namespace VesmarClient
{

/// Makes every value and enumeration of the client known to Qt's meta-types, so that queued connections carry
/// them, and a `QVariant` compares and prints them. Any thread may call it, more than once.
void RegisterTypes();

} // namespace VesmarClient
