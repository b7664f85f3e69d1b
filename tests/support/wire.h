#pragma once

#include <QByteArray>
#include <QByteArrayList>

/// The frame with its checksum appended, computed independently of the library.
inline QByteArray WithChecksum(const QByteArray& data)
{
    constexpr unsigned int Polynomial = 0x1021;
    constexpr int BitsOfAByte = 8;
    unsigned int checksum = 0;
    for (const char byte : data) {
        checksum ^= static_cast<unsigned int>(static_cast<unsigned char>(byte)) << 8U;
        for (int bit = 0; bit < BitsOfAByte; ++bit) {
            checksum = (checksum << 1U) ^ ((checksum & 0x8000U) != 0 ? Polynomial : 0U);
        }
    }
    return data + static_cast<char>(checksum & 0xFFU) + static_cast<char>(checksum >> 8U & 0xFFU);
}

/// What goes over the line, byte for byte. The checksums were not computed by the library.
namespace Wire
{

inline QByteArray Bytes(const char* hexadecimal)
{
    return QByteArray::fromHex(hexadecimal);
}

// Requests.
inline const QByteArray ReadStatus = Bytes("73f44e");
inline const QByteArray ReadVersion = Bytes("57122a");
inline const QByteArray ReadCurrentDate = Bytes("52b77a");
inline const QByteArray ReadCalibrationDate = Bytes("54711a");
inline const QByteArray ReadMeasurement = Bytes("65033c");
inline const QByteArray StartMeasurement = Bytes("53966a");
inline const QByteArray StopMeasurement = Bytes("68aeed");
inline const QByteArray ChangeToNormalMode = Bytes("7800f081");
inline const QByteArray ChangeToCalibrationMode = Bytes("7801d191");
inline const QByteArray ChangeToUpdateMode = Bytes("780393b1");
inline const QByteArray InitializeUpdate = Bytes("56333a");

/// What every connection begins with.
inline const QByteArrayList FirstRequests{ReadStatus, ReadVersion, ReadCurrentDate, ReadCalibrationDate};

// Requests that prepare a measuring function.
inline const QByteArray PrepareNothing = Bytes("50f55a"); ///< Settings without a function of their own.
inline const QByteArray PrepareRln = Bytes("5001ff0100ffffffffea32");
inline const QByteArray PrepareRpe = Bytes("5002050000ffffffffe963");
inline const QByteArray PrepareHvTest = Bytes("5009050200ffffffff063e");
inline const QByteArray PrepareIaTa = Bytes("500a00404b0000c842a7fd");
inline const QByteArray PrepareCleanUp = Bytes("500b0000c00000000030e9");

// Answers.
inline const QByteArray Acknowledge = Bytes("06c660");
inline const QByteArray Refusal = Bytes("214334");
inline const QByteArray Silence;
inline const QByteArray UpdateInitialized = Bytes("00024220");
inline const QByteArray Version = Bytes("5041543431303230343831353130353033303232303136f923");
inline const QByteArray CurrentDate = Bytes("240307140509297d");     ///< 2024-03-07 14:05:09.
inline const QByteArray CalibrationDate = Bytes("240215000000c8d0"); ///< 2024-02-15.
inline const QByteArray SixReadings =
    Bytes("0000803f0000004000004040000080400000a0400000c04043e3"); ///< From 1 to 6.

// Statuses: no function and no error where the name does not say otherwise.
inline const QByteArray IdleStatus = Bytes("00fed10e");       ///< Start test 14.
inline const QByteArray ReadyStatus = Bytes("80fe4915");      ///< The same with a new measurement.
inline const QByteArray StartTest0Status = Bytes("00f01fef"); ///< Start test 0.
inline const QByteArray CalibrationModeStatus = Bytes("20fe3708");
inline const QByteArray Mode2Status = Bytes("40fe1d03");
inline const QByteArray UpdateModeStatus = Bytes("60fefb05");
inline const QByteArray DamagedStatus = Bytes("00f50000");
inline const QByteArray RcdPreparedStatus = Bytes("0af45040");
inline const QByteArray RcdRunningStatus = Bytes("0af73370");

constexpr int NoError = 15;

/// A status answer. `state` is that of the function, or the start test's result where there is no function.
inline QByteArray Status(int function, int state, bool isNewMeasurement = false, int error = NoError,
                         int mode = 0)
{
    QByteArray data;
    data.append(static_cast<char>((isNewMeasurement ? 0x80 : 0) | mode << 5 | function));
    data.append(static_cast<char>(error << 4 | state));
    return WithChecksum(data);
}

/// What an instrument with this status answers: data to what reads, an acknowledgement to everything else.
inline QByteArray AnswerTo(const QByteArray& request, const QByteArray& status = IdleStatus)
{
    return request == ReadStatus            ? status
           : request == ReadVersion         ? Version
           : request == ReadCurrentDate     ? CurrentDate
           : request == ReadCalibrationDate ? CalibrationDate
                                            : Acknowledge;
}

} // namespace Wire
