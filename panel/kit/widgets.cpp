#include "panel/kit/widgets.h"

#include <QScroller>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QVariant>

namespace Panel
{

void setLook(QWidget* widget, const char* look)
{
    if (widget->property("look") == QLatin1String(look)) {
        return;
    }
    widget->setProperty("look", QLatin1String(look));
    widget->setAttribute(Qt::WA_StyledBackground, true);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

QLabel* createLabel(const char* look, const QString& text)
{
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    setLook(label, look);
    return label;
}

QLabel* createText(const char* look, const QString& text)
{
    QLabel* const label = createLabel(look, text);
    label->setWordWrap(true);
    return label;
}

QPushButton* createButton(const QString& text, const char* name, const char* look)
{
    auto* const button = new QPushButton(text);
    button->setObjectName(QLatin1String(name));
    setLook(button, look);
    return button;
}

QComboBox* createComboBox(const char* name)
{
    auto* const box = new QComboBox;
    box->setObjectName(QLatin1String(name));
    box->setItemDelegate(new QStyledItemDelegate(box)); // The one that the style sheet reaches.
    return box;
}

void scrollByTouch(QAbstractScrollArea* area)
{
    QScroller::grabGesture(area->viewport());
}

void fillScrollArea(QScrollArea* area, QWidget* content)
{
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(content);
}

QFrame* createCard()
{
    auto* const card = new QFrame;
    setLook(card, "card");
    auto* const column = new QVBoxLayout(card);
    column->setContentsMargins(12, 8, 12, 8);
    column->setSpacing(4);
    return card;
}

void clear(QLayout* layout)
{
    while (QLayoutItem* const item = layout->takeAt(0)) {
        if (item->layout() != nullptr) {
            clear(item->layout());
        }
        delete item->widget();
        delete item;
    }
}

} // namespace Panel
