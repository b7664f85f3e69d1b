#include "panel/log/logpage.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QtConcurrent>

#include "panel/kit/filechooser.h"
#include "panel/kit/widgets.h"

namespace Panel
{

LogPage::LogPage(Session& session)
    : _session(session),
      _showLive(createButton(tr("Live"), "liveLog")),
      _open(createButton(tr("Open …"), "openLog")),
      _filter(new QLineEdit),
      _measurements(createComboBox("logMeasurements")),
      _views(new QStackedWidget),
      _table(new QTableView),
      _plot(new ReadingPlot),
      _details(createText("muted"))
{
    setUpTable();
    _views->addWidget(_table);
    _views->addWidget(_plot);
    _plot->setObjectName(QStringLiteral("logPlot"));
    _details->setObjectName(QStringLiteral("logDetails"));
    auto* const column = new QVBoxLayout(this);
    column->addLayout(createHeader());
    column->addWidget(_measurements);
    column->addWidget(&_failure);
    column->addWidget(_views, 1);
    column->addWidget(_details);
    connect(&session.traceLines(), &TraceLines::line, this, &LogPage::receive);
    connect(&_reading, &QFutureWatcherBase::finished, this, &LogPage::showLog);
    showLive();
}

LogPage::~LogPage()
{
    _reading.waitForFinished();
}

QLayout* LogPage::createHeader()
{
    _filter->setObjectName(QStringLiteral("logFilter"));
    _filter->setPlaceholderText(tr("Only rows with …"));
    _filter->setClearButtonEnabled(true);
    _showLive->setCheckable(true);
    auto* const row = new QHBoxLayout;
    row->addWidget(_showLive);
    row->addWidget(_open);
    row->addWidget(_filter, 1);
    connect(_showLive, &QPushButton::clicked, this, &LogPage::showLive);
    connect(_open, &QPushButton::clicked, this, &LogPage::askForLog);
    connect(_filter, &QLineEdit::textChanged, &_filtered, &QSortFilterProxyModel::setFilterFixedString);
    connect(_measurements, QOverload<int>::of(&QComboBox::activated), this, &LogPage::showMeasurement);
    return row;
}

void LogPage::setUpTable()
{
    _filtered.setFilterKeyColumn(-1);
    _filtered.setFilterCaseSensitivity(Qt::CaseInsensitive);
    _table->setObjectName(QStringLiteral("log"));
    _table->setModel(&_filtered);
    _table->setWordWrap(false);
    _table->setVerticalScrollMode(QTableView::ScrollPerPixel);
    scrollByTouch(_table);
    _table->setSelectionBehavior(QAbstractItemView::SelectRows);
    _table->setSelectionMode(QAbstractItemView::SingleSelection);
    _table->horizontalHeader()->setStretchLastSection(true);
    _table->setColumnWidth(LogModel::TimeColumn, 120);
    _table->setColumnWidth(LogModel::TitleColumn, 190);
    connect(_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &LogPage::showRow);
}

/// The table stays at its end, unless somebody has moved it.
void LogPage::receive(const QByteArray& line)
{
    const QScrollBar* const bar = _table->verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum();
    _decoder.read({++_lines, line, {}});
    _live.append(_decoder.consumeRows());
    if (isAtEnd && _showLive->isChecked()) {
        _table->scrollToBottom();
    }
}

void LogPage::showLive()
{
    _showLive->setChecked(true);
    _failure.show({});
    _measurements->hide();
    _filtered.setSourceModel(&_live);
    _views->setCurrentWidget(_table);
    _details->clear();
    _table->scrollToBottom();
}

void LogPage::askForLog()
{
    auto* const chooser = new FileChooser(this, tr("Open a recorded log"));
    connect(chooser, &FileChooser::chosen, this, &LogPage::openLog);
}

void LogPage::openLog(const QString& path)
{
    _open->setEnabled(false);
    _details->setText(tr("Reading %1 …").arg(path));
    _reading.setFuture(QtConcurrent::run(decodeLogFile, path));
}

void LogPage::showLog()
{
    _open->setEnabled(true);
    _details->clear();
    _log = _reading.result();
    _failure.show(_log.failure);
    if (_log.failure.isFailure()) {
        Q_EMIT _session.failed(_log.failure);
        return;
    }
    _showLive->setChecked(false);
    _recorded.replace(_log.rows);
    _filtered.setSourceModel(&_recorded);
    _measurements->clear();
    _measurements->addItem(tr("Everything as a table"));
    for (const auto& record : _log.records) {
        _measurements->addItem(tr("Plot of %1").arg(record.first));
    }
    _measurements->show();
    _details->setText(_log.isCut ? tr("These are the last %1 rows of the log.").arg(_log.rows.size())
                                 : QString());
    _views->setCurrentWidget(_table);
}

/// The first one is the table.
void LogPage::showMeasurement(int index)
{
    _views->setCurrentIndex(index > 0 ? 1 : 0);
    if (index > 0) {
        _plot->show(_log.records.at(index - 1).second);
    }
}

void LogPage::showRow(const QModelIndex& index)
{
    _details->setText(index.siblingAtColumn(LogModel::TextColumn).data().toString());
}

} // namespace Panel
