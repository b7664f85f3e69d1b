#pragma once

#include <QBoxLayout>
#include <QLabel>

#include "panel/kit/overlay.h"

class QPushButton;

namespace Panel
{

/// Asks for something over that part of the window that asks: what stands above the pages, a warning with its
/// button, stays. It deletes itself; Escape and a button leave it without an answer.
class Dialog : public Overlay
{
    Q_OBJECT

protected:
    Dialog(QWidget* asker, const QString& title);

    /// Adds a button beside that which leaves the dialog.
    QPushButton* addButton(const QString& text, const char* name);
    /// What is asked for stands here.
    QVBoxLayout* column() { return _column; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    QVBoxLayout* _column;
    QHBoxLayout* _head;
};

} // namespace Panel
