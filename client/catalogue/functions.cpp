#include <VesmarClient/functions.h>

#include <algorithm>

#include "client/catalogue/catalogue.h"
#include "client/catalogue/conversions.h"
#include "client/catalogue/options.h"
#include "client/catalogue/units.h"
#include "client/words/readings.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

FunctionInfo InfoOf(const CatalogueRow& row)
{
    FunctionInfo info;
    info.function = row.function;
    info.identifier = QLatin1String(row.identifier);
    info.title = Translated(row.title);
    info.kind = row.kind;
    info.isDangerous = row.kind == FunctionKind::HighVoltage;
    const bool hasTime = row.kind == FunctionKind::Continuous || info.isDangerous;
    if (hasTime && row.function != Function::Monitoring) {
        info.options.append(Options::Time());
    }
    info.options += row.options();
    info.readings = ReadingInfosOf(row.function);
    return info;
}

template <typename Condition>
FunctionInfo Find(size_t count, Condition&& isWanted)
{
    const auto* const end = AllFunctions.cbegin() + count;
    const auto* const found = std::find_if(AllFunctions.cbegin(), end, isWanted);
    return found != end ? InfoOf(*found) : FunctionInfo();
}

} // namespace

QVector<ReadingInfo> ReadingInfosOf(Function function)
{
    const Units units = UnitsInUse().Current();
    QVector<ReadingInfo> readings;
    for (const char* name : ReadingNames(TypeOf(function))) {
        const QString identifier = QLatin1String(name);
        const ReadingUnit unit = units.value({static_cast<int>(function), identifier});
        readings.append({identifier, Capitalized(Translated(name)), unit.unit, unit.decimals});
    }
    return readings;
}

QVector<FunctionInfo> Functions::all()
{
    QVector<FunctionInfo> functions;
    std::transform(AllFunctions.cbegin(), AllFunctions.cbegin() + MeasurableCount,
                   std::back_inserter(functions), InfoOf);
    return functions;
}

FunctionInfo Functions::find(const QString& identifier)
{
    return Find(MeasurableCount, [&identifier](const CatalogueRow& row) {
        return identifier == QLatin1String(row.identifier);
    });
}

FunctionInfo Functions::find(Function function)
{
    return Find(AllFunctions.size(),
                [function](const CatalogueRow& row) { return row.function == function; });
}

Failure Functions::readUnits(const QString& path)
{
    return UnitsInUse().Replace(path);
}

Failure Functions::unitsFailure()
{
    return UnitsInUse().DefaultFailure();
}

} // namespace VesmarClient
