#include "panel/report/reportbar.h"

#include <QDir>
#include <QStandardPaths>
#include <QtConcurrent>

#include "panel/kit/widgets.h"

namespace Panel
{

ReportBar::ReportBar()
    : _folder(new QLineEdit(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))),
      _write(createButton(tr("Write report"), "report")),
      _written(createText("muted"))
{
    _folder->setObjectName(QStringLiteral("reportFolder"));
    _folder->setAccessibleName(tr("Folder of the reports"));
    _written->setObjectName(QStringLiteral("reportWritten"));
    _written->hide();
    auto* const row = new QHBoxLayout;
    row->addWidget(_folder, 1);
    row->addWidget(_write);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(_written);
    column->addWidget(&_failure);
    connect(_write, &QPushButton::clicked, this, &ReportBar::write);
    connect(&_writing, &QFutureWatcherBase::finished, this, &ReportBar::tell);
    showButton();
}

ReportBar::~ReportBar()
{
    _writing.waitForFinished();
}

void ReportBar::offer(const PlanRecord& plan)
{
    _plan = plan;
    _written->hide();
    _failure.show({});
    showButton();
}

void ReportBar::withdraw()
{
    offer({});
}

/// The plots are drawn here; what takes long is done beside, so that everything else goes on.
void ReportBar::write()
{
    QDir().mkpath(_folder->text());
    _writing.setFuture(QtConcurrent::run(writeReport, reportFilesOf(_plan, _folder->text())));
    showButton();
}

void ReportBar::tell()
{
    const WrittenReport written = _writing.result();
    QStringList names;
    for (const QString& path : written.paths) {
        const QFileInfo file(path);
        names.append(names.isEmpty() ? file.fileName() : QLatin1Char('.') + file.suffix());
    }
    _written->setText(tr("Written: %1").arg(names.join(QStringLiteral(", "))));
    _written->setVisible(!names.isEmpty());
    _failure.show(written.failure);
    if (written.failure.isFailure()) {
        Q_EMIT failed(written.failure);
    }
    showButton();
}

void ReportBar::showButton()
{
    _write->setEnabled(_plan.ended.isValid() && !_writing.isRunning());
}

} // namespace Panel
