#pragma once

#include <VesmarClient/settings.h>

/// Prints every function with its options and readings.
void printCatalogue();

/// Prints what is wrong with settings; false if something is.
bool check(const VesmarClient::Settings& settings);
