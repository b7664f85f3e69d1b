#include "panel/measure/resultcard.h"

#include "panel/kit/widgets.h"
#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::Outcome;

ResultCard::ResultCard(Session& session)
    : _session(session),
      _outcome(createLabel("title")),
      _stop(createText("good")),
      _again(createButton(tr("Stop again"), "stopAgain", "danger"))
{
    _outcome->setObjectName(QStringLiteral("outcome"));
    _stop->setObjectName(QStringLiteral("stopped"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(_outcome);
    row->addWidget(_stop, 1);
    row->addWidget(_again);
    column->addLayout(row);
    connect(_again, &QPushButton::clicked, this, &ResultCard::stopAgain);
    connect(&_session, &Session::stopDoubtChanged, this, &ResultCard::showStop);
    hide();
}

void ResultCard::show(const RecordPointer& record)
{
    _record = record;
    _outcome->setText(words(record->outcome));
    setLook(_outcome, record->outcome == Outcome::Completed ? "titleGood" : "titleWarning");
    showStop();
    QWidget::show();
}

void ResultCard::showStop()
{
    const bool isInDoubt = _session.isStopInDoubt();
    _stop->setText(
        isInDoubt ? tr("It is not confirmed that the instrument has stopped. Do not touch the appliance, "
                       "and cut its mains supply.")
                  : tr("The instrument is confirmed to have stopped."));
    setLook(_stop, isInDoubt ? "danger" : "good");
    _again->setVisible(isInDoubt);
    _again->setEnabled(true);
}

void ResultCard::stopAgain()
{
    _again->setEnabled(false);
    connect(_session.proveStop(), &VesmarClient::Job::finished, this, &ResultCard::showStop);
}

} // namespace Panel
