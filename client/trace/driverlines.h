#pragma once

#include <QtGlobal>

namespace VesmarClient
{

/// Whether a message is a line of the driver's trace: a warning of the category `default` that comes from one
/// of the driver's own functions. The code of a check of the object under test is a debug message of the
/// kind.
bool IsDriverLine(QtMsgType type, const QMessageLogContext& context);

} // namespace VesmarClient
