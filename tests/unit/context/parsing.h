#pragma once

#include <memory>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/crc16.h"
#include "unit/states/celllog.h"

/// A parser, and the cells that it fills.
class Parsing
{
protected:
    /// Begins with new cells.
    void Restart()
    {
        _context.reset();
        _context = std::make_unique<Vesmar::StateMachineContext>(&_crc16, nullptr, nullptr, nullptr, nullptr);
        _cells = std::make_unique<CellLog>(*_context);
    }

    /// Null where the results are of another class.
    template <typename Results>
    const Results* Published() const
    {
        return dynamic_cast<const Results*>(_context->TestResults.Get());
    }

private:
    Vesmar::CRC16 _crc16{nullptr};

protected:
    const Vesmar::ResponseParser _parser{&_crc16, nullptr};
    std::unique_ptr<CellLog> _cells; // First: it outlives what it watches.
    std::unique_ptr<Vesmar::StateMachineContext> _context;
};
