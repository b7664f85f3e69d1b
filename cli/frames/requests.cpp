#include "cli/frames/requests.h"

#include <algorithm>
#include <array>

#include <Vesmar/operationmode.h>

#include "cli/frames/settings.h"
#include "cli/words/format.h"
#include "protocol/checksum.h"
#include "protocol/dates.h"
#include "protocol/frames.h"
#include "protocol/payload.h"

namespace Cli
{

namespace
{

namespace Command = Vesmar::Command;

constexpr int AnySize = -1;

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

FrameWords WordsOfRequestData(char letter, const QByteArray& data)
{
    switch (letter) {
    case Command::PrepareMeasurement:
        return WordsOfSettings(data);
    case Command::ChangeTesterMode:
        return ValueWords("TesterMode", Show(static_cast<Vesmar::OperationMode>(Vesmar::ByteAt(data, 0))));
    case Command::SetCurrentDate:
        return ValueWords("CurrentDateTime", Show(DateIn(data)));
    case Command::SetCalibrationDate:
        return ValueWords("CalibrationDateTime", Show(DateIn(data)));
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

} // namespace Cli
