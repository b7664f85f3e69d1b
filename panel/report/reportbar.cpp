#include "panel/report/reportbar.h"

#include <QDir>
#include <QStandardPaths>
#include <QtConcurrent>

#include "panel/kit/filechooser.h"
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
    QPushButton* const choose = createButton(tr("Folder …"), "chooseFolder");
    row->addWidget(_folder, 1);
    row->addWidget(choose);
    row->addWidget(_write);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(_written);
    column->addWidget(&_failure);
    connect(choose, &QPushButton::clicked, this, &ReportBar::askForFolder);
    connect(_write, &QPushButton::clicked, this, &ReportBar::write);
    connect(&_writing, &QFutureWatcherBase::finished, this, &ReportBar::tell);
    withdraw();
}

ReportBar::~ReportBar()
{
    _writing.waitForFinished();
}

void ReportBar::offer(const PlanRecord& plan)
{
    _plan = plan;
    _isAsked = false;
    _written->hide();
    _failure.show({});
    enableWrite();
}

void ReportBar::enableWrite()
{
    _write->setEnabled(_plan.ended.isValid() && _writing.isFinished());
}

void ReportBar::withdraw()
{
    offer({});
}

void ReportBar::askForFolder()
{
    const auto* const chooser =
        new FileChooser(this, tr("Folder of the reports"), FileChooser::Wanted::Folder);
    connect(chooser, &FileChooser::chosen, _folder, &QLineEdit::setText);
}

/// The plots are drawn here; what takes long is done beside, so that everything else goes on.
void ReportBar::write()
{
    _isAsked = true;
    _written->setText(tr("Writing …"));
    _written->show();
    QDir().mkpath(_folder->text());
    _writing.setFuture(QtConcurrent::run(writeReport, reportFilesOf(_plan, _folder->text())));
    setFocus(); // The button is disabled, and the keyboard would go anywhere.
    enableWrite();
}

void ReportBar::tell()
{
    const WrittenReport written = _writing.result();
    enableWrite();
    if (written.failure.isFailure()) {
        Q_EMIT failed(written.failure);
    }
    if (!_isAsked) {
        return;
    }
    QStringList names;
    for (const QString& path : written.paths) {
        const QFileInfo file(path);
        names.append(names.isEmpty() ? file.fileName() : QLatin1Char('.') + file.suffix());
    }
    _written->setText(tr("Written: %1").arg(names.join(QStringLiteral(", "))));
    _written->setVisible(!names.isEmpty());
    _failure.show(written.failure);
}

} // namespace Panel
