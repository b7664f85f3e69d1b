#pragma once

#include <Vesmar/error.h>
#include <Vesmar/measurementstate.h>

#include "states/rcd/rcdrules.h"

/// The lines in which a run of an RCD test tells what it does.
namespace Vesmar::RCDTrace
{

/// Names the phase of a step in the words of its run.
void Phase(RCDRules::PhaseWords words, MeasurementState phase);

/// Tells what became of a poll, and whether the poll before it had found the object under test without error.
void Poll(int result, Error savedCheckObjectError);

/// Tells that the mains voltage does not suit the test.
void InvalidVoltage();

} // namespace Vesmar::RCDTrace
