#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// What goes over the line, byte for byte, in hexadecimal.
namespace Frames
{

constexpr char ReadStatus[] = "73f44e";
constexpr char ReadVersion[] = "57122a";
constexpr char ReadCurrentDate[] = "52b77a";
constexpr char ReadCalibrationDate[] = "54711a";
constexpr char ReadMeasurement[] = "65033c";
constexpr char StopMeasurement[] = "68aeed";
constexpr char ChangeToNormalMode[] = "7800f081";
constexpr char ChangeToCalibrationMode[] = "7801d191";

constexpr char Acknowledge[] = "06c660";
constexpr char Refusal[] = "214334";
constexpr char Version[] = "5041543431303230343831353130353033303232303136f923";
constexpr char CurrentDate[] = "240307140509297d";     // 2024-03-07 14:05:09
constexpr char CalibrationDate[] = "240215000000c8d0"; // 2024-02-15
constexpr char IdleStatus[] = "00fed10e";              // mode 0, no function, no error, start test 14

/// What the instrument is asked at the beginning of every connection.
inline QByteArrayList FirstRequests()
{
    return {ReadStatus, ReadVersion, ReadCurrentDate, ReadCalibrationDate};
}

template <typename List>
QByteArrayList Hex(const List& frames)
{
    QByteArrayList texts;
    for (const QByteArray& frame : frames) {
        texts.append(frame.toHex());
    }
    return texts;
}

/// What an instrument with this status answers: data to what reads, an acknowledgement to everything else.
QByteArray Answer(const QByteArray& request, const QByteArray& status = IdleStatus);

} // namespace Frames
