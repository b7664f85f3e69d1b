#include "decode/frames/requests.h"

#include <algorithm>
#include <array>

#include <Vesmar/operationmode.h>

#include "decode/frames/settings.h"
#include "protocol/checksum.h"
#include "protocol/dates.h"
#include "protocol/frames.h"
#include "protocol/payload.h"

namespace Decode
{

namespace
{

namespace Command = Vesmar::Command;

constexpr int AnySize = -1;

constexpr std::array<RequestKind, 14> RequestKinds{{
    {Command::Status, QT_TRANSLATE_NOOP("Decode", "read status"), 0, AnswerKind::Data},
    {Command::Version, QT_TRANSLATE_NOOP("Decode", "read version"), 0, AnswerKind::Data},
    {Command::ReadCurrentDate, QT_TRANSLATE_NOOP("Decode", "read current date"), 0, AnswerKind::Data},
    {Command::ReadCalibrationDate, QT_TRANSLATE_NOOP("Decode", "read calibration date"), 0, AnswerKind::Data},
    {Command::ReadMeasurement, QT_TRANSLATE_NOOP("Decode", "read measurement"), 0, AnswerKind::Data},
    {Command::StartMeasurement, QT_TRANSLATE_NOOP("Decode", "start measurement"), 0, AnswerKind::Acknowledge},
    {Command::StopMeasurement, QT_TRANSLATE_NOOP("Decode", "stop measurement"), 0, AnswerKind::Acknowledge},
    {Command::InitializeUpdate, QT_TRANSLATE_NOOP("Decode", "initialize update"), 0, AnswerKind::Data},
    {Command::PrepareMeasurement, QT_TRANSLATE_NOOP("Decode", "prepare measurement"),
     Vesmar::PreparePayloadSize, AnswerKind::Acknowledge},
    {Command::ChangeTesterMode, QT_TRANSLATE_NOOP("Decode", "change mode"), 1, AnswerKind::Acknowledge},
    {Command::SetCurrentDate, QT_TRANSLATE_NOOP("Decode", "set current date"), 6, AnswerKind::Acknowledge},
    {Command::SetCalibrationDate, QT_TRANSLATE_NOOP("Decode", "set calibration date"), 6,
     AnswerKind::Acknowledge},
    {Command::ProgramFlashSector, QT_TRANSLATE_NOOP("Decode", "program flash sector"), AnySize,
     AnswerKind::Acknowledge},
    {Command::FinishUpdate, QT_TRANSLATE_NOOP("Decode", "finish update"), 2, AnswerKind::Acknowledge},
}};

FrameWords WordsOfRequestData(char letter, const QByteArray& data)
{
    switch (letter) {
    case Command::PrepareMeasurement:
        return WordsOfSettings(data);
    case Command::ChangeTesterMode:
        return ValueWords("TesterMode", static_cast<Vesmar::OperationMode>(Vesmar::ByteAt(data, 0)));
    case Command::SetCurrentDate:
        return ValueWords("CurrentDateTime", DateIn(data));
    case Command::SetCalibrationDate:
        return ValueWords("CalibrationDateTime", DateIn(data));
    case Command::ProgramFlashSector:
        return {
            Words::tr("%1 bytes").arg(data.size()), {{"size", static_cast<int>(data.size())}}, QString(), {}};
    case Command::FinishUpdate:
        return {Words::tr("confirmation %1").arg(Hex(data)), {{"confirmation", Hex(data)}}, QString(), {}};
    default:
        return {};
    }
}

} // namespace

const RequestKind* KindOfRequest(const QByteArray& request)
{
    const auto* const kind =
        std::find_if(RequestKinds.cbegin(), RequestKinds.cend(), [&request](const RequestKind& candidate) {
            return request.startsWith(candidate.letter);
        });
    return kind != RequestKinds.cend() ? kind : nullptr;
}

QDateTime DateIn(const QByteArray& bytes)
{
    return {Vesmar::DecodeDate(bytes), Vesmar::DecodeTime(bytes), Qt::UTC};
}

QString NameOfRequest(const QByteArray& request)
{
    const RequestKind* const kind = KindOfRequest(request);
    return kind != nullptr ? Words::tr(kind->name) : Words::tr("unknown request");
}

FrameWords WordsOfRequest(const QByteArray& request)
{
    const RequestKind* const kind = KindOfRequest(request);
    FrameWords words;
    if (kind == nullptr) {
        words.problem = Words::tr("there is no such request");
    } else if (!IsIntact(request)) {
        words.problem = Words::tr("the request's checksum is wrong");
    } else if (const QByteArray data = request.mid(1).chopped(Vesmar::ChecksumSize);
               kind->dataSize != AnySize && data.size() != kind->dataSize) {
        words.problem = Words::tr("the request's length is wrong");
    } else {
        words = WordsOfRequestData(kind->letter, data);
    }
    return words;
}

} // namespace Decode
