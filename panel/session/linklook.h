#pragma once

#include "panel/session/session.h"

namespace Panel
{

/// What the line is doing, for people.
struct LinkLook {
    QString words;         ///< Two or three words.
    QString sentence;      ///< What that means.
    const char* look;      ///< For the style sheet: "good", "warning" or "danger".
    const char* titleLook; ///< The same for a title.
};

LinkLook linkLook(Session& session);

} // namespace Panel
