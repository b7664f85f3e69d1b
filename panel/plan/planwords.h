#pragma once

#include "panel/plan/planrecord.h"

namespace Panel
{

/// What has become of it, in the language of the application.
QString words(StepState state);
QString words(Verdict verdict);

/// The last readings of a step on one line; empty before there are any.
QString readingsOf(const StepRecord& step);

/// Whether the instrument is confirmed to have stopped, as a sentence.
QString stopWords(bool isConfirmed);

} // namespace Panel
