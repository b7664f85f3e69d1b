#include "panel/kit/filechooser.h"

#include <QKeyEvent>

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

QString lastFolder;

} // namespace

FileChooser::FileChooser(QWidget* window, const QString& title, const QStringList& filters)
    : QWidget(window), _path(createLabel("muted")), _entries(new QListWidget)
{
    _folder.setNameFilters(filters);
    _folder.setFilter(QDir::AllDirs | QDir::Files | QDir::NoDot);
    _folder.setSorting(QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
    layOut(title);
    connect(_entries, &QListWidget::itemActivated, this, &FileChooser::choose);
    enter(lastFolder.isEmpty() ? QDir::homePath() : lastFolder);
    setGeometry(window->rect());
    show();
    raise();
    _entries->setFocus();
}

void FileChooser::layOut(const QString& title)
{
    setAutoFillBackground(true);
    setObjectName(QStringLiteral("fileChooser"));
    _entries->setObjectName(QStringLiteral("entries"));
    auto* const cancel = createButton(tr("Cancel"), "cancelChoice");
    connect(cancel, &QPushButton::clicked, this, &QObject::deleteLater);
    auto* const open = createButton(tr("Open"), "openChoice");
    connect(open, &QPushButton::clicked, this, &FileChooser::choose);
    auto* const row = new QHBoxLayout;
    row->addWidget(createLabel("title", title), 1);
    row->addWidget(cancel);
    row->addWidget(open);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(_path);
    column->addWidget(_entries, 1);
}

void FileChooser::enter(const QString& folder)
{
    _folder.setPath(folder);
    _folder.makeAbsolute();
    lastFolder = _folder.absolutePath();
    _path->setText(lastFolder);
    _entries->clear();
    for (const QFileInfo& entry : _folder.entryInfoList()) {
        const QString name = entry.fileName();
        auto* const item = new QListWidgetItem(entry.isDir() ? name + QLatin1Char('/') : name, _entries);
        item->setData(Qt::UserRole, name);
        item->setSizeHint({0, TouchTarget});
    }
    _entries->setCurrentRow(0);
}

void FileChooser::choose()
{
    const QListWidgetItem* const item = _entries->currentItem();
    if (item == nullptr) {
        return;
    }
    const QFileInfo entry(_folder.filePath(item->data(Qt::UserRole).toString()));
    if (entry.isDir()) {
        enter(QDir::cleanPath(entry.filePath()));
    } else {
        deleteLater();
        Q_EMIT chosen(entry.filePath());
    }
}

void FileChooser::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        deleteLater();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace Panel
