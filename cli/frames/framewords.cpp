#include "cli/frames/framewords.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <memory>

#include <Vesmar/operationmode.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>

#include "cli/frames/framesettings.h"
#include "cli/words/format.h"
#include "protocol/checksum.h"
#include "protocol/classification.h"
#include "protocol/dates.h"
#include "protocol/frames.h"
#include "protocol/readings.h"
#include "protocol/version.h"

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

namespace Command = Vesmar::Command;

constexpr int AnySize = -1;

/// A request, with the size of its data and the kind of answer that is due.
struct RequestKind {
    char letter;
    const char* name;
    int dataSize;
    AnswerKind due;
};

constexpr std::array<RequestKind, 14> RequestKinds{{
    {Command::Status, "read status", 0, AnswerKind::Data},
    {Command::Version, "read version", 0, AnswerKind::Data},
    {Command::ReadCurrentDate, "read current date", 0, AnswerKind::Data},
    {Command::ReadCalibrationDate, "read calibration date", 0, AnswerKind::Data},
    {Command::ReadMeasurement, "read measurement", 0, AnswerKind::Data},
    {Command::StartMeasurement, "start measurement", 0, AnswerKind::Acknowledge},
    {Command::StopMeasurement, "stop measurement", 0, AnswerKind::Acknowledge},
    {Command::InitializeUpdate, "initialize update", 0, AnswerKind::Data},
    {Command::PrepareMeasurement, "prepare measurement", Vesmar::PreparePayloadSize, AnswerKind::Acknowledge},
    {Command::ChangeTesterMode, "change mode", 1, AnswerKind::Acknowledge},
    {Command::SetCurrentDate, "set current date", 6, AnswerKind::Acknowledge},
    {Command::SetCalibrationDate, "set calibration date", 6, AnswerKind::Acknowledge},
    {Command::ProgramFlashSector, "program flash sector", AnySize, AnswerKind::Acknowledge},
    {Command::FinishUpdate, "finish update", 2, AnswerKind::Acknowledge},
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

/// The words of one value, which is a field of this name.
FrameWords Value(const char* name, const Shown& value)
{
    return {value.text, {{QLatin1String(name), value.json}}, QString(), {}};
}

QDateTime DateIn(const QByteArray& bytes)
{
    return {Vesmar::DecodeDate(bytes), Vesmar::DecodeTime(bytes), Qt::UTC};
}

FrameWords WordsOfRequestData(char letter, const QByteArray& data)
{
    switch (letter) {
    case Command::PrepareMeasurement:
        return WordsOfSettings(data);
    case Command::ChangeTesterMode:
        return Value("TesterMode", Show(static_cast<OperationMode>(Vesmar::ByteAt(data, 0))));
    case Command::SetCurrentDate:
        return Value("CurrentDateTime", Show(DateIn(data)));
    case Command::SetCalibrationDate:
        return Value("CalibrationDateTime", Show(DateIn(data)));
    case Command::ProgramFlashSector:
        return {QStringLiteral("%1 bytes").arg(data.size()),
                {{QStringLiteral("size"), data.size()}},
                QString(),
                {}};
    case Command::FinishUpdate:
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

FrameWords WordsOfObjectCheck(const QByteArray& frame)
{
    const Error error = Vesmar::DecodeObjectCheck(frame);
    FrameWords words = Value("ErrorCode", Show(error));
    words.text = QStringLiteral("check of the object under test: ") + ErrorText(error);
    words.error = error;
    return words;
}

FrameWords WordsOfVersion(const QByteArray& frame)
{
    Vesmar::TesterInformation identity(nullptr);
    Vesmar::DecodeVersion(frame, identity);
    return Value("DeviceInformation", Show(&identity));
}

FrameWords WordsOfResults(const MeasurementResults& results)
{
    return Value("TestResults", Show(&results));
}

FrameWords WordsOfUnknownValues(const Vesmar::Readings& values)
{
    QStringList texts;
    for (const float value : values) {
        texts.append(ShowReading(value).text);
    }
    return {QStringLiteral("values of an unknown function: ") + texts.join(QStringLiteral(", ")), {}, {}, {}};
}

/// The status names IEC and RLN by the same number; the settings tell them apart.
MeasurementType MeasuredFunction(const FrameContext& context)
{
    const bool isIEC = context.function == MeasurementType::RLN && context.prepared &&
                       context.prepared->function == MeasurementType::IEC;
    return isIEC ? MeasurementType::IEC : context.function.value_or(MeasurementType::None);
}

FrameWords WordsOfMeasurement(const QByteArray& frame, const FrameContext& context)
{
    const Vesmar::Readings values = Vesmar::DecodeReadings(frame);
    const Vesmar::ReadingsKind* const kind = Vesmar::FindReadingsKind(MeasuredFunction(context));
    if (kind == nullptr) {
        return WordsOfUnknownValues(values);
    }
    const std::unique_ptr<const MeasurementResults> results(kind->create(values));
    return WordsOfResults(*results);
}

FrameWords WrongSize(const char* what, int due, int size)
{
    return Problem(QStringLiteral("%1 has %2 bytes, and not %3: the library does not take it")
                       .arg(QLatin1String(what))
                       .arg(due)
                       .arg(size));
}

/// In an RCD test, the library accepts a status of any length.
bool IsAcceptedAsStatus(const QByteArray& frame, const FrameContext& context)
{
    return frame.size() == Vesmar::StatusFrameSize ||
           (context.isOfTest.value_or(false) && Vesmar::IsRCD(Vesmar::DecodeStatus(frame).function));
}

FrameWords WordsOfData(char letter, const QByteArray& frame, const FrameContext& context)
{
    switch (letter) {
    case Command::Status:
        return IsAcceptedAsStatus(frame, context)
                   ? WordsOfStatus(frame, context.isOfTest)
                   : WrongSize("a status", Vesmar::StatusFrameSize, frame.size());
    case Command::Version:
        return frame.size() == Vesmar::VersionFrameSize
                   ? WordsOfVersion(frame)
                   : WrongSize("a version", Vesmar::VersionFrameSize, frame.size());
    case Command::ReadCurrentDate:
    case Command::ReadCalibrationDate:
        return frame.size() == Vesmar::DateFrameSize
                   ? Value(letter == Command::ReadCurrentDate ? "CurrentDateTime" : "CalibrationDateTime",
                           Show(DateIn(frame)))
                   : WrongSize("a date", Vesmar::DateFrameSize, frame.size());
    case Command::ReadMeasurement:
        if (Vesmar::IsRCD(context.function.value_or(MeasurementType::None))) {
            return WordsOfObjectCheck(frame); // Of any length.
        }
        return frame.size() == Vesmar::MeasurementFrameSize
                   ? WordsOfMeasurement(frame, context)
                   : WrongSize("a measurement", Vesmar::MeasurementFrameSize, frame.size());
    case Command::InitializeUpdate:
        return {QStringLiteral("ready for the image"), {}, {}, {}};
    default:
        return {QStringLiteral("%1 bytes of data").arg(frame.size()), {}, {}, {}};
    }
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
    } else if (const QByteArray data = request.mid(1).chopped(Vesmar::ChecksumSize);
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
    Vesmar::Status status = Vesmar::DecodeStatus(frame);
    const Error error = status.error;
    const bool hasErrorOfTest = Vesmar::IsRCD(status.function) && error != Error::NoErrors;
    const bool isCertain = !hasErrorOfTest || isOfTest.has_value();
    if (hasErrorOfTest && isOfTest.value_or(false)) {
        status.error = Vesmar::ErrorInRCDTest(error);
    }
    const QString inTest =
        isCertain ? QString()
                  : QStringLiteral("; or, in an RCD test, ") + NameAndNumber(Vesmar::ErrorInRCDTest(error));
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
    constexpr int UbRe = 0;
    constexpr float None = MeasurementResults::NoValue;
    const float re = Vesmar::DecodeRe(frame);
    const auto [ia, ta] = Vesmar::DecodeIaTa(frame);
    const auto& prepared = context.prepared;
    if (prepared && prepared->function == MeasurementType::RCDIEC) {
        return WordsOfResults(Vesmar::RCDIECResults(ia, ta));
    }
    if (prepared && prepared->function == MeasurementType::RCD) {
        return WordsOfResults(prepared->options.mode == UbRe ? Vesmar::RCDResults(re, None, None)
                                                             : Vesmar::RCDResults(prepared->re, ia, ta));
    }
    return {
        QStringLiteral("result of an RCD test that was prepared before the log: Re %1, or Ia %2 and Ta %3")
            .arg(ShowReading(re).text, ShowReading(ia).text, ShowReading(ta).text),
        {},
        {},
        {}};
}

} // namespace Cli
