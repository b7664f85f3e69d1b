#include "panel/measure/numberfield.h"

#include <cmath>

#include <QEvent>
#include <QLocale>

#include "panel/kit/keypad.h"
#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::Option;
using VesmarClient::OptionKind;

namespace
{

/// A tenth of the number, as a round one.
double stepAt(const Option& option, double number)
{
    const double smallest = option.kind == OptionKind::Integer ? 1 : 0.1;
    return number <= 0 ? smallest : std::max(smallest, std::pow(10, std::floor(std::log10(number)) - 1) * 5);
}

} // namespace

NumberField::NumberField(const Option& option) : _option(option), _line(new QLineEdit)
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    _line->setText(QLocale().toString(option.defaultValue.toDouble(), 'g', 10));
    _line->setObjectName(QStringLiteral("number"));
    _line->setAlignment(Qt::AlignRight);
    _line->setMinimumWidth(64);
    _line->installEventFilter(this);
    row->addWidget(createStep(QStringLiteral("−"), "less", -1));
    row->addWidget(_line, 1);
    row->addWidget(createStep(QStringLiteral("+"), "more", 1));
    if (!option.special.isEmpty()) {
        _special = createButton(tr("No limit"), "special", "choice");
        _special->setCheckable(true);
        row->addWidget(_special);
        connect(_special, &QPushButton::toggled, this, [this](bool isSpecial) {
            _line->setEnabled(!isSpecial);
            Q_EMIT changed();
        });
    }
    connect(_line, &QLineEdit::textChanged, this, &NumberField::changed);
}

bool NumberField::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && _line->isEnabled()) {
        const auto* const keypad = new Keypad(this, _option.title, _line->text());
        connect(keypad, &Keypad::entered, _line, &QLineEdit::setText);
    }
    return OptionField::eventFilter(watched, event);
}

QPushButton* NumberField::createStep(const QString& text, const char* name, int direction)
{
    QPushButton* const button = createButton(text, name, "choice");
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus); // the keyboard has the line
    connect(button, &QPushButton::clicked, this, [this, direction] { step(direction); });
    return button;
}

void NumberField::step(int direction)
{
    const QLocale locale;
    const double number = locale.toDouble(_line->text());
    const double size = stepAt(_option, direction > 0 ? number : number * 0.95);
    const double stepped = std::round((number + direction * size) / size) * size;
    _line->setText(locale.toString(qBound(_option.minimum, stepped, _option.maximum), 'g', 10));
}

/// The default is not set, because some options exclude others. What is no number is left as it is: the
/// catalogue says what is wrong with it.
QVariant NumberField::value() const
{
    if (_special != nullptr && _special->isChecked()) {
        return _option.special;
    }
    bool isNumber = false;
    const double number = QLocale().toDouble(_line->text(), &isNumber);
    if (!isNumber) {
        return _line->text();
    }
    return number == _option.defaultValue.toDouble() ? QVariant()
                                                     : QVariant(QString::number(number, 'g', 10));
}

} // namespace Panel
