#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

/// Dates on the line have six bytes: year, month, day, hour, minute and second, each as two packed decimals.
/// The year counts from 2000; there is no time zone.
namespace Vesmar
{

/// Decodes the date in an answer. Bytes that make no date give an invalid one.
QDate DecodeDate(const QByteArray& bytes);
/// Decodes the time of day in an answer. Bytes that make no time give an invalid one.
QTime DecodeTime(const QByteArray& bytes);

/// Encodes a date in three bytes. A year up to 2000 is 0; one after 2099 spills over its high nibble and goes
/// out as computed.
QByteArray EncodeDate(QDate date);
/// Encodes a time of day in three bytes.
QByteArray EncodeTime(QTime time);

/// Returns a date as the log shows it.
QString DateText(const QDateTime& dateTime);

} // namespace Vesmar
