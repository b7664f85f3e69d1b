#pragma once

#include <QThread>
#include <QTimer>

#include <VesmarClient/instrument.h>

#include "client/driver/host.h"

namespace VesmarClient
{

/// What an instrument knows on the application's thread, and its tie to the host on the driver's.
struct InstrumentState {
    explicit InstrumentState(Instrument& owner);
    /// Closes the line, and waits for that.
    ~InstrumentState();
    InstrumentState(const InstrumentState&) = delete;
    InstrumentState& operator=(const InstrumentState&) = delete;

    bool IsBusy() const { return runs > 0; }
    /// Lets the run do the work of the job, which fails where another job is under way.
    void Begin(Job& job, std::unique_ptr<Run> run);
    /// The same, after the job under way has been aborted.
    void BeginAfterAbort(Job& job, std::unique_ptr<Run> run);

    Instrument& instrument;
    QThread thread; ///< The driver's.
    Host* host;     ///< It deletes itself when its thread ends.

    LinkState linkState = LinkState::Closed;
    Identity identity;
    Mode mode = Mode::Normal;
    QDateTime clock;
    QDateTime calibrationDate;
    Error error = Error::NoErrors;
    Function activeFunction = Function::None;
    FunctionState functionState = FunctionState::Unknown;
    StartTestResult startTestResult = StartTestResult::Unknown;
    Result mains;
    LinkStatistics statistics;
    bool isUnattended = false;
    GuardPolicy guardPolicy = GuardPolicy::Dangerous;
    int runs = 0; ///< How many are under way or wait.

private:
    using Order = void (Host::*)(std::unique_ptr<Run>);

    void WatchHost();
    void WatchStatistics();
    void Hand(Order order, Job& job, std::unique_ptr<Run> run);
    void CountRuns(int difference);

    QTimer _statisticsTick;
};

} // namespace VesmarClient
