#include "context/responseparser.h"

#include <QDateTime>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>

#include "context/replaceowned.h"
#include "context/statemachinecontext.h"
#include "link/crc16.h"
#include "link/traceline.h"
#include "protocol/classification.h"
#include "protocol/dates.h"
#include "protocol/frames.h"
#include "protocol/readings.h"
#include "protocol/status.h"
#include "protocol/version.h"

namespace Vesmar
{

namespace
{

bool ParseDate(const QByteArray& frame, ThreadSafeProperty<QDateTime>& cell, const char* label)
{
    if (frame.size() != DateFrameSize) {
        return false;
    }
    QDateTime dateTime = cell.Get(); // The date keeps the time zone of the one before.
    dateTime.setDate(DecodeDate(frame));
    dateTime.setTime(DecodeTime(frame));
    cell.Set(dateTime);
    Trace::Line() << label << dateTime;
    return true;
}

void TraceReadings(const ReadingsKind& kind, const Readings& readings)
{
    Trace::Line line;
    for (size_t index = 0; index < readings.size() && kind.labels.at(index) != nullptr; ++index) {
        line << kind.labels.at(index) << readings.at(index);
    }
}

void PublishFunction(const Status& status, StateMachineContext& context)
{
    context.NewMeasurement.Set(status.hasNewMeasurement);
    context.TesterMode.Set(status.mode);
    context.CurrentMeasurementType.Set(status.function);
}

void PublishProcess(const Status& status, StateMachineContext& context)
{
    if (status.functionState) {
        context.MeasurementFunctionStatus.Set(*status.functionState);
    }
    if (status.startTestResult) {
        context.StartTestStatus.Set(*status.startTestResult);
    }
}

/// Writes the line of a status. Only its beginning and one label differ among the kinds of status.
void TraceStatus(const char* begin, const char* processLabel, const Status& status)
{
    Trace::Line() << begin << "DeviceMode: " << static_cast<int>(status.mode)
                  << " MeasurementType: " << static_cast<int>(status.function)
                  << " Error: " << static_cast<int>(status.error) << processLabel << status.processStatus
                  << " NewMeasurement: " << (status.hasNewMeasurement ? 1 : 0);
}

/// Returns the earth resistance that the application gave with the settings of the RCD test.
float ReOfSettings(StateMachineContext& context)
{
    const auto* settings = dynamic_cast<const RCDSettings*>(context.TestSettings.Get());
    return settings != nullptr ? settings->GetRe() : MeasurementResults::NoValue;
}

/// Returns null if the last status named no RCD test.
MeasurementResults* CreateIaTaResults(StateMachineContext& context, IaTa readings)
{
    switch (context.CurrentMeasurementType.Get()) {
    case MeasurementType::RCD:
        return new RCDResults(ReOfSettings(context), readings.ia, readings.ta);
    case MeasurementType::RCDIEC:
        return new RCDIECResults(readings.ia, readings.ta);
    default:
        return nullptr;
    }
}

} // namespace

ResponseParser::ResponseParser(CRC16* crc16, QObject* parent) : QObject(parent), _crc16(crc16) {}

bool ResponseParser::ParseVersionFrame(const QByteArray& frame, StateMachineContext& context) const
{
    if (frame.size() != VersionFrameSize) {
        return false;
    }
    auto* information = new TesterInformation(nullptr);
    DecodeVersion(frame, *information);
    Trace::Line() << information->DeviceName << " " << information->DeviceCode << " "
                  << information->SerialNumber << " " << information->Version << " "
                  << information->VersionCode << " " << information->RevisionCode << " "
                  << information->BuildNumber;
    context.Replaced.Release(ReplaceOwned(context.DeviceInformation, information));
    return true;
}

bool ResponseParser::ParseStatusFrame(const QByteArray& frame, StateMachineContext& context) const
{
    if (frame.size() != StatusFrameSize) {
        return false;
    }
    const Status status = DecodeStatus(frame);
    PublishFunction(status, context);
    context.ErrorCode.Set(status.error);
    PublishProcess(status, context);
    TraceStatus("", " ProcessStatus: ", status);
    return true;
}

bool ResponseParser::ParseCurrentDateTimeFrame(const QByteArray& frame, StateMachineContext& context) const
{
    return ParseDate(frame, context.CurrentDateTime, "CurrentTime: ");
}

bool ResponseParser::ParseCalibrationDateTimeFrame(const QByteArray& frame,
                                                   StateMachineContext& context) const
{
    return ParseDate(frame, context.CalibrationDateTime, "CalibrationTime: ");
}

bool ResponseParser::ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context,
                                             MeasurementType type) const
{
    if (frame.size() != MeasurementFrameSize) {
        return false;
    }
    const ReadingsKind* const kind = FindReadingsKind(type);
    if (kind == nullptr) {
        return true;
    }
    const Readings readings = DecodeReadings(frame);
    auto* results = kind->create(readings);
    results->_values = readings;
    TraceReadings(*kind, readings);
    context.Replaced.Release(ReplaceOwned(context.TestResults, results));
    return true;
}

bool ResponseParser::ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context) const
{
    return ParseMeasurementResults(frame, context, context.CurrentMeasurementType.Get());
}

bool ResponseParser::ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context) const
{
    const Status status = DecodeStatus(data);
    if (!IsRCD(status.function)) {
        Trace::Line() << "ResponseParser::ParseRCDStatusResponse(data, context) !RCD !RCDIEC";
        return ParseStatusFrame(data, context);
    }
    PublishFunction(status, context);
    PublishProcess(status, context);
    context.ErrorCode.Set(ErrorInRCDTest(status.error));
    TraceStatus("ResponseParser::ParseRCDStatusResponse(data, context)\n",
                " MeasurementFunctionStatus: ", status);
    return true;
}

bool ResponseParser::ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context,
                                            Error* error) const
{
    const Status status = DecodeStatus(data, FunctionBits::Four);
    if (!IsRCD(status.function)) {
        return ParseStatusFrame(data, context);
    }
    PublishFunction(status, context);
    PublishProcess(status, context);
    *error = ErrorInRCDTest(status.error);
    TraceStatus("ResponseParser::ParseRCDStatusResponse(data, context, error): ", " ProcessStatus: ", status);
    return true;
}

bool ResponseParser::ParseUbReMeasurementResponse(const QByteArray& data, StateMachineContext& context) const
{
    if (context.TestSettings.Get()->GetMeasurementType() != MeasurementType::RCD) {
        return false;
    }
    const float re = DecodeRe(data);
    auto* results = new RCDResults(re, MeasurementResults::NoValue, MeasurementResults::NoValue);
    results->_values.at(0) = re;
    Trace::Line() << "Re: " << re;
    context.Replaced.Release(ReplaceOwned<MeasurementResults>(context.TestResults, results));
    return true;
}

bool ResponseParser::ParseIaTaMeasurementResponse(const QByteArray& data, StateMachineContext& context) const
{
    const IaTa readings = DecodeIaTa(data);
    MeasurementResults* results = CreateIaTaResults(context, readings);
    if (results == nullptr) {
        return false;
    }
    results->_values.at(0) = readings.ia;
    results->_values.at(1) = readings.ta;
    Trace::Line() << "Ia: " << readings.ia << " Ta: " << readings.ta;
    context.Replaced.Release(ReplaceOwned(context.TestResults, results));
    return true;
}

bool ResponseParser::ParseRCDCheckObjectResponseError(const QByteArray& data, Error* error) const
{
    qDebug("ResponseParser::ParseRCDCheckObjectResponseError(data. errpr): SavedChkObjErr=%u",
           ByteAt(data, 0));
    *error = DecodeObjectCheck(data);
    return true;
}

bool ResponseParser::ParseRCDCheckObjectResponse(const QByteArray& data, StateMachineContext& context) const
{
    Error error = Error::NoErrors;
    ParseRCDCheckObjectResponseError(data, &error);
    context.ErrorCode.Set(error);
    return false;
}

bool ResponseParser::IsRCDMeasurementResultResponse(const QByteArray& frame) const
{
    return frame.size() == MeasurementFrameSize && _crc16->Check(frame);
}

bool ResponseParser::IsRCDMeasurementStatusResponse(const QByteArray& frame) const
{
    return frame.size() == StatusFrameSize && _crc16->Check(frame);
}

} // namespace Vesmar
