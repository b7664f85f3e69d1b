#include "simulator/faults/faults.h"

#include <algorithm>

#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

constexpr int UsualTruncatedLength = 2;

QByteArray WithBadChecksum(QByteArray answer)
{
    const int last = answer.size() - 1;
    answer[last] = static_cast<char>(answer.at(last) ^ 0xFF);
    return answer;
}

/// Returns the position, inside the answer, of the first byte that changes.
int FirstConcerned(const QByteArray& answer, const FaultEntry& fault)
{
    const int first = fault.position < 0 ? answer.size() + fault.position : fault.position;
    return std::clamp<int>(first, 0, answer.size());
}

QByteArray Flipped(QByteArray answer, const FaultEntry& fault)
{
    const int first = FirstConcerned(answer, fault);
    const int end = std::min<int>(first + fault.length, answer.size());
    for (int i = first; i < end; ++i) {
        answer[i] = static_cast<char>(answer.at(i) ^ fault.mask);
    }
    return answer;
}

QByteArray Dropped(QByteArray answer, const FaultEntry& fault)
{
    return answer.remove(FirstConcerned(answer, fault), fault.length);
}

QByteArray Doubled(QByteArray answer, const FaultEntry& fault)
{
    const int first = FirstConcerned(answer, fault);
    return answer.insert(first, answer.mid(first, fault.length));
}

} // namespace

FaultEntry EntryOf(Fault fault)
{
    FaultEntry entry;
    entry.fault = fault;
    if (fault == Fault::Truncated) {
        entry.length = UsualTruncatedLength;
    }
    return entry;
}

QByteArray Damaged(const QByteArray& answer, const FaultEntry& fault)
{
    if (answer.isEmpty()) {
        return {};
    }
    switch (fault.fault) {
    case Fault::None:
    case Fault::Silent:
    case Fault::Refuse:
    case Fault::Slow:
    case Fault::Split:
    case Fault::HangUp:
        return answer;
    case Fault::BadCrc:
        return WithBadChecksum(answer);
    case Fault::GarbageBefore:
        return fault.bytes + answer;
    case Fault::GarbageAfter:
        return answer + fault.bytes;
    case Fault::Truncated:
        return answer.left(fault.length);
    case Fault::WrongLength:
        return Sealed(DataOf(answer) + '\0');
    case Fault::Flip:
        return Flipped(answer, fault);
    case Fault::Drop:
        return Dropped(answer, fault);
    case Fault::Double:
        return Doubled(answer, fault);
    }
    return answer;
}

} // namespace Simulator
