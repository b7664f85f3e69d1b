#include "link/responseparser.h"

#include <algorithm>
#include <array>
#include <limits>

#include <QDateTime>
#include <QDebug>
#include <QtEndian>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

#include "context/replaceowned.h"
#include "context/statemachinecontext.h"
#include "link/crc16.h"
#include "link/frames.h"
#include "link/trace.h"
#include "model/classification.h"

namespace Vesmar
{

namespace
{

using Values = std::array<float, 6>;

/// How the six values of a function's answer become its results.
struct ResultsKind {
    MeasurementType type;
    std::array<const char*, 6> labels; ///< Of the values that the function has, in order.
    MeasurementResults* (*create)(const Values& values);
};

const std::array<ResultsKind, 11> ResultsKinds{{
    {MeasurementType::Monitoring,
     {"ULN: ", " UNPE: ", " f: "},
     [](const Values& v) -> MeasurementResults* { return new MonitoringResults(v[0], v[1], v[2]); }},
    {MeasurementType::RLN,
     {"Resistance: ", " Voltage: ", " Current: ", " IsubVoltage: ", " IsubCurrent: "},
     [](const Values& v) -> MeasurementResults* { return new RLNResults(v[0], v[1], v[2], v[3], v[4]); }},
    {MeasurementType::RPE,
     {"Resistance: ", " Voltage: ", " Current: "},
     [](const Values& v) -> MeasurementResults* { return new RPEResults(v[0], v[1], v[2]); }},
    {MeasurementType::RISO,
     {"Resistance: ", " Voltage: ", " Current: "},
     [](const Values& v) -> MeasurementResults* { return new RISOResults(v[0], v[1], v[2]); }},
    {MeasurementType::ISUB,
     {"Current: ", " Voltage: "},
     [](const Values& v) -> MeasurementResults* { return new ISUBResults(v[0], v[1]); }},
    {MeasurementType::IPE,
     {"Current: ", " Voltage: "},
     [](const Values& v) -> MeasurementResults* { return new IPEResults(v[0], v[1]); }},
    {MeasurementType::IDELTA,
     {"Current: ", " Voltage: "},
     [](const Values& v) -> MeasurementResults* { return new IDELTAResults(v[0], v[1]); }},
    {MeasurementType::IT,
     {"Current: "},
     [](const Values& v) -> MeasurementResults* { return new ITResults(v[0]); }},
    {MeasurementType::POWER,
     {"Energy: ", " Power: ", " Current: ", " Voltage: ", " PF: ", " S: "},
     [](const Values& v) -> MeasurementResults* {
         return new POWERResults(v[0], v[1], v[2], v[3], v[4], v[5]);
     }},
    {MeasurementType::HVTest,
     {"MaxVoltage: ", " Voltage: ", " Current: ", " ULN: ", " UPRI: ", " PWM: "},
     [](const Values& v) -> MeasurementResults* {
         return new HVTestResults(v[0], v[1], v[2], v[3], v[4], v[5]);
     }},
    {MeasurementType::IEC,
     {"Result: ", " Voltage: ", " ULN: ", " Step: ", " Delay: "},
     [](const Values& v) -> MeasurementResults* { return new IECResults(v[0], v[1], v[2], v[3], v[4]); }},
}};

/// A text field; it ends at a zero byte.
QString Text(const QByteArray& frame, int position, int size)
{
    const QByteArray field = frame.mid(position, size);
    return QString::fromLatin1(field.constData(),
                               static_cast<int>(qstrnlen(field.constData(), static_cast<uint>(size))));
}

bool IsDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

/// Four ASCII digits, or else four bytes that each are a decimal digit's value.
QString BuildNumber(const QByteArray& field)
{
    if (std::all_of(field.cbegin(), field.cend(), IsDigit)) {
        return QString::fromLatin1(field);
    }
    return QString::number(ByteAt(field, 0) * 1000 + ByteAt(field, 1) * 100 + ByteAt(field, 2) * 10 +
                           ByteAt(field, 3));
}

int BcdAt(const QByteArray& frame, int position)
{
    const unsigned byte = ByteAt(frame, position);
    return static_cast<int>((byte >> 4U) * 10 + (byte & 0x0FU));
}

bool ParseDate(const QByteArray& frame, ThreadSafeProperty<QDateTime>& cell, const QString& label)
{
    if (frame.size() != DateFrameSize) {
        return false;
    }
    QDateTime dateTime = cell.Get(); // Keeps the time zone setting.
    dateTime.setDate(QDate(2000 + BcdAt(frame, 0), BcdAt(frame, 1), BcdAt(frame, 2)));
    dateTime.setTime(QTime(BcdAt(frame, 3), BcdAt(frame, 4), BcdAt(frame, 5)));
    cell.Set(dateTime);
    qWarning().noquote() << label + Trace::DateText(dateTime);
    return true;
}

Values DecodeValues(const QByteArray& frame)
{
    Values values{};
    qFromLittleEndian<float>(frame.constData(), static_cast<int>(values.size()), values.data());
    return values;
}

QString ReadingText(float value)
{
    return QString::number(static_cast<double>(value), 'g', 6);
}

void TraceValues(const ResultsKind& kind, const Values& values)
{
    QString line;
    for (size_t index = 0; index < values.size() && kind.labels.at(index) != nullptr; ++index) {
        line += QLatin1String(kind.labels.at(index));
        line += ReadingText(values.at(index));
    }
    qWarning().noquote() << line;
}

/// A reading that the instrument does not have.
constexpr float NoValue = std::numeric_limits<float>::max();

Error RCDDeviceError(unsigned nibble)
{
    constexpr unsigned None = 15;
    return nibble == None ? Error::NoErrors
                          : static_cast<Error>(static_cast<unsigned>(Error::RCDDeviceError0) + nibble);
}

/// What both kinds of RCD status have in common; the error is not part of it.
void ParseRCDStatus(const QByteArray& data, unsigned function, StateMachineContext& context)
{
    context.NewMeasurement.Set((ByteAt(data, 0) & 0x80U) != 0);
    context.TesterMode.Set(static_cast<OperationMode>((ByteAt(data, 0) >> 5U) & 0x03U));
    context.CurrentMeasurementType.Set(static_cast<MeasurementType>(function));
    context.MeasurementFunctionStatus.Set(static_cast<FunctionState>(ByteAt(data, 1) & 0x0FU));
}

void TraceRCDStatus(const char* begin, const char* functionStatusLabel, const QByteArray& data,
                    StateMachineContext& context)
{
    qWarning().noquote() << begin << static_cast<int>(context.TesterMode.Get())
                         << "MeasurementType: " << static_cast<int>(context.CurrentMeasurementType.Get())
                         << "Error: " << (ByteAt(data, 1) >> 4U) << functionStatusLabel
                         << static_cast<int>(context.MeasurementFunctionStatus.Get())
                         << "NewMeasurement: " << (context.NewMeasurement.Get() ? 1 : 0);
}

/// A reading in ten-thousandths, low byte first.
float FixedPointAt(const QByteArray& data, int position)
{
    constexpr unsigned NoReading = 0xEE;
    const unsigned low = ByteAt(data, position);
    const unsigned high = ByteAt(data, position + 1);
    if (low == NoReading && high == NoReading) {
        return NoValue;
    }
    return static_cast<float>(low + 256 * high) / 10000.0F;
}

/// The earth resistance that the application handed over with the settings of the RCD test.
float ReOfSettings(StateMachineContext& context)
{
    const auto* settings = dynamic_cast<const RCDSettings*>(context.TestSettings.Get());
    return settings != nullptr ? settings->GetRe() : NoValue;
}

MeasurementResults* CreateIaTaResults(StateMachineContext& context, float ia, float ta)
{
    switch (context.CurrentMeasurementType.Get()) {
    case MeasurementType::RCD:
        return new RCDResults(ReOfSettings(context), ia, ta);
    case MeasurementType::RCDIEC:
        return new RCDIECResults(ia, ta);
    default:
        return nullptr;
    }
}

Error CheckObjectError(unsigned code)
{
    switch (code) {
    case 0:
        return Error::NoErrors;
    case 2:
        return Error::RCDCheckObject2;
    case 3:
        return Error::RCDCheckObject3;
    case 4:
        return Error::RCDCheckObject4;
    case 7:
        return Error::RCDCheckObject7;
    case 8:
        return Error::RCDCheckObject8;
    case 9:
        return Error::RCDCheckObject9;
    case 10:
        return Error::RCDCheckObjectULNIECInvalid;
    default:
        return Error::RCDCheckObjectFailed;
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
    information->DeviceName = Text(frame, 0, 3);
    information->DeviceCode = Text(frame, 3, 3);
    information->SerialNumber = Text(frame, 6, 6);
    information->Version = Text(frame, 12, 1) + QLatin1Char('.') + Text(frame, 13, 2);
    information->VersionCode = Text(frame, 15, 2);
    information->RevisionCode = Text(frame, 17, 2);
    information->BuildNumber = BuildNumber(frame.mid(19, 4));
    qWarning().noquote() << information->DeviceName << information->DeviceCode << information->SerialNumber
                         << information->Version << information->VersionCode << information->RevisionCode
                         << information->BuildNumber;
    ReplaceOwned(context.DeviceInformation, information, &context);
    return true;
}

bool ResponseParser::ParseStatusFrame(const QByteArray& frame, StateMachineContext& context) const
{
    if (frame.size() != StatusFrameSize) {
        return false;
    }
    const bool isNewMeasurement = (ByteAt(frame, 0) & 0x80U) != 0;
    const unsigned mode = (ByteAt(frame, 0) >> 5U) & 0x03U;
    const unsigned type = ByteAt(frame, 0) & 0x1FU;
    const unsigned error = ByteAt(frame, 1) >> 4U;
    const unsigned processStatus = ByteAt(frame, 1) & 0x0FU;

    context.NewMeasurement.Set(isNewMeasurement);
    context.TesterMode.Set(static_cast<OperationMode>(mode));
    context.CurrentMeasurementType.Set(static_cast<MeasurementType>(type));
    context.ErrorCode.Set(static_cast<Error>(error));
    if (context.CurrentMeasurementType.Get() != MeasurementType::Monitoring) {
        context.MeasurementFunctionStatus.Set(static_cast<FunctionState>(processStatus));
    } else {
        context.StartTestStatus.Set(static_cast<StartTestResult>(processStatus));
    }
    qWarning().nospace() << "DeviceMode: " << mode << " MeasurementType: " << type << " Error: " << error
                         << " ProcessStatus: " << processStatus
                         << " NewMeasurement: " << (isNewMeasurement ? 1 : 0);
    return true;
}

bool ResponseParser::ParseCurrentDateTimeFrame(const QByteArray& frame, StateMachineContext& context) const
{
    return ParseDate(frame, context.CurrentDateTime, QStringLiteral("CurrentTime: "));
}

bool ResponseParser::ParseCalibrationDateTimeFrame(const QByteArray& frame,
                                                   StateMachineContext& context) const
{
    return ParseDate(frame, context.CalibrationDateTime, QStringLiteral("CalibrationTime: "));
}

bool ResponseParser::ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context,
                                             MeasurementType type) const
{
    if (frame.size() != MeasurementFrameSize) {
        return false;
    }
    const auto* const kind =
        std::find_if(ResultsKinds.cbegin(), ResultsKinds.cend(),
                     [type](const ResultsKind& candidate) { return candidate.type == type; });
    if (kind == ResultsKinds.cend()) {
        return true;
    }
    const Values values = DecodeValues(frame);
    auto* results = kind->create(values);
    results->_values = values;
    TraceValues(*kind, values);
    ReplaceOwned(context.TestResults, results, &context);
    return true;
}

bool ResponseParser::ParseMeasurementResults(const QByteArray& frame, StateMachineContext& context) const
{
    return ParseMeasurementResults(frame, context, context.CurrentMeasurementType.Get());
}

bool ResponseParser::ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context) const
{
    const unsigned function = ByteAt(data, 0) & 0x1FU;
    if (!IsRCD(static_cast<MeasurementType>(function))) {
        qWarning("ResponseParser::ParseRCDStatusResponse(data, context) !RCD !RCDIEC");
        return ParseStatusFrame(data, context);
    }
    ParseRCDStatus(data, function, context);
    context.ErrorCode.Set(RCDDeviceError(ByteAt(data, 1) >> 4U));
    TraceRCDStatus("ResponseParser::ParseRCDStatusResponse(data, context)\nDeviceMode: ",
                   "MeasurementFunctionStatus: ", data, context);
    return true;
}

bool ResponseParser::ParseRCDStatusResponse(const QByteArray& data, StateMachineContext& context,
                                            Error* error) const
{
    const unsigned function = ByteAt(data, 0) & 0x0FU;
    if (!IsRCD(static_cast<MeasurementType>(function))) {
        return ParseStatusFrame(data, context);
    }
    ParseRCDStatus(data, function, context);
    *error = RCDDeviceError(ByteAt(data, 1) >> 4U);
    TraceRCDStatus("ResponseParser::ParseRCDStatusResponse(data, context, error): DeviceMode: ",
                   "ProcessStatus: ", data, context);
    return true;
}

bool ResponseParser::ParseUbReMeasurementResponse(const QByteArray& data, StateMachineContext& context) const
{
    if (context.TestSettings.Get()->GetMeasurementType() != MeasurementType::RCD) {
        return false;
    }
    const QByteArray field = data.left(4).leftJustified(4, '\0');
    const auto re = qFromLittleEndian<float>(field.constData());
    auto* results = new RCDResults(re, NoValue, NoValue);
    results->_values.at(0) = re;
    qWarning().noquote() << QStringLiteral("Re: ") + ReadingText(re);
    ReplaceOwned<MeasurementResults>(context.TestResults, results, &context);
    return true;
}

bool ResponseParser::ParseIaTaMeasurementResponse(const QByteArray& data, StateMachineContext& context) const
{
    const float ia = FixedPointAt(data, 4);
    const float ta = FixedPointAt(data, 6);
    MeasurementResults* results = CreateIaTaResults(context, ia, ta);
    if (results == nullptr) {
        return false;
    }
    results->_values.at(0) = ia;
    results->_values.at(1) = ta;
    qWarning().noquote() << QStringLiteral("Ia: ") + ReadingText(ia) + QStringLiteral(" Ta: ") +
                                ReadingText(ta);
    ReplaceOwned(context.TestResults, results, &context);
    return true;
}

bool ResponseParser::ParseRCDCheckObjectResponseError(const QByteArray& data, Error* error) const
{
    const unsigned code = ByteAt(data, 0);
    qDebug("ResponseParser::ParseRCDCheckObjectResponseError(data. errpr): SavedChkObjErr=%u", code);
    *error = CheckObjectError(code);
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
