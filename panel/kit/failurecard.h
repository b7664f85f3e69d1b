#pragma once

#include <QFrame>
#include <QLabel>

#include <VesmarClient/failure.h>

namespace Panel
{

/// What happened, the likely causes and the next step: a failure as the client tells it. Hidden while there
/// is none.
class FailureCard : public QFrame
{
    Q_OBJECT

public:
    FailureCard();

    void show(const VesmarClient::Failure& failure);

private:
    QLabel* _whatHappened;
    QLabel* _causes;
    QLabel* _nextStep;
};

} // namespace Panel
