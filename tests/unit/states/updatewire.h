#pragma once

#include "unit/states/enginefixture.h"

/// The frames of a firmware update, checksums included.
namespace Wire
{

/// The answer to the first frame of an update, whose content is never read.
inline const QByteArray InitializeAnswer = Bytes("01027313");

/// No function, start test 0, error 5, in normal and in update mode.
inline const QByteArray FaultyStatus = Bytes("0050f55a");
inline const QByteArray FaultyUpdateModeStatus = Bytes("6050df51");

/// Each of three sectors repeats one of these patterns of 16 bytes. The last pattern holds the short answers
/// and requests of the line.
inline const QByteArray SectorPatterns[] = {Bytes("000102030405060708090a0b0c0d0e0f"),
                                            Bytes("f0e1d2c3b4a5968778695a4b3c2d1e0f"),
                                            Bytes("06c66021433473f44e56333a00ff80aa")};
inline const QByteArray SectorChecksums[] = {Bytes("2c0a"), Bytes("4258"), Bytes("94c3")};

inline QByteArray Sector(int number)
{
    return SectorPatterns[number].repeated(32);
}

inline QByteArray SectorFrame(int number)
{
    return Bytes("46") + Sector(number) + SectorChecksums[number];
}

/// An image of three sectors.
inline QByteArray Image()
{
    return Sector(0) + Sector(1) + Sector(2);
}

inline const QByteArray Confirmation = Bytes("00112233abcd");
inline const QByteArray Finish = Bytes("5aabcd6a50"); ///< The confirmation's last two bytes.

/// The answers of an instrument without a fault, with this status.
inline QMap<char, QByteArray> UpdateAnswers(const QByteArray& status)
{
    return {
        {'s', status}, {'x', Acknowledge}, {'V', InitializeAnswer}, {'F', Acknowledge}, {'Z', Acknowledge}};
}

} // namespace Wire

/// The lines of the log without those of the exchanges and of the statuses.
inline QStringList Announcements(const LogCapture& log)
{
    QStringList texts;
    for (const QString& text : log.Texts()) {
        if (!text.contains(QLatin1String("\033[0;35m")) && !text.startsWith(QLatin1String("DeviceMode: "))) {
            texts.append(text);
        }
    }
    return texts;
}
