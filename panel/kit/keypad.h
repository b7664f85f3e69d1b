#pragma once

#include <QLineEdit>

#include "panel/kit/dialog.h"

class QGridLayout;

namespace Panel
{

/// Asks for a number: by touch where there is no keyboard, or with one.
class Keypad : public Dialog
{
    Q_OBJECT

public:
    /// Begins with this number, which the first digit replaces.
    Keypad(QWidget* asker, const QString& title, const QString& number);

Q_SIGNALS:
    /// What was typed, which may be no number.
    void entered(const QString& number);

private:
    QGridLayout* createKeys();
    void enter();

    QLineEdit* _line;
};

} // namespace Panel
