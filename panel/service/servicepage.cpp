#include "panel/service/servicepage.h"

#include "panel/kit/widgets.h"

namespace Panel
{

using VesmarClient::Instrument;
using VesmarClient::LinkState;

ServicePage::ServicePage(Session& session)
    : _session(session),
      _clock(new DateCard(tr("Clock"), "clock", QStringLiteral("yyyy-MM-dd HH:mm:ss"))),
      _calibration(new DateCard(tr("Calibrated on"), "calibration", QStringLiteral("yyyy-MM-dd"))),
      _restart(createButton(tr("Restart the instrument"), "restart")),
      _update(new UpdateCard(session)),
      _status(new JobStatus)
{
    layOut();
    connectJobs();
    const Instrument& instrument = session.instrument();
    connect(&instrument, &Instrument::clockChanged, this, &ServicePage::showDates);
    connect(&instrument, &Instrument::calibrationDateChanged, this, &ServicePage::showDates);
    connect(&instrument, &Instrument::linkStateChanged, this, &ServicePage::showAllowed);
    connect(&instrument, &Instrument::isBusyChanged, this, &ServicePage::showAllowed);
    connect(_status, &JobStatus::failed, &session, &Session::failed);
    connect(_update, &UpdateCard::failed, &session, &Session::failed);
    showDates();
    showAllowed();
}

void ServicePage::layOut()
{
    auto* const content = new QWidget;
    auto* const cards = new QVBoxLayout(content);
    cards->addWidget(_status);
    cards->addWidget(_clock);
    cards->addWidget(_calibration);
    cards->addWidget(_restart);
    cards->addWidget(_update);
    cards->addStretch();
    auto* const area = new QScrollArea;
    connect(
        _update, &UpdateCard::begun, area, [this, area] { area->ensureWidgetVisible(_update); },
        Qt::QueuedConnection); // Once the progress has its place.
    fillScrollArea(area, content);
    scrollByTouch(area);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(area);
}

void ServicePage::connectJobs()
{
    Instrument& instrument = _session.instrument();
    connect(_clock, &DateCard::setAsked, this, [this, &instrument](const QDateTime& date) {
        _status->watch(instrument.setClock(date), tr("The clock is set."));
    });
    connect(_calibration, &DateCard::setAsked, this, [this, &instrument](const QDateTime& date) {
        _status->watch(instrument.setCalibrationDate(date), tr("The date of the calibration is set."));
    });
    connect(_restart, &QPushButton::clicked, this, [this, &instrument] {
        _status->watch(instrument.restart(), tr("The instrument has restarted."));
    });
}

void ServicePage::showDates()
{
    _clock->show(_session.instrument().clock());
    _calibration->show(_session.instrument().calibrationDate());
}

/// An instrument that waits for firmware can be given some, and nothing else.
void ServicePage::showAllowed()
{
    const Instrument& instrument = _session.instrument();
    const LinkState state = instrument.linkState();
    const bool isFree = !instrument.isBusy();
    for (QWidget* const part : {static_cast<QWidget*>(_clock), static_cast<QWidget*>(_calibration),
                                static_cast<QWidget*>(_restart)}) {
        part->setEnabled(isFree && state == LinkState::Up);
    }
    _update->allow(isFree && (state == LinkState::Up || state == LinkState::UpdateMode));
}

} // namespace Panel
