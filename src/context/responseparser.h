#pragma once

#include <QByteArray>
#include <QObject>

#include <Vesmar/error.h>
#include <Vesmar/measurementtype.h>

namespace Vesmar
{

class CRC16;
class StateMachineContext;

/// Publishes what the instrument's data answers say in the context's cells, and writes it to the log.
///
/// The frames come from `Transciever::RunQuery`, which has checked their checksum. The parsers test the
/// length alone: on a wrong one they return false and change nothing. Bytes that make no sense are stored and
/// announced like any other. The worker's thread uses the parser; during a synchronous update the
/// application's thread does.
class ResponseParser : public QObject
{
    Q_OBJECT

public:
    ResponseParser(CRC16* crc16, QObject* parent);

    /// Publishes a new `TesterInformation` and deletes the one before.
    bool ParseVersionFrame(const QByteArray& frame, StateMachineContext& context) const;
    bool ParseStatusFrame(const QByteArray& frame, StateMachineContext& context) const;
    bool ParseCurrentDateTimeFrame(const QByteArray& frame, StateMachineContext& context) const;
    bool ParseCalibrationDateTimeFrame(const QByteArray& frame, StateMachineContext& context) const;

    /// Publishes new results of the function and deletes the ones before. A function that has no results
    /// class publishes nothing and returns true.
    bool ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context,
                                 MeasurementType type) const;
    /// As above, for the function that the last status named. No state calls it.
    bool ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context) const;

    /// Publishes the status as the instrument reports it during an RCD test. A status of any other function
    /// counts as an ordinary one. Bytes that are missing count as 0.
    bool ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context) const;
    /// As above, but an RCD test's error goes to `*error`, and `ErrorCode` keeps its value. Here the function
    /// is the number in four bits, not in five.
    bool ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context, Error* error) const;

    /// Publishes new RCD results with Re alone and deletes the ones before. Publishes nothing and returns
    /// false when the present settings are not those of the RCD test.
    bool ParseUbReMeasurementResponse(const QByteArray& data, StateMachineContext& context) const;
    /// Publishes new results with Ia and Ta, of the RCD test that the last status named, and deletes the ones
    /// before. Publishes nothing and returns false when that status named no RCD test.
    bool ParseIaTaMeasurementResponse(const QByteArray& data, StateMachineContext& context) const;

    /// Stores in `*error` what the instrument found wrong with the object under test. Always returns true.
    bool ParseRCDCheckObjectResponseError(const QByteArray& data, Error* error) const;
    /// As above, but stores it in `ErrorCode`. Always returns false.
    bool ParseRCDCheckObjectResponse(const QByteArray& data, StateMachineContext& context) const;

    /// These two look at the length and the checksum only, and at no byte of the data.
    bool IsRCDMeasurementResultResponse(const QByteArray& frame) const;
    bool IsRCDMeasurementStatusResponse(const QByteArray& frame) const;

private:
    CRC16* _crc16;
};

} // namespace Vesmar
