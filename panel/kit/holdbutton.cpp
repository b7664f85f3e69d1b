#include "panel/kit/holdbutton.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "panel/kit/widgets.h"

namespace Panel
{

HoldButton::HoldButton(const QString& text, const char* name) : QPushButton(text)
{
    setObjectName(QLatin1String(name));
    setLook(this, "danger");
    _tick.setInterval(TimeBetweenTicks);
    connect(&_tick, &QTimer::timeout, this, &HoldButton::stillHeld);
}

void HoldButton::begin()
{
    if (isEnabled() && !isHeld()) {
        setDown(true);
        _tick.start();
        Q_EMIT holdBegan();
    }
}

void HoldButton::end()
{
    if (isHeld()) {
        setDown(false);
        _tick.stop();
        Q_EMIT holdEnded();
    }
}

bool HoldButton::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        begin();
        return true;
    case QEvent::MouseMove:
        if (!rect().contains(static_cast<QMouseEvent*>(event)->pos())) {
            end();
        }
        return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return keyEvent(static_cast<QKeyEvent*>(event)) || QPushButton::event(event);
    case QEvent::EnabledChange:
    case QEvent::FocusOut:
    case QEvent::Hide:
    case QEvent::MouseButtonRelease:
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
        end();
        return QPushButton::event(event);
    default:
        return QPushButton::event(event);
    }
}

/// Returns whether the key is dealt with. The space bar is not the button's: it stops.
bool HoldButton::keyEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space) {
        event->ignore();
        return true;
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        return false;
    }
    if (!event->isAutoRepeat()) {
        event->type() == QEvent::KeyPress ? begin() : end();
    }
    return true;
}

} // namespace Panel
