#include "panel/kit/dialog.h"

#include <QKeyEvent>

#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

/// The child of the window that this widget is in.
QWidget* partOfWindow(QWidget* widget)
{
    while (!widget->parentWidget()->isWindow()) {
        widget = widget->parentWidget();
    }
    return widget;
}

} // namespace

Dialog::Dialog(QWidget* asker, const QString& title)
    : Overlay(partOfWindow(asker)), _column(new QVBoxLayout(this)), _head(new QHBoxLayout)
{
    setAutoFillBackground(true);
    _head->addWidget(createText("title", title), 1);
    _column->addLayout(_head);
    connect(addButton(tr("Cancel"), "cancel"), &QPushButton::clicked, this, &QObject::deleteLater);
}

QPushButton* Dialog::addButton(const QString& text, const char* name)
{
    QPushButton* const button = createButton(text, name);
    _head->addWidget(button);
    return button;
}

void Dialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        deleteLater();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace Panel
