#include "panel/service/datecard.h"

#include "panel/kit/theme.h"
#include "panel/kit/widgets.h"

namespace Panel
{

DateCard::DateCard(const QString& title, const char* name, const QString& format)
    : _format(format), _present(createLabel("")), _edit(new QDateTimeEdit(QDateTime::currentDateTime()))
{
    setLook(this, "card");
    _edit->setDisplayFormat(format);
    _edit->setObjectName(QLatin1String(name) + QStringLiteral("Edit"));
    _edit->setAccessibleName(title);
    _edit->setButtonSymbols(QAbstractSpinBox::NoButtons); // Those of the style are too small for a finger.
    _edit->setMinimumHeight(TouchTarget);
    auto* const head = new QHBoxLayout;
    head->addWidget(createLabel("title", title), 1);
    head->addWidget(_present);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(createEditor(name));
}

QWidget* DateCard::createEditor(const char* name)
{
    auto* const editor = new QWidget;
    auto* const row = new QHBoxLayout(editor);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& text, const char* end, auto action) {
        QPushButton* const button = createButton(text, "");
        button->setObjectName(QLatin1String(name) + QLatin1String(end));
        connect(button, &QPushButton::clicked, this, action);
        row->addWidget(button);
    };
    row->addWidget(_edit, 1);
    add(QStringLiteral("−"), "Down", [this] { _edit->stepDown(); });
    add(QStringLiteral("+"), "Up", [this] { _edit->stepUp(); });
    add(tr("Now"), "Now", [this] { _edit->setDateTime(QDateTime::currentDateTime()); });
    add(tr("Set"), "Set", [this] { Q_EMIT setAsked(_edit->dateTime()); });
    return editor;
}

void DateCard::show(const QDateTime& date)
{
    _present->setText(date.isValid() ? date.toString(_format) : tr("not known"));
}

} // namespace Panel
