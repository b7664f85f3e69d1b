#include <VesmarClient/linkstatistics.h>

#include <tuple>

#include <QDebug>

namespace VesmarClient
{

namespace
{

auto Fields(const LinkStatistics& statistics)
{
    return std::tie(statistics.exchanges, statistics.retransmissions, statistics.damaged, statistics.silent,
                    statistics.refused, statistics.recoveries);
}

} // namespace

bool operator==(const LinkStatistics& left, const LinkStatistics& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const LinkStatistics& left, const LinkStatistics& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const LinkStatistics& statistics)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "LinkStatistics(" << statistics.exchanges << " exchanges, "
                    << statistics.retransmissions << " retransmissions, " << statistics.damaged
                    << " damaged, " << statistics.silent << " silent, " << statistics.refused << " refused, "
                    << statistics.recoveries << " recoveries)";
    return debug;
}

} // namespace VesmarClient
