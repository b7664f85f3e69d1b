#pragma once

#include "panel/log/logdecoder.h"

namespace Panel
{

/// A recorded log in words.
struct DecodedLog {
    static constexpr int MostRows = 200000; ///< Of more, only the last ones are kept.

    QVector<LogRow> rows;
    bool isCut = false; ///< Whether there are more rows than are kept.
    QVector<QPair<QString, RecordPointer>> records;
    VesmarClient::Failure failure;
};

/// Decodes a log from a file. It takes a while where the file is large: any thread may do it.
DecodedLog decodeLogFile(const QString& path);

} // namespace Panel
