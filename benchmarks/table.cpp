#include "table.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace
{

constexpr int QuickDivisor = 5;
int divisor = 1;

/// Four significant digits, and no power of ten.
void PrintValue(double value, const char* unit)
{
    const int decimals = value == 0 || value >= 1000 ? 0 : value >= 100 ? 1 : value >= 10 ? 2 : 3;
    std::printf("%.*f%s%s", decimals, value, *unit != '\0' ? " " : "", unit);
}

} // namespace

void Print(const Row& row)
{
    std::printf("| %s | ", row.figure.c_str());
    PrintValue(row.ours, row.unit);
    std::printf(" | ");
    PrintValue(row.beside, row.unit);
    std::printf(", %s | ", row.what);
    if (row.beside > 0) {
        std::printf("%.3f", row.ours / row.beside);
    }
    std::printf(" |\n");
    std::fflush(stdout);
}

int Scaled(int count)
{
    return std::max(1, count / divisor);
}

void ReadOptions(int argc, char** argv)
{
    divisor = argc > 1 && std::strcmp(argv[1], "--quick") == 0 ? QuickDivisor : 1;
}
