#include "client/instrument/instrumentstate.h"

#include "client/driver/failures.h"
#include "client/instrument/jobstate.h"
#include "client/trace/statistics.h"
#include "client/values/registration.h"

namespace VesmarClient
{

namespace
{

constexpr std::chrono::milliseconds TimeBetweenStatistics{1000};

} // namespace

InstrumentState::InstrumentState(Instrument& owner) : instrument(owner), host(new Host)
{
    RegisterTypes();
    WatchHost();
    WatchStatistics();
    QObject::connect(&thread, &QThread::finished, host, &QObject::deleteLater);
    host->moveToThread(&thread);
    thread.setObjectName(QStringLiteral("VesmarDriver"));
    thread.start();
}

InstrumentState::~InstrumentState()
{
    QMetaObject::invokeMethod(host, &Host::Quit, Qt::QueuedConnection);
    thread.wait();
}

void InstrumentState::WatchHost()
{
    // Keeps what the host tells, and tells the application where it is new.
    const auto keep = [this](auto told, auto& kept, auto changed) {
        QObject::connect(host, told, &instrument, [this, &kept, changed](const auto& value) {
            if (!(value == kept)) {
                kept = value;
                Q_EMIT(instrument.*changed)(value);
            }
        });
    };
    QObject::connect(host, &Host::OpenFailed, &instrument, &Instrument::openFailed);
    keep(&Host::IdentityChanged, identity, &Instrument::identityChanged);
    keep(&Host::ModeChanged, mode, &Instrument::modeChanged);
    keep(&Host::ClockChanged, clock, &Instrument::clockChanged);
    keep(&Host::CalibrationDateChanged, calibrationDate, &Instrument::calibrationDateChanged);
    keep(&Host::ErrorChanged, error, &Instrument::errorChanged);
    keep(&Host::ActiveFunctionChanged, activeFunction, &Instrument::activeFunctionChanged);
    keep(&Host::FunctionStateChanged, functionState, &Instrument::functionStateChanged);
    keep(&Host::StartTestResultChanged, startTestResult, &Instrument::startTestResultChanged);
    keep(&Host::MainsChanged, mains, &Instrument::mainsChanged);
    keep(&Host::UnattendedChanged, isUnattended, &Instrument::isUnattendedChanged);
    keep(&Host::LinkStateChanged, linkState, &Instrument::linkStateChanged);
}

/// They are asked for about once a second: the trace has a line or more for each exchange.
void InstrumentState::WatchStatistics()
{
    QObject::connect(&instrument, &Instrument::linkStateChanged, &_statisticsTick, [this](LinkState state) {
        state == LinkState::Closed ? _statisticsTick.stop() : _statisticsTick.start(TimeBetweenStatistics);
    });
    QObject::connect(&_statisticsTick, &QTimer::timeout, &instrument, [this] {
        const LinkStatistics present = CurrentStatistics();
        if (present != statistics) {
            statistics = present;
            Q_EMIT instrument.statisticsChanged(present);
        }
    });
}

void InstrumentState::Begin(Job& job, std::unique_ptr<Run> run)
{
    if (IsBusy()) {
        JobState::Of(job).FailLater(Busy());
    } else {
        Hand(&Host::Begin, job, std::move(run));
    }
}

void InstrumentState::BeginAfterAbort(Job& job, std::unique_ptr<Run> run)
{
    Hand(&Host::BeginAfterAbort, job, std::move(run));
}

/// The instrument hears first that a run has finished: the application may ask for the next job in a slot of
/// the job's.
void InstrumentState::Hand(Order order, Job& job, std::unique_ptr<Run> run)
{
    QObject::connect(run.get(), &Run::Finished, &instrument, [this] { CountRuns(-1); });
    JobState::Of(job).Connect(*run);
    run->moveToThread(&thread);
    CountRuns(1);
    QMetaObject::invokeMethod(
        host, [host = host, order, run = std::move(run)]() mutable { (host->*order)(std::move(run)); },
        Qt::QueuedConnection);
}

void InstrumentState::CountRuns(int difference)
{
    const bool wasBusy = IsBusy();
    runs += difference;
    if (IsBusy() != wasBusy) {
        Q_EMIT instrument.isBusyChanged(IsBusy());
    }
}

} // namespace VesmarClient
