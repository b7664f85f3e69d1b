#include "panel/errors/errorspage.h"

#include "panel/kit/failurecard.h"
#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::Error;
using VesmarClient::Failure;
using VesmarClient::Instrument;

namespace
{

constexpr int SameTime = 5000; ///< In milliseconds: an error and the failure that it has led to.

QWidget* createEntry(const Failure& failure)
{
    auto* const entry = new QWidget;
    auto* const column = new QVBoxLayout(entry);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(
        createLabel("muted", QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))));
    auto* const card = new FailureCard;
    column->addWidget(card);
    card->show(failure);
    return entry;
}

} // namespace

ErrorsPage::ErrorsPage(Session& session)
    : _errors(new QVBoxLayout), _none(createText("muted", tr("Nothing has gone wrong so far.")))
{
    auto* const content = new QWidget;
    auto* const inside = new QVBoxLayout(content);
    inside->addLayout(_errors);
    inside->addStretch();
    auto* const area = new QScrollArea;
    fillScrollArea(area, content);
    scrollByTouch(area);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(createHeader());
    column->addWidget(_none);
    column->addWidget(area, 1);
    const Instrument& instrument = session.instrument();
    connect(&instrument, &Instrument::openFailed, this, &ErrorsPage::add);
    connect(&instrument, &Instrument::errorChanged, this,
            [this](Error error) { add(Failure::ofError(error)); });
    connect(&session, &Session::measurementEnded, this,
            [this](const RecordPointer& record) { add(record->failure); });
    connect(&session, &Session::failed, this, &ErrorsPage::add);
}

QWidget* ErrorsPage::createHeader() const
{
    auto* const header = new QWidget;
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    QPushButton* const clear = createButton(tr("Forget all"), "forgetErrors");
    connect(clear, &QPushButton::clicked, this, &ErrorsPage::removeAll);
    row->addWidget(createLabel("title", tr("Errors")), 1);
    row->addWidget(clear);
    return header;
}

/// An error of the instrument and the failure of the measurement that it has ended are told once.
void ErrorsPage::add(const Failure& failure)
{
    const bool isToldAlready =
        failure == _latest && _sinceLatest.isValid() && !_sinceLatest.hasExpired(SameTime);
    if (!failure.isFailure() || isToldAlready) {
        return;
    }
    _latest = failure;
    _sinceLatest.start();
    _errors->insertWidget(0, createEntry(failure));
    _none->hide();
    if (_errors->count() > MostErrors) {
        QLayoutItem* const oldest = _errors->takeAt(MostErrors);
        delete oldest->widget();
        delete oldest;
    }
}

void ErrorsPage::removeAll()
{
    clear(_errors);
    _none->show();
}

} // namespace Panel
