#pragma once

#include <QString>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/operationstate.h>
#include <Vesmar/starttestresult.h>

namespace VesmarClient
{

// The enumerators' names; empty for a value that has none.
QString Name(Vesmar::OperationMode value);
QString Name(Vesmar::MeasurementType value);
QString Name(Vesmar::StartTestResult value);
QString Name(Vesmar::FunctionState value);
QString Name(Vesmar::Error value);
QString Name(Vesmar::OperationState value);
QString Name(Vesmar::MeasurementState value);

/// What the error means, in words that can end a line.
QString Meaning(Vesmar::Error value);

/// "CommunicationRecovery (103)"; the number alone for a value that has no name.
template <typename Enumeration>
QString NameAndNumber(Enumeration value)
{
    const QString number = QString::number(static_cast<int>(value));
    const QString name = Name(value);
    return name.isEmpty() ? number : name + QStringLiteral(" (") + number + QLatin1Char(')');
}

} // namespace VesmarClient
