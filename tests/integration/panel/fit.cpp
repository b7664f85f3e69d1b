#include "integration/panel/fit.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVariant>

#include "panel/kit/theme.h"

namespace
{

QString Described(const QWidget& widget)
{
    const QVariant text = widget.property("text");
    return QStringLiteral("%1 \"%2\"").arg(QLatin1String(widget.metaObject()->className()), text.toString());
}

bool HasRoom(const QLabel& label)
{
    const QSize needed = label.wordWrap()
                             ? QSize(label.minimumSizeHint().width(), label.heightForWidth(label.width()))
                             : label.sizeHint();
    return needed.width() <= label.width() && needed.height() <= label.height();
}

/// A button whose content is a layout has no text of its own.
bool HasRoom(const QAbstractButton& button)
{
    const QSize needed = button.layout() != nullptr ? button.layout()->minimumSize() : button.sizeHint();
    return needed.width() <= button.width() && needed.height() <= button.height();
}

bool HasRoom(const QWidget& widget)
{
    if (const auto* const label = qobject_cast<const QLabel*>(&widget)) {
        return HasRoom(*label);
    }
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return button == nullptr || HasRoom(*button);
}

bool CanBeHit(const QWidget& widget)
{
    return qobject_cast<const QPushButton*>(&widget) == nullptr ||
           (widget.width() >= Panel::TouchTarget && widget.height() >= Panel::TouchTarget);
}

/// What is scrolled may be larger than what shows it, but not broader.
bool IsInside(const QWidget& widget)
{
    const QWidget& parent = *widget.parentWidget();
    const QRect place = widget.geometry();
    const auto* const area = qobject_cast<const QScrollArea*>(parent.parentWidget());
    const bool isScrolled = area != nullptr && area->viewport() == &parent;
    return isScrolled ? place.width() <= parent.width() : parent.rect().contains(place);
}

} // namespace

QStringList Misfits(const QWidget& window)
{
    QStringList found;
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->isWindow()) {
            continue;
        }
        if (!HasRoom(*widget)) {
            found.append(Described(*widget) + QStringLiteral(" is cut off"));
        }
        if (!CanBeHit(*widget)) {
            found.append(Described(*widget) + QStringLiteral(" is too small for a finger"));
        }
        if (!IsInside(*widget)) {
            found.append(Described(*widget) + QStringLiteral(" stands out"));
        }
        const QLayout* const layout = widget->parentWidget()->layout();
        for (const QWidget* const other :
             widget->parentWidget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            const bool areBeside =
                layout != nullptr && layout->indexOf(const_cast<QWidget*>(other)) >= 0 &&
                layout->indexOf(const_cast<QWidget*>(widget)) > layout->indexOf(const_cast<QWidget*>(other));
            if (areBeside && other->isVisible() && other->geometry().intersects(widget->geometry())) {
                found.append(Described(*widget) + QStringLiteral(" lies over ") + Described(*other));
            }
        }
    }
    return found;
}
