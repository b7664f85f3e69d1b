#include "panel/measure/functionpage.h"

#include "panel/kit/widgets.h"
#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Measurement;
using VesmarClient::Phase;

FunctionPage::FunctionPage(Session& session, const FunctionInfo& function)
    : _session(session),
      _function(function),
      _form(function),
      _live(function),
      _result(session),
      _phase(createLabel("title")),
      _times(createLabel("muted")),
      _back(createButton(QStringLiteral("‹"), "back"))
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    column->addWidget(createHeader());
    _views.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored); // scrolls: the buttons stay in sight
    _views.addWidget(&_form);
    _views.addWidget(&_live);
    column->addWidget(&_views, 1);
    column->addWidget(&_result);
    column->addWidget(&_report);
    _report.hide();
    column->addWidget(createButtons());
    connect(&session.instrument(), &Instrument::linkStateChanged, this, &FunctionPage::enableButtons);
    connect(&session.instrument(), &Instrument::isBusyChanged, this, &FunctionPage::enableButtons);
    connect(&_form, &OptionForm::changed, this, &FunctionPage::enableButtons);
    connect(&_report, &ReportBar::failed, &session, &Session::failed);
    enableButtons();
}

QWidget* FunctionPage::createHeader()
{
    auto* const header = new QWidget;
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    _phase->setObjectName(QStringLiteral("phase"));
    _times->setObjectName(QStringLiteral("times"));
    row->addWidget(_back);
    row->addWidget(createText("title", _function.title), 1);
    row->addWidget(_phase);
    row->addWidget(_times);
    connect(_back, &QPushButton::clicked, this, &FunctionPage::left);
    return header;
}

QWidget* FunctionPage::createButtons()
{
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    _start = createStart();
    _stop = createButton(tr("Stop"), "stop", "stop");
    _options = createButton(tr("Options"), "options");
    row->addWidget(_start, 3);
    row->addWidget(_stop, 2);
    row->addWidget(_options, 1);
    connect(_stop, &QPushButton::clicked, &_session, &Session::stop);
    connect(_options, &QPushButton::clicked, this, [this] { _views.setCurrentWidget(&_form); });
    return buttons;
}

/// A dangerous voltage is there only while the button is held.
QPushButton* FunctionPage::createStart()
{
    if (!_function.isDangerous) {
        QPushButton* const button = createButton(tr("Start"), "start", "start");
        connect(button, &QPushButton::clicked, this, &FunctionPage::start);
        return button;
    }
    auto* const button = new HoldButton(tr("Hold to measure"), "start");
    connect(button, &HoldButton::holdBegan, this, &FunctionPage::start);
    connect(button, &HoldButton::stillHeld, &_session, &Session::keepAlive);
    connect(button, &HoldButton::holdEnded, &_session, &Session::stop);
    return button;
}

bool FunctionPage::isMeasuring() const
{
    return _session.measurement() != nullptr &&
           _session.record()->settings.function() == _function.identifier;
}

void FunctionPage::start()
{
    if (_session.measurement() != nullptr) {
        return;
    }
    _result.hide();
    _report.hide();
    watch(_session.measure(_form.settings()));
    _live.show(_session.record());
    _views.setCurrentWidget(&_live);
    enableButtons();
    if (!_function.isDangerous) {
        _stop->setFocus();
    }
}

void FunctionPage::watch(Measurement* measurement)
{
    const auto showPhase = [this, measurement] { _phase->setText(words(measurement->phase())); };
    connect(measurement, &Measurement::phaseChanged, this, showPhase);
    connect(measurement, &Measurement::elapsedChanged, this, &FunctionPage::showTimes);
    connect(measurement, &Measurement::reading, &_live, &LiveView::refresh);
    connect(measurement, &Measurement::gapsChanged, &_live, &LiveView::refresh);
    connect(&_session, &Session::measurementEnded, measurement,
            [this](const RecordPointer& record) { showEnd(record); });
    showPhase();
    showTimes();
}

void FunctionPage::showTimes()
{
    const Measurement* const measurement = _session.measurement();
    QString times = duration(measurement->elapsed());
    if (measurement->remaining() >= 0) {
        times += QStringLiteral("\n") + tr("%1 left").arg(duration(measurement->remaining()));
    }
    _times->setText(times);
}

void FunctionPage::showEnd(const RecordPointer& record)
{
    _phase->clear();
    _times->clear();
    _result.show(record);
    _report.offer(planRecordOf(record));
    _report.show();
    _live.refresh();
    _live.show(record->failure);
    enableButtons();
}

void FunctionPage::enableButtons()
{
    const Instrument& instrument = _session.instrument();
    const bool isReady = instrument.linkState() == LinkState::Up && !instrument.isBusy() && _form.isValid();
    _start->setEnabled(isReady || _start->isDown()); // who holds it would otherwise lose it
    _back->setEnabled(!isMeasuring());
    _options->setEnabled(!isMeasuring() && _views.currentWidget() == &_live);
    if (_stop->hasFocus() && !isMeasuring()) {
        _options->setFocus();
    }
    _stop->setEnabled(isMeasuring());
}

} // namespace Panel
