#pragma once

#include <QLineEdit>
#include <QPushButton>

#include "panel/measure/optionfield.h"

namespace Panel
{

/// A number that is typed, also on a keypad that a tap opens, or reached with two buttons that go faster the
/// larger it is. A word that is allowed beside the numbers has a button of its own.
class NumberField : public OptionField
{
    Q_OBJECT

public:
    explicit NumberField(const VesmarClient::Option& option);

    QVariant value() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPushButton* createStep(const QString& text, const char* name, int direction);
    void step(int direction);

    VesmarClient::Option _option;
    QLineEdit* _line;
    QPushButton* _special = nullptr;
};

} // namespace Panel
