#pragma once

#include <QByteArray>

#include "client/guard/takeover.h"

namespace VesmarClient
{

/// A line of the system log. It is English: no language of the application's is known here.
struct Report {
    int priority; ///< As `syslog` has them.
    QByteArray text;
};

/// What came of a takeover.
Report ReportOf(const QString& program, pid_t process, Takeover::Outcome outcome,
                Vesmar::MeasurementType stopped);

} // namespace VesmarClient
