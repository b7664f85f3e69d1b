#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

/// Dates on the line: year, month, day, hour, minute and second, a byte of two packed decimals each. The year
/// counts from 2000; there is no time zone.
namespace Vesmar
{

/// The date in an answer; bytes that make no date give an invalid one.
QDate DecodeDate(const QByteArray& bytes);
/// The time of day in an answer; bytes that make no time give an invalid one.
QTime DecodeTime(const QByteArray& bytes);

/// The three bytes of a date. A year up to 2000 is 0; one after 2099 spills over its high nibble and goes out
/// as computed.
QByteArray EncodeDate(QDate date);
/// The three bytes of a time of day.
QByteArray EncodeTime(QTime time);

/// How the log shows a date.
QString DateText(const QDateTime& dateTime);

} // namespace Vesmar
