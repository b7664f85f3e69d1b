#include "panel/kit/failurecard.h"

#include "panel/kit/widgets.h"

namespace Panel
{

FailureCard::FailureCard()
    : _whatHappened(createText("danger")), _causes(createText("")), _nextStep(createText(""))
{
    setLook(this, "card");
    setObjectName(QStringLiteral("failure"));
    _whatHappened->setObjectName(QStringLiteral("whatHappened"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    for (QLabel* const label : {_whatHappened, _causes, _nextStep}) {
        column->addWidget(label);
    }
    column->addStretch();
    hide();
}

void FailureCard::show(const VesmarClient::Failure& failure)
{
    _whatHappened->setText(failure.whatHappened);
    QString causes;
    for (const QString& cause : failure.causes) {
        causes += (causes.isEmpty() ? QString() : QStringLiteral("\n")) + QStringLiteral("•  ") + cause;
    }
    _causes->setText(causes.isEmpty() ? QString() : tr("Likely causes:") + QLatin1Char('\n') + causes);
    _causes->setVisible(!causes.isEmpty());
    _nextStep->setText(failure.nextStep.isEmpty() ? QString()
                                                  : tr("What to do:") + QLatin1Char(' ') + failure.nextStep);
    _nextStep->setVisible(!failure.nextStep.isEmpty());
    setVisible(failure.isFailure());
}

} // namespace Panel
