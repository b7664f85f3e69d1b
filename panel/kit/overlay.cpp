#include "panel/kit/overlay.h"

#include <QApplication>
#include <QEvent>

namespace Panel
{

namespace
{

bool isInOverlay(const QWidget* widget)
{
    while (widget != nullptr && qobject_cast<const Overlay*>(widget) == nullptr) {
        widget = widget->parentWidget();
    }
    return widget != nullptr;
}

} // namespace

Overlay::Overlay(QWidget* window) : QWidget(window)
{
    window->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*before*/, const QWidget* present) { keepFocus(present); });
    hide();
}

Overlay::~Overlay()
{
    // QWidget gives the keyboard away once more, when this is no overlay any longer.
    disconnect(qApp, nullptr, this, nullptr);
    if (!_before.isNull()) {
        _before->setFocus();
    }
}

void Overlay::showWith(QWidget* first)
{
    _before = window()->focusWidget();
    _first = first;
    setGeometry(parentWidget()->rect());
    show();
    raise();
    first->setFocus();
}

bool Overlay::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QWidget::eventFilter(watched, event);
}

/// Another overlay may lie above this one.
void Overlay::keepFocus(const QWidget* present)
{
    if (isVisible() && present != nullptr && present->window() == window() && !isInOverlay(present)) {
        _first->setFocus();
    }
}

} // namespace Panel
