#pragma once

#include <array>

#include <VesmarClient/functions.h>

namespace VesmarClient
{

/// What is known of a function, without the units of its readings. The title can be translated.
struct CatalogueRow {
    Function function;
    const char* identifier;
    const char* title;
    FunctionKind kind;
    QVector<Option> (*options)(); ///< Without the time.
};

/// The twelve functions that can be measured, in the order in which they are usually shown, and behind them
/// the readings of the mains.
using Catalogue = std::array<CatalogueRow, 13>;
constexpr size_t MeasurableCount = 12;
extern const Catalogue AllFunctions;

/// What the function reads, with the units that are known.
QVector<ReadingInfo> ReadingInfosOf(Function function);

} // namespace VesmarClient
