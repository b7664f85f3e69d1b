#pragma once

#include <memory>

#include "context/threadsafeproperty.h"

namespace Vesmar
{

/// Publishes another object in the cell and returns the one published before, which the caller now owns.
template <typename Object>
std::unique_ptr<Object> ReplaceOwned(ThreadSafeProperty<Object*>& cell, Object* object)
{
    std::unique_ptr<Object> previous(cell.Get());
    cell.Set(object);
    return previous;
}

} // namespace Vesmar
