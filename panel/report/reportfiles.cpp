#include "panel/report/reportfiles.h"

#include <QBuffer>
#include <QDir>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

#include "panel/kit/files.h"
#include "panel/report/reportcsv.h"
#include "panel/report/reporthtml.h"

namespace Panel
{

namespace
{

const char* const Endings[] = {".html", ".pdf", ".csv"};

/// "2026-11-22_101500_appliance-test": of the time and the name.
QString nameOf(const PlanRecord& plan)
{
    QString name = plan.name.toLower();
    name.replace(QRegularExpression(QStringLiteral("[^\\p{L}\\p{N}]+")), QStringLiteral("-"));
    return plan.begun.toString(QStringLiteral("yyyy-MM-dd_HHmmss_")) + name;
}

bool isTaken(const QString& base)
{
    return std::any_of(std::begin(Endings), std::end(Endings), [&base](const char* ending) {
        return QFileInfo::exists(base + QLatin1String(ending));
    });
}

QByteArray pdfOf(const QString& html)
{
    constexpr int DotsPerInch = 96;
    QTextDocument document;
    document.setHtml(html);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    writer.setResolution(DotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    document.print(&writer);
    return pdf.data();
}

} // namespace

ReportFiles reportFilesOf(const PlanRecord& plan, const QString& folder)
{
    const QString wished = QDir(folder).filePath(nameOf(plan));
    QString base = wished;
    for (int number = 2; isTaken(base); ++number) {
        base = QStringLiteral("%1-%2").arg(wished).arg(number);
    }
    return {base, htmlOf(plan), csvOf(plan)};
}

WrittenReport writeReport(const ReportFiles& files)
{
    const QByteArray contents[] = {files.html.toUtf8(), pdfOf(files.html), files.csv};
    WrittenReport written;
    for (int i = 0; i < 3 && !written.failure.isFailure(); ++i) {
        const QString path = files.base + QLatin1String(Endings[i]);
        written.failure = writeNewFile(path, contents[i]);
        if (!written.failure.isFailure()) {
            written.paths.append(path);
        }
    }
    return written;
}

} // namespace Panel
