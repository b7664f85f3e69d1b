#pragma once

#include <QDir>
#include <QLabel>
#include <QListWidget>

namespace Panel
{

/// Asks for a file, over the whole window: a dialog would need a window manager. It deletes itself.
class FileChooser : public QWidget
{
    Q_OBJECT

public:
    /// The filters are such as "*.json". It begins with the folder that the last one has ended with.
    FileChooser(QWidget* window, const QString& title, const QStringList& filters);

Q_SIGNALS:
    void chosen(const QString& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut(const QString& title);
    void enter(const QString& folder);
    void choose();

    QDir _folder;
    QLabel* _path;
    QListWidget* _entries;
};

} // namespace Panel
