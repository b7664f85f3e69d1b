#pragma once

#include <QObject>

#include <VesmarClient/export.h>

namespace VesmarClient
{

/// A time without a reading in a measurement that was running.
struct VESMARCLIENT_EXPORT Gap {
    Q_GADGET
    Q_PROPERTY(qint64 begin MEMBER begin)
    Q_PROPERTY(qint64 duration MEMBER duration)

public:
    qint64 begin = 0;    ///< `Job::elapsed` of the last reading before the gap, in milliseconds.
    qint64 duration = 0; ///< Until the next reading, or so far, in milliseconds.
};

VESMARCLIENT_EXPORT bool operator==(const Gap& left, const Gap& right);
VESMARCLIENT_EXPORT bool operator!=(const Gap& left, const Gap& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Gap& gap);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::Gap)
