#pragma once

#include <QByteArray>
#include <QString>
#include <QTime>

namespace Cli
{

/// What the library has written on one line of a log, if anything.
struct LogEntry {
    enum class Kind {
        Other,    ///< Somebody else's, or nothing that tells more than the lines beside it.
        Exchange, ///< A request and what came of it.
        Unasked,  ///< What the instrument has sent by itself.
        Note,     ///< A sentence of the library's.
        State,    ///< A state of the library's machine is entered.
        Echo      ///< The exchange of the line before in words. Its time counts.
    };

    Kind kind = Kind::Other;
    QTime at;           ///< In UTC; invalid where the library writes none.
    QByteArray request; ///< Of an exchange.
    QByteArray answer;  ///< Of an exchange, or what was sent unasked.
    QString word;       ///< Of an exchange: "ACK", "NACK", "CRC Invalid", "No response" or none.
    QString text;       ///< The note, or the banner of the state.
    QString damage;     ///< What is wrong with the line; empty where nothing is.
};

/// Whatever stands in front of what the library has written is passed over. Colours may be there or not.
LogEntry ParseLogLine(const QByteArray& line);

} // namespace Cli
