#include "cli/doctor/lineanswer.h"

#include "cli/frames/frame.h"

namespace Cli
{

QByteArray StatusRequest()
{
    return QByteArrayLiteral("\x73\xF4\x4E");
}

LineAnswer Classify(const QByteArray& answer)
{
    if (IsStatus(answer)) {
        return LineAnswer::Proper;
    }
    switch (KindOf(answer)) {
    case AnswerKind::None:
        return LineAnswer::Silent;
    case AnswerKind::Refusal:
        return LineAnswer::Refused;
    default:
        return LineAnswer::Damaged;
    }
}

} // namespace Cli
