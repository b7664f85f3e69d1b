#pragma once

#include "unit/states/enginefixture.h"

constexpr int Patience = 30000; ///< Milliseconds until a condition counts as not met.

/// What an instrument in normal mode answers.
inline QByteArray AnswerInNormalMode(const QByteArray& request)
{
    return Wire::AnswerTo(request);
}
