#pragma once

#include <QByteArray>

namespace Cli
{

/// The request for the instrument's status, as it goes over the line.
QByteArray StatusRequest();

/// What came back for a request for the status.
enum class LineAnswer {
    Proper,
    Refused,
    Damaged, ///< A wrong checksum or length.
    Silent   ///< Nothing came.
};

/// What the bytes are that came back.
LineAnswer Classify(const QByteArray& answer);

} // namespace Cli
