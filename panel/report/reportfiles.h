#pragma once

#include "panel/plan/planrecord.h"

namespace Panel
{

/// The three files of a report, as they are to be written.
struct ReportFiles {
    QString base; ///< The path without its ending.
    QString html;
    QByteArray csv;
};

/// What was written, and why not all of it was.
struct WrittenReport {
    QStringList paths;
    VesmarClient::Failure failure;
};

/// The report of a plan, to be written into the folder under a name that no file has yet. Only on the
/// application's thread.
ReportFiles reportFilesOf(const PlanRecord& plan, const QString& folder);

/// Writes the report as HTML, PDF and CSV. It takes a while where a measurement was long: any thread may do
/// it.
WrittenReport writeReport(const ReportFiles& files);

} // namespace Panel
