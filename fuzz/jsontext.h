#pragma once

#include <QByteArray>

#include "fuzz/finding.h"
#include "simulator/text/jsonerror.h"

/// An error tells its place inside the text, in one line that is not too long.
inline void RequirePlace(const Simulator::JsonError& error, const QByteArray& text)
{
    const QByteArray sentence(error.what());
    Require(error.Line() >= 1 && error.Line() <= text.count('\n') + 1, "the place is in the text");
    Require(sentence.startsWith("line " + QByteArray::number(error.Line()) + ": "),
            "an error begins with its place");
    Require(sentence.size() > 15 && sentence.size() < 1500 && !sentence.contains('\n'),
            "an error is one sentence");
}

/// Qt's parser of JSON does not free an object that it gives up in the middle. Nothing of this project is
/// allocated there.
extern "C" __attribute__((used, visibility("default"))) inline const char* __lsan_default_suppressions()
{
    return "leak:libQt5Core";
}
