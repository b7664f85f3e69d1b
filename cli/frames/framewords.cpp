#include "cli/frames/framewords.h"

#include <QDateTime>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <memory>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

#include "cli/frames/framesettings.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::Error;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using VesmarClient::Meaning;
using VesmarClient::NameAndNumber;

using Values = std::array<float, 6>;

constexpr int AnySize = -1;
constexpr int VersionSize = 25;
constexpr int DateSize = 8;

/// A request: the size of its data, and what has to answer it.
struct RequestKind {
    char letter;
    const char* name;
    int dataSize;
    AnswerKind due;
};

constexpr std::array<RequestKind, 14> RequestKinds{{
    {'s', "read status", 0, AnswerKind::Data},
    {'W', "read version", 0, AnswerKind::Data},
    {'R', "read current date", 0, AnswerKind::Data},
    {'T', "read calibration date", 0, AnswerKind::Data},
    {'e', "read measurement", 0, AnswerKind::Data},
    {'S', "start measurement", 0, AnswerKind::Acknowledge},
    {'h', "stop measurement", 0, AnswerKind::Acknowledge},
    {'V', "initialize update", 0, AnswerKind::Data},
    {'P', "prepare measurement", PreparePayloadSize, AnswerKind::Acknowledge},
    {'x', "change mode", 1, AnswerKind::Acknowledge},
    {'r', "set current date", 6, AnswerKind::Acknowledge},
    {'t', "set calibration date", 6, AnswerKind::Acknowledge},
    {'F', "program flash sector", AnySize, AnswerKind::Acknowledge},
    {'Z', "finish update", 2, AnswerKind::Acknowledge},
}};

const RequestKind* KindOfRequest(const QByteArray& request)
{
    const auto* const kind =
        std::find_if(RequestKinds.cbegin(), RequestKinds.cend(), [&request](const RequestKind& candidate) {
            return request.startsWith(candidate.letter);
        });
    return kind != RequestKinds.cend() ? kind : nullptr;
}

FrameWords Problem(const QString& problem)
{
    return {QString(), {}, problem, {}};
}

/// One value under its name.
FrameWords Value(const char* name, const Shown& value)
{
    return {value.text, {{QLatin1String(name), value.json}}, QString(), {}};
}

int DecimalAt(const QByteArray& frame, int position)
{
    const unsigned byte = ByteAt(frame, position);
    return static_cast<int>((byte >> 4U) * 10 + (byte & 0x0FU));
}

QDateTime DateIn(const QByteArray& bytes)
{
    constexpr int FirstYear = 2000;
    const QDate date(FirstYear + DecimalAt(bytes, 0), DecimalAt(bytes, 1), DecimalAt(bytes, 2));
    const QTime time(DecimalAt(bytes, 3), DecimalAt(bytes, 4), DecimalAt(bytes, 5));
    return {date, time, Qt::UTC};
}

FrameWords WordsOfRequestData(char letter, const QByteArray& data)
{
    switch (letter) {
    case 'P':
        return WordsOfSettings(data);
    case 'x':
        return Value("TesterMode", Show(static_cast<OperationMode>(ByteAt(data, 0))));
    case 'r':
        return Value("CurrentDateTime", Show(DateIn(data)));
    case 't':
        return Value("CalibrationDateTime", Show(DateIn(data)));
    case 'F':
        return {QStringLiteral("%1 bytes").arg(data.size()),
                {{QStringLiteral("size"), data.size()}},
                QString(),
                {}};
    case 'Z':
        return {QStringLiteral("confirmation ") + Hex(data),
                {{QStringLiteral("confirmation"), Hex(data)}},
                QString(),
                {}};
    default:
        return {};
    }
}

QString ErrorText(Error error)
{
    return error == Error::NoErrors ? Meaning(error) : Show(error).text;
}

/// What the instrument has found wrong with the object under test.
Error ObjectError(unsigned code)
{
    struct Row {
        unsigned code;
        Error error;
    };
    constexpr std::array<Row, 8> Rows{{{0, Error::NoErrors},
                                       {2, Error::RCDCheckObject2},
                                       {3, Error::RCDCheckObject3},
                                       {4, Error::RCDCheckObject4},
                                       {7, Error::RCDCheckObject7},
                                       {8, Error::RCDCheckObject8},
                                       {9, Error::RCDCheckObject9},
                                       {10, Error::RCDCheckObjectULNIECInvalid}}};
    const auto* const row = std::find_if(Rows.cbegin(), Rows.cend(),
                                         [code](const Row& candidate) { return candidate.code == code; });
    return row != Rows.cend() ? row->error : Error::RCDCheckObjectFailed;
}

FrameWords WordsOfObjectCheck(const QByteArray& frame)
{
    const Error error = ObjectError(ByteAt(frame, 0));
    FrameWords words = Value("ErrorCode", Show(error));
    words.text = QStringLiteral("check of the object under test: ") + ErrorText(error);
    words.error = error;
    return words;
}

/// A text ends at a zero byte.
QString TextAt(const QByteArray& frame, int position, int size)
{
    const QByteArray field = frame.mid(position, size);
    return QString::fromLatin1(field.constData());
}

/// Digits, or else four numbers.
QString BuildNumberOf(const QByteArray& field)
{
    const bool isText =
        std::all_of(field.cbegin(), field.cend(), [](char byte) { return byte >= '0' && byte <= '9'; });
    if (isText) {
        return QString::fromLatin1(field);
    }
    return QString::number(1000 * ByteAt(field, 0) + 100 * ByteAt(field, 1) + 10 * ByteAt(field, 2) +
                           ByteAt(field, 3));
}

FrameWords WordsOfVersion(const QByteArray& frame)
{
    Vesmar::TesterInformation identity(nullptr);
    identity.DeviceName = TextAt(frame, 0, 3);
    identity.DeviceCode = TextAt(frame, 3, 3);
    identity.SerialNumber = TextAt(frame, 6, 6);
    identity.Version = TextAt(frame, 12, 1) + QLatin1Char('.') + TextAt(frame, 13, 2);
    identity.VersionCode = TextAt(frame, 15, 2);
    identity.RevisionCode = TextAt(frame, 17, 2);
    identity.BuildNumber = BuildNumberOf(frame.mid(19, 4));
    return Value("DeviceInformation", Show(&identity));
}

template <typename Results, typename... Numbers>
FrameWords WordsOfResults(Numbers... numbers)
{
    const Results results(numbers...);
    return Value("TestResults", Show(static_cast<const MeasurementResults*>(&results)));
}

FrameWords WordsOfUnknownValues(const Values& values)
{
    QStringList texts;
    for (const float value : values) {
        texts.append(ShowReading(value).text);
    }
    return {QStringLiteral("values of an unknown function: ") + texts.join(QStringLiteral(", ")), {}, {}, {}};
}

FrameWords WordsOfValues(MeasurementType function, const Values& v)
{
    using namespace Vesmar;
    switch (function) {
    case MeasurementType::Monitoring:
        return WordsOfResults<MonitoringResults>(v[0], v[1], v[2]);
    case MeasurementType::RLN:
        return WordsOfResults<RLNResults>(v[0], v[1], v[2], v[3], v[4]);
    case MeasurementType::RPE:
        return WordsOfResults<RPEResults>(v[0], v[1], v[2]);
    case MeasurementType::RISO:
        return WordsOfResults<RISOResults>(v[0], v[1], v[2]);
    case MeasurementType::ISUB:
        return WordsOfResults<ISUBResults>(v[0], v[1]);
    case MeasurementType::IPE:
        return WordsOfResults<IPEResults>(v[0], v[1]);
    case MeasurementType::IDELTA:
        return WordsOfResults<IDELTAResults>(v[0], v[1]);
    case MeasurementType::IT:
        return WordsOfResults<ITResults>(v[0]);
    case MeasurementType::POWER:
        return WordsOfResults<POWERResults>(v[0], v[1], v[2], v[3], v[4], v[5]);
    case MeasurementType::HVTest:
        return WordsOfResults<HVTestResults>(v[0], v[1], v[2], v[3], v[4], v[5]);
    case MeasurementType::IEC:
        return WordsOfResults<IECResults>(v[0], v[1], v[2], v[3], v[4]);
    default:
        return WordsOfUnknownValues(v);
    }
}

/// The status tells IEC and RLN by the same number; the settings tell them apart.
FrameWords WordsOfMeasurement(const QByteArray& frame, const FrameContext& context)
{
    Values values{};
    qFromLittleEndian<float>(frame.constData(), static_cast<int>(values.size()), values.data());
    MeasurementType function = context.function.value_or(MeasurementType::None);
    if (function == MeasurementType::RLN) {
        function =
            PreparedFunction(context.prepared) == MeasurementType::IEC ? MeasurementType::IEC : function;
    }
    return WordsOfValues(function, values);
}

FrameWords WrongSize(const char* what, int due, int size)
{
    return Problem(QStringLiteral("%1 has %2 bytes, and not %3: the library does not take it")
                       .arg(QLatin1String(what))
                       .arg(due)
                       .arg(size));
}

/// In a test of its own kind, a status may have any length.
bool IsTakenAsStatus(const QByteArray& frame, const FrameContext& context)
{
    return frame.size() == StatusSize ||
           (context.isOfTest.value_or(false) && IsRCD(StatusIn(frame).function));
}

FrameWords WordsOfData(char letter, const QByteArray& frame, const FrameContext& context)
{
    switch (letter) {
    case 's':
        return IsTakenAsStatus(frame, context) ? WordsOfStatus(frame, context.isOfTest)
                                               : WrongSize("a status", StatusSize, frame.size());
    case 'W':
        return frame.size() == VersionSize ? WordsOfVersion(frame)
                                           : WrongSize("a version", VersionSize, frame.size());
    case 'R':
    case 'T':
        return frame.size() == DateSize
                   ? Value(letter == 'R' ? "CurrentDateTime" : "CalibrationDateTime", Show(DateIn(frame)))
                   : WrongSize("a date", DateSize, frame.size());
    case 'e':
        if (IsRCD(context.function.value_or(MeasurementType::None))) {
            return WordsOfObjectCheck(frame); // Of any length.
        }
        return frame.size() == MeasurementSize ? WordsOfMeasurement(frame, context)
                                               : WrongSize("a measurement", MeasurementSize, frame.size());
    case 'V':
        return {QStringLiteral("ready for the image"), {}, {}, {}};
    default:
        return {QStringLiteral("%1 bytes of data").arg(frame.size()), {}, {}, {}};
    }
}

/// A reading in ten-thousandths, low byte first.
float FixedPointAt(const QByteArray& frame, int position)
{
    constexpr unsigned NoReading = 0xEEEE;
    constexpr float Parts = 10000.0F;
    const unsigned value = ByteAt(frame, position) | (ByteAt(frame, position + 1) << 8U);
    return value == NoReading ? MeasurementResults::NoValue : static_cast<float>(value) / Parts;
}

} // namespace

FrameWords WordsOfRequest(const QByteArray& request)
{
    const RequestKind* const kind = KindOfRequest(request);
    FrameWords words;
    if (kind == nullptr) {
        words.problem = QStringLiteral("there is no such request");
    } else if (!IsIntact(request)) {
        words.problem = QStringLiteral("the request's checksum is wrong");
    } else if (const QByteArray data = request.mid(1).chopped(ChecksumSize);
               kind->dataSize != AnySize && data.size() != kind->dataSize) {
        words.problem = QStringLiteral("the request's length is wrong");
    } else {
        words = WordsOfRequestData(kind->letter, data);
    }
    words.fields.insert(QStringLiteral("name"), kind != nullptr ? QString::fromLatin1(kind->name)
                                                                : QStringLiteral("unknown request"));
    return words;
}

FrameWords WordsOfAnswer(const QByteArray& request, const QByteArray& answer, const FrameContext& context)
{
    const RequestKind* const kind = KindOfRequest(request);
    if (KindOf(answer) == AnswerKind::Acknowledge) {
        FrameWords words{QStringLiteral("acknowledged"), {}, {}, {}};
        if (kind != nullptr && kind->due == AnswerKind::Data) {
            words.problem = QStringLiteral("data is due: the library does not take an acknowledge");
        }
        return words;
    }
    FrameWords words = WordsOfData(kind != nullptr ? kind->letter : '\0', answer, context);
    if (kind != nullptr && kind->due == AnswerKind::Acknowledge) {
        words.problem = QStringLiteral("an acknowledge is due: the library does not take data");
    }
    return words;
}

FrameWords WordsOfStatus(const QByteArray& frame, std::optional<bool> isOfTest)
{
    InstrumentStatus status = StatusIn(frame);
    const Error error = status.error;
    const bool hasErrorOfTest = IsRCD(status.function) && error != Error::NoErrors;
    const bool isCertain = !hasErrorOfTest || isOfTest.has_value();
    if (hasErrorOfTest && isOfTest.value_or(false)) {
        status.error = InTest(error);
    }
    const QString inTest =
        isCertain ? QString() : QStringLiteral("; or, in an RCD test, ") + NameAndNumber(InTest(error));
    const bool isIdle = status.startTestResult.has_value();
    const Shown state = isIdle ? Show(*status.startTestResult) : Show(*status.functionState);
    const QString process =
        isIdle ? QStringLiteral("start test %1").arg(static_cast<int>(*status.startTestResult)) : state.text;

    FrameWords words;
    words.text = NameAndNumber(status.mode) + QStringLiteral(", ") + NameAndNumber(status.function) +
                 QStringLiteral(", ") + process + QStringLiteral(", ") + ErrorText(status.error) + inTest +
                 (status.hasNewMeasurement ? QStringLiteral(", new reading") : QString());
    words.fields = {{QStringLiteral("TesterMode"), Show(status.mode).json},
                    {QStringLiteral("CurrentMeasurementType"), Show(status.function).json},
                    {isIdle ? QStringLiteral("StartTestStatus") : QStringLiteral("MeasurementFunctionStatus"),
                     state.json},
                    {QStringLiteral("ErrorCode"), Show(status.error).json},
                    {QStringLiteral("NewMeasurement"), status.hasNewMeasurement}};
    if (isCertain) {
        words.error = status.error;
    }
    return words;
}

FrameWords WordsOfTestResult(const QByteArray& frame, const FrameContext& context)
{
    constexpr unsigned UbRe = 0;
    constexpr float None = MeasurementResults::NoValue;
    const float ia = FixedPointAt(frame, 4);
    const float ta = FixedPointAt(frame, 6);
    const auto re = qFromLittleEndian<float>(frame.constData());
    const auto function = PreparedFunction(context.prepared);
    if (function == MeasurementType::RCDIEC) {
        return WordsOfResults<Vesmar::RCDIECResults>(ia, ta);
    }
    if (function == MeasurementType::RCD) {
        return ModeOfTest(context.prepared) == UbRe
                   ? WordsOfResults<Vesmar::RCDResults>(re, None, None)
                   : WordsOfResults<Vesmar::RCDResults>(ReOfTest(context.prepared), ia, ta);
    }
    return {
        QStringLiteral("result of an RCD test that was prepared before the log: Re %1, or Ia %2 and Ta %3")
            .arg(ShowReading(re).text, ShowReading(ia).text, ShowReading(ta).text),
        {},
        {},
        {}};
}

} // namespace Cli
