#include <VesmarClient/gap.h>

#include <QDebug>

namespace VesmarClient
{

bool operator==(const Gap& left, const Gap& right)
{
    return left.begin == right.begin && left.duration == right.duration;
}

bool operator!=(const Gap& left, const Gap& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Gap& gap)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Gap(" << gap.duration << " ms after " << gap.begin << " ms)";
    return debug;
}

} // namespace VesmarClient
