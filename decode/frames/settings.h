#pragma once

#include <QByteArray>

#include "decode/frames/words.h"

namespace Decode
{

/// The function and the settings that a prepare payload asks for. Where several settings make the same
/// payload, the words tell all of them.
FrameWords WordsOfSettings(const QByteArray& bytes);

} // namespace Decode
