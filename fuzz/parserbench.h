#pragma once

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "fuzz/finding.h"
#include "link/crc16.h"
#include "support/cells.h"

/// A parser with a context of its own, which counts how often a cell changes.
class ParserBench
{
public:
    ParserBench()
    {
        ForEachCell(context, [this](const char* /*name*/, const Vesmar::Notifible& cell) {
            QObject::connect(&cell, &Vesmar::Notifible::ValueChanged, [this] { ++_changeCount; });
        });
    }

    /// A parser that returns false must not have changed anything.
    bool Checked(bool result) const
    {
        Require(result || _changeCount == 0, "a frame that is refused changes nothing");
        return result;
    }

    Vesmar::CRC16 crc16{nullptr};
    Vesmar::ResponseParser parser{&crc16, nullptr};
    Vesmar::StateMachineContext context{&crc16, nullptr, nullptr, &parser, nullptr};

private:
    int _changeCount = 0;
};
