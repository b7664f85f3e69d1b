#pragma once

#include <QByteArray>

#include "link/traceline.h"

/// The lines of the log. Each is one warning.
namespace Vesmar::Trace
{

/// Writes a text in this colour, without the time.
void WriteIn(Colour colour, const char* text);

/// Writes a text as it stands, after the UTC time.
void Write(const char* text);

/// Write an exchange, after the UTC time, by what became of it.
void Data(const QByteArray& request, const QByteArray& response);
void Acknowledged(const QByteArray& request, const QByteArray& response);
void Refused(const QByteArray& request, const QByteArray& response);
void BadChecksum(const QByteArray& request, const QByteArray& response);
void NoResponse(const QByteArray& request, const QByteArray& response);

/// Writes what was read without a request, after the UTC time.
void ReadingBuffer(const QByteArray& buffer);

} // namespace Vesmar::Trace
