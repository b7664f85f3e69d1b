#pragma once

#include <string>

/// A row of the table: what was measured of the library, and of what stands beside it.
struct Row {
    std::string figure;
    const char* unit;
    double ours;
    double beside;
    const char* what; ///< What stands beside it.
};

/// Prints the row with its ratio, which is empty where there is nothing to divide by.
void Print(const Row& row);

/// Reads the option --quick.
void ReadOptions(int argc, char** argv);

/// Of so many samples, the number that a run takes: fewer with the option --quick.
int Scaled(int count);
