#include "panel/connection/connectionpage.h"

#include <QLocale>

#include "panel/kit/widgets.h"
#include "panel/kit/words.h"
#include "panel/session/linklook.h"

namespace Panel
{

using VesmarClient::Failure;
using VesmarClient::Identity;
using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::LinkStatistics;

namespace
{

QFormLayout* createTable(QWidget* card, const QString& title)
{
    auto* const column = static_cast<QVBoxLayout*>(card->layout());
    column->addWidget(createLabel("heading", title));
    auto* const table = new QFormLayout;
    table->setVerticalSpacing(3);
    table->setHorizontalSpacing(12);
    column->addLayout(table);
    column->addStretch();
    return table;
}

/// Fills the rows of a table, which are made the first time.
void fill(QFormLayout* table, const QVector<QPair<QString, QString>>& rows)
{
    for (int i = 0; i < rows.size(); ++i) {
        if (table->rowCount() <= i) {
            table->addRow(createLabel("muted", rows.at(i).first), createLabel("value"));
        }
        auto* const value = static_cast<QLabel*>(table->itemAt(i, QFormLayout::FieldRole)->widget());
        value->setText(rows.at(i).second.isEmpty() ? QStringLiteral("–") : rows.at(i).second);
    }
}

QString shownDate(const QDateTime& date)
{
    return date.isValid() ? QLocale().toString(date, QLocale::ShortFormat) : QString();
}

} // namespace

ConnectionPage::ConnectionPage(Session& session)
    : _session(session), _state(createLabel("title")), _sentence(createText("muted")), _mains(session)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    column->addWidget(createState());
    auto* const tables = new QHBoxLayout;
    tables->addWidget(createIdentity(), 1);
    tables->addWidget(createStatistics(), 1);
    column->addLayout(tables);
    column->addWidget(&_mains, 1);
    column->addStretch();
    const Instrument& instrument = session.instrument();
    connect(&instrument, &Instrument::linkStateChanged, this, &ConnectionPage::showState);
    connect(&instrument, &Instrument::errorChanged, this, &ConnectionPage::showState);
    connect(&session, &Session::openFailureChanged, this, &ConnectionPage::showState);
    connect(&instrument, &Instrument::identityChanged, this, &ConnectionPage::showIdentity);
    connect(&instrument, &Instrument::clockChanged, this, &ConnectionPage::showIdentity);
    connect(&instrument, &Instrument::calibrationDateChanged, this, &ConnectionPage::showIdentity);
    connect(&instrument, &Instrument::modeChanged, this, &ConnectionPage::showIdentity);
    connect(&instrument, &Instrument::statisticsChanged, this, &ConnectionPage::showStatistics);
    showState();
    showIdentity();
    showStatistics({});
}

QWidget* ConnectionPage::createState()
{
    auto* const state = new QWidget;
    _state->setObjectName(QStringLiteral("state"));
    _sentence->setObjectName(QStringLiteral("sentence"));
    auto* const column = new QVBoxLayout(state);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(_state);
    column->addWidget(_sentence);
    column->addWidget(&_failure);
    return state;
}

QWidget* ConnectionPage::createIdentity()
{
    QFrame* const card = createCard();
    card->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    _identity = createTable(card, tr("Instrument"));
    return card;
}

QWidget* ConnectionPage::createStatistics()
{
    QFrame* const card = createCard();
    card->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    _statistics = createTable(card, tr("Line"));
    return card;
}

/// Why the line could not be taken, or what the driver or the instrument says is wrong.
Failure ConnectionPage::failure() const
{
    const Failure openFailure = _session.openFailure();
    return openFailure.isFailure() ? openFailure : Failure::ofError(_session.instrument().error());
}

void ConnectionPage::showState()
{
    const LinkLook look = linkLook(_session);
    _state->setText(QStringLiteral("●  ") + look.words);
    setLook(_state, look.titleLook);
    _sentence->setText(look.sentence);
    const Failure present = failure();
    _failure.show(present);
    _sentence->setVisible(!present.isFailure());
    _mains.setVisible(!present.isFailure());
}

void ConnectionPage::showIdentity()
{
    const Instrument& instrument = _session.instrument();
    const Identity identity = instrument.identity();
    const QString firmware = identity.version.isEmpty()
                                 ? QString()
                                 : tr("%1, build %2").arg(identity.version, identity.buildNumber);
    fill(_identity,
         {{tr("Device"), (identity.deviceName + QLatin1Char(' ') + identity.deviceCode).trimmed()},
          {tr("Serial number"), identity.serialNumber},
          {tr("Firmware"), firmware},
          {tr("Mode"), identity.version.isEmpty() ? QString() : words(instrument.mode())},
          {tr("Clock, as read"), shownDate(instrument.clock())},
          {tr("Calibrated"), QLocale().toString(instrument.calibrationDate().date(), QLocale::ShortFormat)}});
}

void ConnectionPage::showStatistics(const LinkStatistics& statistics)
{
    fill(_statistics, {{tr("Good answers"), QString::number(statistics.exchanges)},
                       {tr("Sent once more"), QString::number(statistics.retransmissions)},
                       {tr("Damaged answers"), QString::number(statistics.damaged)},
                       {tr("No answer"), QString::number(statistics.silent)},
                       {tr("Refused"), QString::number(statistics.refused)},
                       {tr("Brought back"), QString::number(statistics.recoveries)}});
}

} // namespace Panel
