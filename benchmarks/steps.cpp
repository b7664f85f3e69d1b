#include "figures.h"

#include <sched.h>

#include <thread>

#include <QLoggingCategory>

#include <Vesmar/tester.h>

#include "baremachine.h"
#include "eventloop.h"
#include "peer.h"
#include "samples.h"
#include "stepmarks.h"
#include "support/serialdevice.h"
#include "table.h"

namespace
{

/// What steps have used, each by itself.
struct Use {
    Samples period;    ///< In ms.
    Samples processor; ///< In us.
    Samples wakeUps;
    Samples allocations;

    /// Adds the steps between the marks from this one on. The step before them may have begun otherwise.
    void Add(const std::vector<StepMarks::Mark>& marks, size_t first)
    {
        for (size_t index = first + 2; index < marks.size(); ++index) {
            const StepMarks::Mark& begin = marks[index - 1];
            const StepMarks::Mark& end = marks[index];
            period.Add(Microseconds(end.time - begin.time).count() / 1000);
            processor.Add(end.processorUs - begin.processorUs);
            wakeUps.Add(static_cast<double>(end.wakeUps - begin.wakeUps));
            allocations.Add(static_cast<double>(end.allocations - begin.allocations));
        }
    }
};

/// A block of steps of the driver, and of the bare machine meanwhile, which adds nothing to the driver's use.
void MeasureBlock(Use& driver, Use& bare, Samples& applicationWakeUps)
{
    constexpr int BlockMs = 2400;
    const size_t firstOfDriver = StepMarks::OfDriver().size();
    const size_t firstOfBare = StepMarks::OfBareMachine().size();
    const long wakeUps = StepMarks::WakeUps();
    RunFor(BlockMs);
    applicationWakeUps.Add(
        static_cast<double>(StepMarks::WakeUps() - wakeUps - 1)); // One is the block's end.
    driver.Add(StepMarks::OfDriver(), firstOfDriver);
    bare.Add(StepMarks::OfBareMachine(), firstOfBare);
}

/// Keeps this thread, and those that it starts, on as many cores.
void RunOnCores(size_t count)
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    for (size_t core = 0; core < count; ++core) {
        CPU_SET(core, &cores);
    }
    sched_setaffinity(0, sizeof(cores), &cores);
}

} // namespace

void MeasureSteps()
{
    constexpr std::chrono::microseconds Delay{500};
    const Peer peer(Delay);
    const Peer barePeer(Delay);
    RedirectSerialDevice(peer.DevicePath());
    RunOnCores(1); // One core may be slower than the other.
    Vesmar::Tester* tester = Vesmar::Tester::Instance();
    tester->Enable();
    RunUntil([&] { return peer.Count('T') > 0; });
    const BareMachine bareMachine(barePeer.DevicePath());
    RunFor(1000);
    Use traced;
    Use silent;
    Use bare;
    Samples applicationWakeUps;
    for (int block = 0; block < Scaled(12); ++block) {
        MeasureBlock(traced, bare, applicationWakeUps);
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
        MeasureBlock(silent, bare, applicationWakeUps);
        QLoggingCategory::setFilterRules({});
    }
    delete tester;
    RunOnCores(std::thread::hardware_concurrency());
    const char* const what = "bare loop";
    Print({"Idle step: period", "ms", traced.period.Median(), bare.period.Median(), what});
    Print({"Idle step: processor time, trace to nowhere", "us", traced.processor.Median(),
           bare.processor.Median(), what});
    Print({"Idle step: processor time, trace off", "us", silent.processor.Median(), bare.processor.Median(),
           what});
    Print({"Idle step: wake-ups of the worker", "", traced.wakeUps.Median(), bare.wakeUps.Median(), what});
    Print({"Idle step: wake-ups of the application's thread", "", applicationWakeUps.Median(), 0, what});
    Print({"Idle step: allocations, trace to nowhere", "", traced.allocations.Median(),
           silent.allocations.Median(), "trace off"});
    Print({"Idle step: allocations, trace off", "", silent.allocations.Median(), bare.allocations.Median(),
           what});
}
