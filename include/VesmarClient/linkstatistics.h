#pragma once

#include <VesmarClient/enumerations.h>

namespace VesmarClient
{

/// How good the line is: what the driver's trace has told since the line was opened.
struct VESMARCLIENT_EXPORT LinkStatistics {
    Q_GADGET
    Q_PROPERTY(int exchanges MEMBER exchanges)
    Q_PROPERTY(int retransmissions MEMBER retransmissions)
    Q_PROPERTY(int damaged MEMBER damaged)
    Q_PROPERTY(int silent MEMBER silent)
    Q_PROPERTY(int refused MEMBER refused)
    Q_PROPERTY(int recoveries MEMBER recoveries)

public:
    int exchanges = 0;       ///< Requests that were answered properly.
    int retransmissions = 0; ///< Requests that were sent once more.
    int damaged = 0;         ///< Answers that were damaged.
    int silent = 0;          ///< Requests without an answer in time.
    int refused = 0;         ///< Requests that the instrument has refused.
    int recoveries = 0;      ///< How often the link had to be brought back.
};

VESMARCLIENT_EXPORT bool operator==(const LinkStatistics& left, const LinkStatistics& right);
VESMARCLIENT_EXPORT bool operator!=(const LinkStatistics& left, const LinkStatistics& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const LinkStatistics& statistics);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::LinkStatistics)
