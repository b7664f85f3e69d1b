#pragma once

#include <QByteArray>
#include <QString>

/// The lines of the log. Each is one warning.
namespace Vesmar::Trace
{

/// The colours of a line, by their numbers on a terminal.
enum class Colour { Black = 30, Red = 31, Green = 32, Yellow = 33, Blue = 34, Magenta = 35 };

/// Writes a text in this colour, without the time.
void WriteIn(Colour colour, const QString& text);

/// Writes a text as it stands, after the UTC time.
void Write(const QString& text);

/// Write an exchange, after the UTC time, by what became of it.
void Data(const QByteArray& request, const QByteArray& response);
void Acknowledged(const QByteArray& request, const QByteArray& response);
void Refused(const QByteArray& request, const QByteArray& response);
void BadChecksum(const QByteArray& request, const QByteArray& response);
void NoResponse(const QByteArray& request, const QByteArray& response);

/// Writes what was read without a request, after the UTC time.
void ReadingBuffer(const QByteArray& buffer);

} // namespace Vesmar::Trace
