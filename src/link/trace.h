#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// The lines that the serial line writes to the log: each one warning, after the UTC time.
namespace Vesmar::Trace
{

/// A text as it stands.
void Note(const QString& text);

/// The exchanges, by what became of them.
void Data(const QByteArray& request, const QByteArray& response);
void Acknowledged(const QByteArray& request, const QByteArray& response);
void Refused(const QByteArray& request, const QByteArray& response);
void BadChecksum(const QByteArray& request, const QByteArray& response);
void NoResponse(const QByteArray& request, const QByteArray& response);

/// How the log shows a date.
QString DateText(const QDateTime& dateTime);

/// What was read without a request.
void ReadingBuffer(const QByteArray& buffer);

} // namespace Vesmar::Trace
