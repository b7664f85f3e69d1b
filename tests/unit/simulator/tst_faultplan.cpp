#include <QtTest>

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faults.h"

using Simulator::Fault;
using Simulator::FaultEntry;
using Simulator::FaultPlan;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const TimePoint Start{};

FaultEntry HangUpAfter(milliseconds time)
{
    FaultEntry entry = Simulator::EntryOf(Fault::HangUp);
    entry.trigger.after = time;
    return entry;
}

QVector<int> KindsOf(const std::vector<FaultEntry>& entries)
{
    QVector<int> kinds;
    for (const FaultEntry& entry : entries) {
        kinds.append(static_cast<int>(entry.fault));
    }
    return kinds;
}

} // namespace

class TestFaultPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EmptyPlan();
    void KeepsTheOrderOfThePlan();
    void ActsComeInTheOrderOfTheirTimes();
    void SwallowsEverything();
    void ClearForgetsAll();
    void NeverTooMany();
};

void TestFaultPlan::EmptyPlan()
{
    FaultPlan plan;
    QVERIFY(plan.HappeningAt(ReadStatus, Start).empty());
    QVERIFY(plan.TakeDue(Start).empty());
    QVERIFY(!plan.NextDueAt().has_value());
    QVERIFY(!plan.SwallowsEverything(Start));
}

void TestFaultPlan::KeepsTheOrderOfThePlan()
{
    FaultEntry once = Simulator::EntryOf(Fault::Slow);
    once.count = 1;
    FaultPlan plan;
    QVERIFY(plan.Add({once, Simulator::EntryOf(Fault::Drop)}, Start));
    QVERIFY(plan.Add({Simulator::EntryOf(Fault::BadCrc)}, Start));
    const int slow = static_cast<int>(Fault::Slow);
    const int drop = static_cast<int>(Fault::Drop);
    const int badCrc = static_cast<int>(Fault::BadCrc);
    QCOMPARE(KindsOf(plan.HappeningAt(ReadStatus, Start)), (QVector<int>{slow, drop, badCrc}));
    QCOMPARE(KindsOf(plan.HappeningAt(ReadStatus, Start)), (QVector<int>{drop, badCrc}));
}

void TestFaultPlan::ActsComeInTheOrderOfTheirTimes()
{
    FaultPlan plan;
    QVERIFY(plan.Add({HangUpAfter(milliseconds(30)), HangUpAfter(milliseconds(10))}, Start));
    QVERIFY(plan.NextDueAt() == Start + milliseconds(10));
    QVERIFY(plan.TakeDue(Start + milliseconds(9)).empty());
    const std::vector<FaultEntry> due = plan.TakeDue(Start + milliseconds(30));
    QCOMPARE(due.size(), std::size_t(2));
    QVERIFY(due.at(0).trigger.after == milliseconds(10));
    QVERIFY(due.at(1).trigger.after == milliseconds(30));
    QVERIFY(plan.TakeDue(Start + milliseconds(40)).empty());
    QVERIFY(!plan.NextDueAt().has_value());
}

void TestFaultPlan::SwallowsEverything()
{
    FaultPlan plan;
    QVERIFY(plan.Add({Simulator::EntryOf(Fault::BadCrc), Simulator::EntryOf(Fault::Silent)}, Start));
    QVERIFY(plan.SwallowsEverything(Start));
}

void TestFaultPlan::ClearForgetsAll()
{
    FaultPlan plan;
    QVERIFY(plan.Add({Simulator::EntryOf(Fault::Silent), HangUpAfter(milliseconds(10))}, Start));
    plan.Clear();
    QVERIFY(plan.HappeningAt(ReadStatus, Start).empty());
    QVERIFY(!plan.NextDueAt().has_value());
}

void TestFaultPlan::NeverTooMany()
{
    FaultPlan plan;
    QVERIFY(plan.Add(std::vector<FaultEntry>(999, HangUpAfter(milliseconds(10))), Start));
    QVERIFY(plan.Add({Simulator::EntryOf(Fault::BadCrc)}, Start));
    QVERIFY(!plan.Add({Simulator::EntryOf(Fault::Slow)}, Start));
    QCOMPARE(plan.HappeningAt(ReadStatus, Start).size(), std::size_t(1));
    plan.TakeDue(Start + milliseconds(10));
    QVERIFY(plan.Add({Simulator::EntryOf(Fault::Slow)}, Start));
    QCOMPARE(plan.HappeningAt(ReadStatus, Start).size(), std::size_t(2));
}

QTEST_APPLESS_MAIN(TestFaultPlan)
#include "tst_faultplan.moc"
