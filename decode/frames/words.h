#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <QVector>

#include <optional>
#include <utility>
#include <variant>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/starttestresult.h>

#include <VesmarClient/identity.h>

#include "client/words/names.h"
#include "client/words/readings.h"

namespace Decode
{

/// Gives the words of this storey in the reader's language.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(Decode)
};

/// What a function has read, in the instrument's own units.
struct Readings {
    Vesmar::MeasurementType function;
    QVector<VesmarClient::DriverReading> values;
};

/// The settings of a measurement by name.
using Settings = QVector<std::pair<const char*, QString>>;

/// A value that a frame tells; the first kind stands for one that is not known.
using Value = std::variant<std::monostate, int, bool, QString, QDateTime, Vesmar::OperationMode,
                           Vesmar::MeasurementType, Vesmar::StartTestResult, Vesmar::FunctionState,
                           Vesmar::Error, VesmarClient::Identity, Readings, Settings>;

/// A value with its name: that of the driver's property, where it is one.
struct Field {
    const char* name;
    Value value;
};

/// What a frame tells: in words, as values, and what is wrong with it (empty where nothing is).
struct FrameWords {
    QString text;
    QVector<Field> fields;
    QString problem;
    std::optional<Vesmar::Error>
        error; ///< What the library reports when it accepts the frame, where that is certain.
};

/// A reading; a dash where there is none.
QString Text(float reading);
QString Text(const QDateTime& date);
/// The error with what it means.
QString Text(Vesmar::Error error);
QString Text(const VesmarClient::Identity& identity);
QString Text(const Readings& readings);

/// An enumerator with its name and number.
template <typename Enumeration, std::enable_if_t<std::is_enum_v<Enumeration>, int> = 0>
QString Text(Enumeration value)
{
    return VesmarClient::NameAndNumber(value);
}

/// The words of one value, which is a field of this name.
template <typename Type>
FrameWords ValueWords(const char* name, const Type& value)
{
    return {Text(value), {{name, value}}, QString(), {}};
}

} // namespace Decode
