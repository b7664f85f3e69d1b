#include "panel/sequence/sequencepage.h"

#include <QFileInfo>

#include "panel/kit/filechooser.h"
#include "panel/kit/widgets.h"
#include "panel/plan/planreader.h"
#include "panel/plan/planwords.h"

namespace Panel
{

using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Measurement;

namespace
{

const char Shipped[] = ":/panel/appliance-test.json";

} // namespace

SequencePage::SequencePage(Session& session)
    : _session(session),
      _plans(createComboBox("plans")),
      _open(createButton(tr("Open …"), "openPlan")),
      _steps(new StepTable),
      _result(session),
      _verdict(createText("title")),
      _start(createButton(tr("Start"), "startPlan", "start")),
      _hold(new HoldButton(tr("Hold to measure"), "holdStep")),
      _stop(createButton(tr("Stop"), "stopPlan", "stop")),
      _report(new ReportBar)
{
    layOut();
    connectButtons();
    const Instrument& instrument = session.instrument();
    connect(&instrument, &Instrument::linkStateChanged, this, &SequencePage::showButtons);
    connect(&instrument, &Instrument::isBusyChanged, this, &SequencePage::showButtons);
    connect(_report, &ReportBar::failed, &session, &Session::failed);
    openPlan(QLatin1String(Shipped));
}

void SequencePage::layOut()
{
    _verdict->setObjectName(QStringLiteral("verdict"));
    auto* const choice = new QHBoxLayout;
    choice->addWidget(_plans, 1);
    choice->addWidget(_open);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(choice);
    column->addWidget(&_failure);
    column->addWidget(_steps, 1);
    column->addWidget(&_result);
    column->addLayout(createButtons());
    column->addWidget(_report);
}

QLayout* SequencePage::createButtons()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(_verdict, 1);
    row->addWidget(_start);
    row->addWidget(_hold);
    row->addWidget(_stop);
    return row;
}

void SequencePage::connectButtons()
{
    connect(_plans, QOverload<int>::of(&QComboBox::activated), this,
            [this] { openPlan(_plans->currentData().toString()); });
    connect(_open, &QPushButton::clicked, this, &SequencePage::askForPlan);
    connect(_start, &QPushButton::clicked, this, &SequencePage::start);
    connect(_stop, &QPushButton::clicked, this, [this] { _run->stop(); });
    connect(_hold, &HoldButton::holdBegan, this, [this] { _run->hold(); });
    connect(_hold, &HoldButton::stillHeld, &_session, &Session::keepAlive);
    connect(_hold, &HoldButton::holdEnded, this, [this] { _run->release(); });
}

void SequencePage::openPlan(const QString& path)
{
    const PlanFile file = readPlan(path);
    _failure.show(file.failure);
    if (file.failure.isFailure()) {
        Q_EMIT _session.failed(file.failure);
        return;
    }
    if (_plans->findData(path) < 0) {
        _plans->addItem(file.plan.name, path);
    }
    _plans->setCurrentIndex(_plans->findData(path));
    _plan = file.plan;
    reset();
    showButtons();
}

/// Nothing of the plan is measured yet.
void SequencePage::reset()
{
    delete _run;
    _steps->showPlan(_plan);
    _result.hide();
    _report->withdraw();
}

void SequencePage::askForPlan()
{
    auto* const chooser =
        new FileChooser(this, tr("Open a test plan"), FileChooser::Wanted::File, {QStringLiteral("*.json")});
    connect(chooser, &FileChooser::chosen, this, &SequencePage::openPlan);
}

void SequencePage::start()
{
    reset();
    _run = new PlanRun(_session, _plan, this);
    connect(_run, &PlanRun::stepChanged, this, &SequencePage::showStep);
    connect(_run, &PlanRun::finished, this, &SequencePage::end);
    _run->start();
    showButtons();
}

void SequencePage::end()
{
    _report->offer(_run->record());
    if (_session.isStopInDoubt()) {
        _result.show(_session.record());
    }
    showButtons();
    _start->setFocus();
}

void SequencePage::showStep(int step)
{
    const StepRecord& record = _run->record().steps.at(step);
    _steps->showStep(step, record);
    if (record.state == StepState::Running) {
        connect(_session.measurement(), &Measurement::reading, this, &SequencePage::showReadings);
    }
    showButtons();
    QPushButton* const next = record.step.isDangerous() ? _hold : _stop;
    next->setFocus();
}

void SequencePage::showReadings()
{
    if (isRunning() && _run->present() >= 0) {
        _steps->showStep(_run->present(), _run->record().steps.at(_run->present()));
    }
}

void SequencePage::showButtons()
{
    const Instrument& instrument = _session.instrument();
    const bool isUp = instrument.linkState() == LinkState::Up;
    const int present = isRunning() ? _run->present() : -1;
    const bool isDangerous = present >= 0 && _plan.steps.at(present).isDangerous();
    _start->setVisible(!isRunning());
    _start->setEnabled(isUp && !instrument.isBusy() && !_plan.steps.isEmpty());
    _hold->setVisible(isDangerous);
    _stop->setVisible(isRunning());
    _plans->setEnabled(!isRunning());
    _open->setEnabled(!isRunning());
    if (present >= 0) {
        _verdict->setText(tr("Step %1 of %2").arg(present + 1).arg(_plan.steps.size()));
        setLook(_verdict, "title");
    } else {
        const Verdict verdict = !_run.isNull() ? _run->record().verdict() : Verdict::None;
        _verdict->setText(!_run.isNull() ? words(verdict) : QString());
        setLook(_verdict, verdict == Verdict::Passed ? "titleGood"
                          : verdict == Verdict::None ? "title"
                                                     : "titleDanger");
    }
}

} // namespace Panel
