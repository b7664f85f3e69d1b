#pragma once

#include <QDir>

#include "unit/states/enginefixture.h"

constexpr int Patience = 30000; ///< Milliseconds until a condition counts as not met.

/// What an instrument in normal mode answers.
inline QByteArray AnswerInNormalMode(const QByteArray& request)
{
    return Wire::AnswerTo(request);
}

/// How many threads this process has.
inline int ThreadCount()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}
