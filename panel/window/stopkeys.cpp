#include "panel/window/stopkeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace Panel
{

StopKeys::StopKeys(Session& session) : _session(session)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool StopKeys::isStop(const QEvent& event) const
{
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Escape || (key == Qt::Key_Space && _session.isDangerous());
}

bool StopKeys::eventFilter(QObject* /*watched*/, QEvent* event)
{
    const bool runs = _session.measurement() != nullptr || _session.isDangerous();
    if (!runs || !isStop(*event)) {
        return false;
    }
    _session.stopAny();
    return true;
}

} // namespace Panel
