#pragma once

#include <QTimer>

#include <chrono>
#include <memory>

#include <Vesmar/tester.h>

#include "client/driver/run.h"
#include "client/sessions/readiness.h"

namespace VesmarClient
{

/// A run with a time limit for all of it.
class LimitedRun : public Run
{
    Q_OBJECT

public:
    void Begin() override;

protected:
    explicit LimitedRun(std::chrono::milliseconds limit) : _limit(limit) {}

    Vesmar::Tester& Instrument() const { return *Vesmar::Tester::Instance(); }
    /// Waits until the link is up, and identity and clocks have been read anew, then does what is given. The
    /// identity has to be asked for, or be read for another reason.
    void AwaitReadiness(const std::function<void()>& goOn);
    /// Ends the run. Nothing is observed after it.
    void End(Outcome outcome, const Failure& failure = {});

    /// Does the work.
    virtual void Work() = 0;
    /// The limit has passed.
    virtual void TimeOver() = 0;

private:
    std::chrono::milliseconds _limit;
    std::unique_ptr<QTimer> _timer;
    std::unique_ptr<Readiness> _readiness;
};

} // namespace VesmarClient
