#pragma once

#include <QButtonGroup>

#include "panel/measure/optionfield.h"

namespace Panel
{

/// A button for each choice, and for yes and no.
class ChoiceField : public OptionField
{
    Q_OBJECT

public:
    explicit ChoiceField(const VesmarClient::Option& option);

    QVariant value() const override;

private:
    void addChoice(const QString& identifier, const QString& title);

    QButtonGroup _buttons;
};

} // namespace Panel
