#pragma once

#include <QDir>
#include <QListWidget>

#include "panel/kit/dialog.h"

namespace Panel
{

/// Asks for a file or a folder.
class FileChooser : public Dialog
{
    Q_OBJECT

public:
    enum class Wanted { File, Folder };

    /// Begins with the folder that the last one has ended with. The filter is such as "*.json".
    FileChooser(QWidget* asker, const QString& title, Wanted wanted = Wanted::File,
                const QStringList& filters = {});

Q_SIGNALS:
    void chosen(const QString& path);

private:
    void enter(const QString& folder);
    void choose();
    void finish(const QString& path);

    QDir _folder;
    QLabel* _path;
    QListWidget* _entries;
};

} // namespace Panel
