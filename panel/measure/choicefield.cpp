#include "panel/measure/choicefield.h"

#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::Choice;
using VesmarClient::Option;
using VesmarClient::OptionKind;

ChoiceField::ChoiceField(const Option& option)
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    if (option.kind == OptionKind::Flag) {
        addChoice(QStringLiteral("false"), tr("No"));
        addChoice(QStringLiteral("true"), tr("Yes"));
    } else if (!option.defaultValue.isValid() && option.mayStayUnset) {
        addChoice({}, QStringLiteral("–"));
    }
    for (const Choice& choice : option.choices) {
        addChoice(choice.identifier, choice.title);
    }
    for (QAbstractButton* const button : _buttons.buttons()) {
        const QString identifier = button->property("identifier").toString();
        button->setChecked(identifier == option.defaultValue.toString() &&
                           (option.mayStayUnset || !identifier.isEmpty()));
    }
    connect(&_buttons, &QButtonGroup::idClicked, this, &ChoiceField::changed);
}

void ChoiceField::addChoice(const QString& identifier, const QString& title)
{
    QPushButton* const button = createButton(title, "", "choice");
    button->setObjectName(QStringLiteral("choice-") + identifier);
    button->setCheckable(true);
    button->setProperty("identifier", identifier);
    _buttons.addButton(button);
    layout()->addWidget(button);
}

QVariant ChoiceField::value() const
{
    const QAbstractButton* const chosen = _buttons.checkedButton();
    const QString identifier = chosen != nullptr ? chosen->property("identifier").toString() : QString();
    return identifier.isEmpty() ? QVariant() : QVariant(identifier);
}

} // namespace Panel
