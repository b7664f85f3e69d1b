#pragma once

#include <QByteArray>
#include <QString>

namespace Cli
{

/// The text of a report: the versions, what the doctor finds, who the instrument is, and the latest trace in
/// words. The trace is the end of the log or, without one, that of a connection which is made for it.
QByteArray ReportText(const QString& logPath);

} // namespace Cli
