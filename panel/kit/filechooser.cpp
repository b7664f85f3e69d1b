#include "panel/kit/filechooser.h"

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

QString lastFolder;

} // namespace

FileChooser::FileChooser(QWidget* asker, const QString& title, Wanted wanted, const QStringList& filters)
    : Dialog(asker, title), _path(createLabel("muted")), _entries(new QListWidget)
{
    setObjectName(QStringLiteral("fileChooser"));
    _entries->setObjectName(QStringLiteral("entries"));
    column()->addWidget(_path);
    _entries->setVerticalScrollMode(QListWidget::ScrollPerPixel);
    scrollByTouch(_entries);
    column()->addWidget(_entries, 1);
    _folder.setNameFilters(filters);
    _folder.setFilter(QDir::AllDirs | QDir::Files | QDir::NoDot);
    _folder.setSorting(QDir::DirsFirst | QDir::Name | QDir::IgnoreCase);
    connect(addButton(tr("Open"), "openChoice"), &QPushButton::clicked, this, &FileChooser::choose);
    if (wanted == Wanted::Folder) {
        _folder.setFilter(QDir::AllDirs | QDir::NoDot);
        connect(addButton(tr("Use this folder"), "useFolder"), &QPushButton::clicked, this,
                [this] { finish(_folder.path()); });
    }
    connect(_entries, &QListWidget::itemActivated, this, &FileChooser::choose);
    enter(QFileInfo(lastFolder).isReadable() ? lastFolder : QDir::homePath());
    showWith(_entries);
}

/// A folder that cannot be read would have no way out of it.
void FileChooser::enter(const QString& folder)
{
    if (!QFileInfo(folder).isReadable()) {
        _path->setText(tr("The folder %1 cannot be read.").arg(folder));
        return;
    }
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
        finish(entry.filePath());
    }
}

void FileChooser::finish(const QString& path)
{
    deleteLater();
    Q_EMIT chosen(path);
}

} // namespace Panel
