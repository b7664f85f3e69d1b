#include "client/guard/report.h"

#include <syslog.h>

#include "client/line/deviceholders.h"
#include "client/words/names.h"

namespace VesmarClient
{

namespace
{

using Vesmar::MeasurementType;

QString WhatWasDone(Takeover::Outcome outcome, MeasurementType stopped)
{
    switch (outcome) {
    case Takeover::Outcome::Stopped:
        return stopped == MeasurementType::None
                   ? QStringLiteral("The instrument confirms that nothing runs.")
                   : QStringLiteral("%1 was stopped, and the instrument confirms that.").arg(Name(stopped));
    case Takeover::Outcome::UpdateMode:
        return QStringLiteral("The instrument is in update mode, where it measures nothing.");
    case Takeover::Outcome::NotConfirmed:
        break;
    }
    return QStringLiteral("It is not confirmed that the instrument has stopped: a dangerous voltage may be "
                          "present. Switch the instrument off.");
}

} // namespace

Report ReportOf(const QString& program, pid_t process, Takeover::Outcome outcome, MeasurementType stopped)
{
    const QString text = QStringLiteral("%1 ended in the middle of a measurement. %2")
                             .arg(ShowHolder({process, program}), WhatWasDone(outcome, stopped));
    return {outcome == Takeover::Outcome::NotConfirmed ? LOG_CRIT : LOG_NOTICE, text.toLocal8Bit()};
}

} // namespace VesmarClient
