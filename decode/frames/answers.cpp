#include "decode/frames/answers.h"

#include <memory>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>

#include "client/catalogue/conversions.h"
#include "decode/frames/requests.h"
#include "protocol/classification.h"
#include "protocol/frames.h"
#include "protocol/readings.h"
#include "protocol/version.h"

namespace Decode
{

namespace
{

using Vesmar::Error;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using VesmarClient::Meaning;
using VesmarClient::NameAndNumber;

namespace Command = Vesmar::Command;

FrameWords Problem(const QString& problem)
{
    return {QString(), {}, problem, {}};
}

QString ErrorText(Error error)
{
    return error == Error::NoErrors ? Meaning(error) : Text(error);
}

FrameWords WordsOfObjectCheck(const QByteArray& frame)
{
    const Error error = Vesmar::DecodeObjectCheck(frame);
    FrameWords words = ValueWords("ErrorCode", error);
    words.text = Words::tr("check of the object under test: %1").arg(ErrorText(error));
    words.error = error;
    return words;
}

FrameWords WordsOfVersion(const QByteArray& frame)
{
    Vesmar::TesterInformation identity(nullptr);
    Vesmar::DecodeVersion(frame, identity);
    return ValueWords("DeviceInformation", VesmarClient::IdentityOf(identity));
}

FrameWords WordsOfResults(const MeasurementResults& results)
{
    return ValueWords("TestResults",
                      Readings{results.GetMeasurementType(), VesmarClient::ReadingsOf(results)});
}

FrameWords WordsOfUnknownValues(const Vesmar::Readings& values)
{
    QStringList texts;
    for (const float value : values) {
        texts.append(Text(value));
    }
    return {Words::tr("values of an unknown function: %1").arg(texts.join(QStringLiteral(", "))), {}, {}, {}};
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
    return Problem(Words::tr("%1 has %2 bytes, and not %3: the library does not take it")
                       .arg(Words::tr(what))
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
        return IsAcceptedAsStatus(frame, context) ? WordsOfStatus(frame, context.isOfTest)
                                                  : WrongSize(QT_TRANSLATE_NOOP("Decode", "a status"),
                                                              Vesmar::StatusFrameSize, frame.size());
    case Command::Version:
        return frame.size() == Vesmar::VersionFrameSize ? WordsOfVersion(frame)
                                                        : WrongSize(QT_TRANSLATE_NOOP("Decode", "a version"),
                                                                    Vesmar::VersionFrameSize, frame.size());
    case Command::ReadCurrentDate:
    case Command::ReadCalibrationDate:
        return frame.size() == Vesmar::DateFrameSize
                   ? ValueWords(letter == Command::ReadCurrentDate ? "CurrentDateTime"
                                                                   : "CalibrationDateTime",
                                DateIn(frame))
                   : WrongSize(QT_TRANSLATE_NOOP("Decode", "a date"), Vesmar::DateFrameSize, frame.size());
    case Command::ReadMeasurement:
        if (Vesmar::IsRCD(context.function.value_or(MeasurementType::None))) {
            return WordsOfObjectCheck(frame); // Of any length.
        }
        return frame.size() == Vesmar::MeasurementFrameSize
                   ? WordsOfMeasurement(frame, context)
                   : WrongSize(QT_TRANSLATE_NOOP("Decode", "a measurement"), Vesmar::MeasurementFrameSize,
                               frame.size());
    case Command::InitializeUpdate:
        return {Words::tr("ready for the image"), {}, {}, {}};
    default:
        return {Words::tr("%1 bytes of data").arg(frame.size()), {}, {}, {}};
    }
}

} // namespace

FrameWords WordsOfAnswer(const QByteArray& request, const QByteArray& answer, const FrameContext& context)
{
    const RequestKind* const kind = KindOfRequest(request);
    if (KindOf(answer) == AnswerKind::Acknowledge) {
        FrameWords words{Words::tr("acknowledged"), {}, {}, {}};
        if (kind != nullptr && kind->due == AnswerKind::Data) {
            words.problem = Words::tr("data is due: the library does not take an acknowledge");
        }
        return words;
    }
    FrameWords words = WordsOfData(kind != nullptr ? kind->letter : '\0', answer, context);
    if (kind != nullptr && kind->due == AnswerKind::Acknowledge) {
        words.problem = Words::tr("an acknowledge is due: the library does not take data");
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
    const QString told = ErrorText(status.error);
    const QString errorText =
        isCertain
            ? told
            : Words::tr("%1; or, in an RCD test, %2").arg(told, NameAndNumber(Vesmar::ErrorInRCDTest(error)));
    const bool isIdle = status.startTestResult.has_value();
    const QString process = isIdle ? Words::tr("start test %1").arg(static_cast<int>(*status.startTestResult))
                                   : Text(*status.functionState);

    FrameWords words;
    const QString comma = QStringLiteral(", ");
    words.text = Text(status.mode) + comma + Text(status.function) + comma + process + comma + errorText +
                 (status.hasNewMeasurement ? comma + Words::tr("new reading") : QString());
    words.fields = {{"TesterMode", status.mode},
                    {"CurrentMeasurementType", status.function},
                    isIdle ? Field{"StartTestStatus", *status.startTestResult}
                           : Field{"MeasurementFunctionStatus", *status.functionState},
                    {"ErrorCode", status.error},
                    {"NewMeasurement", status.hasNewMeasurement}};
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
    return {Words::tr("result of an RCD test that was prepared before the log: Re %1, or Ia %2 and Ta %3")
                .arg(Text(re), Text(ia), Text(ta)),
            {},
            {},
            {}};
}

} // namespace Decode
