#pragma once

#include <VesmarClient/instrument.h>

/// The job that the words of the command line ask for: "clock", "calibration 2026-01-31", "restart", "stop",
/// "update IMAGE CONFIRMATION", "measure rpe". None where they ask for nothing.
VesmarClient::Job* begin(VesmarClient::Instrument& instrument, const QStringList& words);
