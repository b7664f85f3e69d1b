#include "simulator/faults/faults.h"
#include "simulator/faults/faultfile.h"
#include "simulator/faults/faultplan.h"

#include "fuzz/jsontext.h"

using namespace Simulator;

namespace
{

constexpr int MostBytes = 1024;

void RequireLimits(const FaultEntry& entry)
{
    Require(entry.length >= 0 && entry.length <= MostBytes, "the length has its limits");
    Require(entry.mask >= 1 && entry.mask <= 255, "the mask is a byte");
    Require(entry.delay.count() >= 0, "nothing is early");
    Require(entry.bytes.size() <= MostBytes, "the bytes have their limit");
    Require(entry.count.value_or(1) >= 1, "a fault happens once at least");
    Require(entry.trigger.from.value_or(1) >= 1, "requests are counted from 1");
    Require(entry.trigger.after.count() >= 0, "nothing happens before the fault is set");
}

void CheckDamage(const FaultEntry& entry)
{
    for (const QByteArray& answer : {QByteArray(), QByteArray("\x06\xC6\x60"), QByteArray(26, '\x55')}) {
        const QByteArray damaged = Damaged(answer, entry);
        Require(damaged.size() <= 2 * answer.size() + MostBytes, "a fault adds no more than its own bytes");
        Require(!answer.isEmpty() || damaged.isEmpty(), "silence stays silence");
    }
}

void CheckPlan(const std::vector<FaultEntry>& entries)
{
    FaultPlan plan;
    TimePoint now;
    Require(plan.Add(entries, now), "a plan holds what a file holds");
    for (int i = 0; i < 4; ++i) {
        Require(plan.HappeningAt("s", now).size() <= entries.size(), "a fault happens once at a request");
        Require(plan.CollectDue(now).size() <= entries.size(), "an act is done once");
        now = plan.NextDueAt().value_or(now + std::chrono::milliseconds(100));
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text = Input(data, size).Rest();
    try {
        const std::vector<FaultEntry> entries = ParseFaults(text);
        for (const FaultEntry& entry : entries) {
            RequireLimits(entry);
            CheckDamage(entry);
        }
        CheckPlan(entries);
    } catch (const JsonError& error) {
        RequirePlace(error, text);
    }
    return 0;
}
