#pragma once

#include <array>

#include "explorer/configuration.h"
#include "machine/statetree.h"

/// The members that the states add to their base. All of them are plain numbers, so that they are kept as the
/// bytes behind the base, and a member that is added to a class is in them without a change here.
namespace Members
{

using Bytes = decltype(Configuration::members);

Bytes Of(Vesmar::StateId id, const Vesmar::State& state);
void WriteBack(const Bytes& bytes, Vesmar::StateId id, Vesmar::State& state);

} // namespace Members
