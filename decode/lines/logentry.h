#pragma once

#include <QByteArray>
#include <QString>
#include <QTime>

#include <optional>

namespace Decode
{

/// What the library has written on one line of a log, if anything.
struct LogEntry {
    enum class Kind {
        Other,    ///< From another program, or without anything that the lines beside it do not tell.
        Exchange, ///< A request and what came of it.
        Unasked,  ///< What the instrument has sent by itself.
        Note,     ///< A sentence of the library.
        State,    ///< The library's machine enters a state.
        Echo      ///< The words for the exchange of the line before. Its time counts.
    };

    Kind kind = Kind::Other;
    QTime at;           ///< In UTC; invalid if the library writes none.
    QByteArray request; ///< Of an exchange.
    QByteArray answer;  ///< Of an exchange, or what was sent unasked.
    QString word;       ///< Of an exchange: "ACK", "NACK", "CRC Invalid", "No response" or none.
    QString text;       ///< The note, or the banner of the state.
    QString damage;     ///< What is wrong with the line; empty if nothing is.
};

/// Reads a line with or without colours. What other programs put in front of the library's words is ignored.
LogEntry ParseLogLine(const QByteArray& line);

/// The milliseconds from one time of day to a later one; none if a time is unknown or the clock was set back.
std::optional<int> MillisecondsBetween(const QTime& before, const QTime& after);

} // namespace Decode
