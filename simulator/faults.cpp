#include "simulator/faults.h"

#include "simulator/frames.h"

namespace Simulator
{

namespace
{

QByteArray StrayBytes()
{
    return QByteArrayLiteral("\x55\xAA");
}

QByteArray WithBadChecksum(QByteArray answer)
{
    const int last = answer.size() - 1;
    answer[last] = static_cast<char>(answer.at(last) ^ 0xFF);
    return answer;
}

} // namespace

QByteArray Damaged(const QByteArray& answer, Fault fault)
{
    if (answer.isEmpty()) {
        return {};
    }
    switch (fault) {
    case Fault::None:
    case Fault::Silent:
    case Fault::Refuse:
    case Fault::Slow:
    case Fault::HangUp:
        return answer;
    case Fault::BadCrc:
        return WithBadChecksum(answer);
    case Fault::GarbageBefore:
        return StrayBytes() + answer;
    case Fault::GarbageAfter:
        return answer + StrayBytes();
    case Fault::Truncated:
        return answer.left(2);
    case Fault::WrongLength:
        return Sealed(DataOf(answer) + '\0');
    }
    return answer;
}

} // namespace Simulator
