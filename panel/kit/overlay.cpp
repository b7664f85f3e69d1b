#include "panel/kit/overlay.h"

#include <QApplication>
#include <QEvent>

namespace Panel
{

Overlay::Overlay(QWidget* parent) : QWidget(parent)
{
    parent->installEventFilter(this);
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

/// The later one of two in the window lies above the other.
bool Overlay::isTopmost() const
{
    const Overlay* topmost = nullptr;
    for (const Overlay* const overlay : window()->findChildren<Overlay*>()) {
        topmost = overlay->isVisible() ? overlay : topmost;
    }
    return topmost == this;
}

void Overlay::keepFocus(const QWidget* present)
{
    const bool isOutside =
        present != nullptr && present->window() == window() && present != this && !isAncestorOf(present);
    if (isOutside && isTopmost() && !_first.isNull()) {
        _first->setFocus();
    }
}

} // namespace Panel
