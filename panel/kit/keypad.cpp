#include "panel/kit/keypad.h"

#include <QGridLayout>
#include <QLocale>

#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

constexpr int Columns = 3;

/// The keyboard stays with the number.
QPushButton* createKey(const QString& text)
{
    QPushButton* const key = createButton(text, "", "key");
    key->setObjectName(QStringLiteral("key-") + text);
    key->setFocusPolicy(Qt::NoFocus);
    return key;
}

} // namespace

Keypad::Keypad(QWidget* asker, const QString& title, const QString& number)
    : Dialog(asker, title), _line(new QLineEdit(number))
{
    setObjectName(QStringLiteral("keypad"));
    _line->setObjectName(QStringLiteral("typed"));
    _line->setAccessibleName(title);
    _line->setAlignment(Qt::AlignRight);
    setLook(_line, "typed");
    auto* const pad = new QWidget;
    auto* const rows = new QVBoxLayout(pad);
    rows->addWidget(_line);
    rows->addLayout(createKeys());
    column()->addWidget(pad, 1, Qt::AlignCenter);
    connect(addButton(tr("OK"), "enter"), &QPushButton::clicked, this, &Keypad::enter);
    connect(_line, &QLineEdit::returnPressed, this, &Keypad::enter);
    showWith(_line);
    _line->selectAll();
}

QGridLayout* Keypad::createKeys()
{
    auto* const grid = new QGridLayout;
    const auto add = [&](const QString& text, auto action) {
        QPushButton* const key = createKey(text);
        connect(key, &QPushButton::clicked, _line, action);
        const int place = grid->count();
        grid->addWidget(key, place / Columns, place % Columns);
        return key;
    };
    const QString texts = QStringLiteral("7894561230") + QLocale().decimalPoint();
    for (const QChar text : texts) {
        add(text, [this, text] { _line->insert(text); });
    }
    add(QStringLiteral("⌫"), [this] { _line->backspace(); })->setObjectName(QStringLiteral("backspace"));
    return grid;
}

void Keypad::enter()
{
    deleteLater();
    Q_EMIT entered(_line->text());
}

} // namespace Panel
