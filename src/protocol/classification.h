#pragma once

#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>

/// The groups of values that the machine tells apart.
namespace Vesmar
{

/// The residual-current tests, which have states of their own.
constexpr bool IsRCD(MeasurementType type)
{
    return type == MeasurementType::RCD || type == MeasurementType::RCDIEC;
}

/// The functions that deliver one result.
constexpr bool IsSingle(MeasurementType type)
{
    return type == MeasurementType::RLN || type == MeasurementType::IEC;
}

/// The modes that the library works in; out of every other one it restarts the instrument.
constexpr bool IsWorkingMode(OperationMode mode)
{
    return mode == OperationMode::Normal || mode == OperationMode::Update;
}

} // namespace Vesmar
