#pragma once

#include "integration/measuring.h"

/// A residual-current test: what an application asks for, and the request that prepares it.
struct RcdKind {
    std::shared_ptr<Vesmar::MeasurementSettings> settings;
    QByteArray prepare;
};

Q_DECLARE_METATYPE(RcdKind)

/// One of each, no two with the same options.
namespace RcdKinds
{

RcdKind UbRe();
RcdKind IaTa1();
RcdKind IaTa2();
RcdKind IecIaTa1();
RcdKind IecIaTa2();
RcdKind CleanUp();

} // namespace RcdKinds

/// How a residual-current test goes wrong, and how the library reports it.
struct RcdFailure {
    Simulator::Scenario scenario = Simulator::Scenario::None;
    int number = 1;       ///< The parameter of the scenario.
    int deviceError = 15; ///< What the instrument reports before the test; 15 is none.
    int error = 15;       ///< What the library reports.
    int prepares = 0;     ///< So many requests of each kind reach the instrument.
    int starts = 0;
};

Q_DECLARE_METATYPE(RcdFailure)

/// An instrument whose residual-current tests take no longer than they must.
Simulator::InstrumentOptions WithQuickRcd();

/// An instrument whose tests go on and on, and report it all the time.
Simulator::InstrumentOptions WithEndlessRcd();

/// An application that runs residual-current tests, at an instrument of its own.
class RcdMeasuring : public Measuring
{
public:
    explicit RcdMeasuring(const Simulator::InstrumentOptions& options = WithQuickRcd()) : Measuring(options)
    {
    }

    /// Waits for the link, then asks for the whole test at once.
    void Start(const RcdKind& kind);
    /// Waits until a test is over, another one each time.
    void AwaitEnd();
    void Run(const RcdKind& kind);

    /// The tests that were begun, and those that are over.
    int StartedRuns() const { return CountRuns(tester.EnteredStates()); }
    int EndedRuns() const { return CountRuns(tester.LeftStates()); }
    /// The requests from the first of this kind on, without those for the status.
    QByteArrayList SentBesidesStatusSince(const QByteArray& request) const;

    /// Runs the test, whatever has been before, and compares the outcome.
    void VerifyFailure(const RcdKind& kind, const RcdFailure& failure);
    /// The same for a test that has to bring its result after so many starts.
    void VerifySuccess(const RcdKind& kind, Simulator::Scenario scenario, int number, int starts);
    /// Waits until the Ub/Re test is watched, after so many requests to prepare it at least.
    void AwaitWatch(int prepares = 1);
    /// Waits until nothing is asked for any more and RCD monitoring leaves the line alone.
    void AwaitWithdrawal();
    /// Compares the results with what the instrument has sent last.
    void VerifyResults(const RcdKind& kind) const;

private:
    static int CountRuns(const QByteArrayList& states);
    QByteArray OutcomeOf(const RcdKind& kind, const RcdFailure& test);
    void VerifyOutcome(const RcdKind& kind, const RcdFailure& test, const QByteArray& expected);

    int _awaitedRuns = 0;
};
