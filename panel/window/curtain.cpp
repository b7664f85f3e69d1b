#include "panel/window/curtain.h"

#include "panel/kit/widgets.h"

namespace Panel
{

namespace
{

constexpr int Width = 560;

}

Curtain::Curtain(QWidget* parent)
    : Overlay(parent), _title(createText("title")), _text(createText("")), _answers(new QWidget)
{
    setLook(this, "curtain");
    setObjectName(QStringLiteral("curtain"));
    _text->setObjectName(QStringLiteral("curtainText"));
    QFrame* const card = createCard();
    card->setFixedWidth(Width);
    for (QWidget* const part : {static_cast<QWidget*>(_title), static_cast<QWidget*>(_text), _answers}) {
        card->layout()->addWidget(part);
    }
    card->layout()->setSpacing(12);
    new QHBoxLayout(_answers);
    _answers->layout()->setContentsMargins(0, 0, 0, 0);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(card, 0, Qt::AlignCenter);
}

void Curtain::show(const char* look, const QString& title, const QString& text, const QStringList& answers)
{
    setLook(_title, look);
    _title->setText(title);
    _text->setText(text);
    clear(_answers->layout());
    for (int i = 0; i < answers.size(); ++i) {
        QPushButton* const button = createButton(answers.at(i), "answer");
        connect(button, &QPushButton::clicked, this, [this, i] {
            hide();
            Q_EMIT answered(i);
        });
        _answers->layout()->addWidget(button);
    }
    QWidget* const first = _answers->findChild<QPushButton*>();
    showWith(first != nullptr ? first : this);
}

} // namespace Panel
