#include "decode/frames/frame.h"

#include "protocol/checksum.h"
#include "protocol/frames.h"

namespace Decode
{

QString Hex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

bool IsIntact(const QByteArray& frame)
{
    static const QVector<int> table = Vesmar::ChecksumTable();
    return Vesmar::EndsWithChecksum(table, frame);
}

AnswerKind KindOf(const QByteArray& answer)
{
    if (answer.isEmpty()) {
        return AnswerKind::None;
    }
    if (Vesmar::IsRefusal(answer)) {
        return AnswerKind::Refusal;
    }
    if (Vesmar::IsAcknowledge(answer)) {
        return AnswerKind::Acknowledge;
    }
    return IsIntact(answer) ? AnswerKind::Data : AnswerKind::Damaged;
}

std::optional<Vesmar::Status> StatusIn(const QByteArray& answer)
{
    const bool isStatus = answer.size() == Vesmar::StatusFrameSize && KindOf(answer) == AnswerKind::Data;
    return isStatus ? std::optional(Vesmar::DecodeStatus(answer)) : std::nullopt;
}

} // namespace Decode
