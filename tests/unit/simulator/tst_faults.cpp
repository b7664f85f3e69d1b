#include <QtTest>

#include "simulator/faults/armedfault.h"
#include "simulator/faults/faultplan.h"
#include "simulator/faults/faults.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::ArmedFault;
using Simulator::Fault;
using Simulator::FaultEntry;
using Simulator::FaultPlan;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const TimePoint Start{};

/// Returns an "x" for each of these requests at which the fault happens, and a dot for each other one.
QByteArray Pattern(const FaultEntry& entry, const QVector<QByteArray>& requests)
{
    ArmedFault fault(entry, Start);
    QByteArray pattern;
    for (const QByteArray& request : requests) {
        pattern.append(fault.HappensAt(request, Start) ? 'x' : '.');
    }
    return pattern;
}

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

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WhatBecomesOfAnAnswer_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QByteArray>("damaged");
        const auto row = [](const char* name, Fault fault, const char* answer, const char* damaged) {
            QTest::newRow(name) << static_cast<int>(fault) << QByteArray::fromHex(answer)
                                << QByteArray::fromHex(damaged);
        };
        row("none", Fault::None, "00fed10e", "00fed10e");
        row("slow", Fault::Slow, "00fed10e", "00fed10e");
        row("bad checksum of data", Fault::BadCrc, "00fed10e", "00fed1f1");
        row("bad checksum of an acknowledge", Fault::BadCrc, "06c660", "06c69f");
        row("garbage before", Fault::GarbageBefore, "00fed10e", "55aa00fed10e");
        row("garbage after", Fault::GarbageAfter, "06c660", "06c66055aa");
        row("truncated", Fault::Truncated, "00fed10e", "00fe");
        row("flip", Fault::Flip, "00fed10e", "fffed10e");
        row("drop", Fault::Drop, "00fed10e", "fed10e");
        row("double", Fault::Double, "06c660", "0606c660");
        row("split", Fault::Split, "00fed10e", "00fed10e");
        row("hang-up", Fault::HangUp, "00fed10e", "00fed10e");
        row("wrong length of data", Fault::WrongLength, "00fed10e", "00fe00ce30");
        row("wrong length of an acknowledge", Fault::WrongLength, "06c660", "0600a6aa");
    }

    void WhatBecomesOfAnAnswer()
    {
        QFETCH(int, fault);
        QFETCH(QByteArray, answer);
        QFETCH(QByteArray, damaged);
        QCOMPARE(Simulator::Damaged(answer, Simulator::EntryOf(static_cast<Fault>(fault))).toHex(),
                 damaged.toHex());
    }

    void WhichBytes_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("length");
        QTest::addColumn<QByteArray>("flipped");
        QTest::addColumn<QByteArray>("dropped");
        QTest::addColumn<QByteArray>("doubled");
        const auto row = [](const char* name, int position, int length, const char* flipped,
                            const char* dropped, const char* doubled) {
            QTest::newRow(name) << position << length << QByteArray(flipped) << QByteArray(dropped)
                                << QByteArray(doubled);
        };
        row("the second", 1, 1, "00f1d10e", "00d10e", "00fefed10e");
        row("two in the middle", 1, 2, "00f1de0e", "000e", "00fed1fed10e");
        row("the last", -1, 1, "00fed101", "00fed1", "00fed10e0e");
        row("the checksum", -2, 2, "00fede01", "00fe", "00fed10ed10e");
        row("all", 0, 4, "0ff1de01", "", "00fed10e00fed10e");
        row("more than there are", 2, 1000, "00fede01", "00fe", "00fed10ed10e");
        row("behind the end", 4, 1, "00fed10e", "00fed10e", "00fed10e");
        row("far behind the end", 1023, 1024, "00fed10e", "00fed10e", "00fed10e");
        row("before the beginning", -9, 1, "0ffed10e", "fed10e", "0000fed10e");
    }

    void WhichBytes()
    {
        QFETCH(int, position);
        QFETCH(int, length);
        const auto damaged = [position, length](Fault fault) {
            FaultEntry entry = Simulator::EntryOf(fault);
            entry.position = position;
            entry.length = length;
            entry.mask = 0x0F;
            return Simulator::Damaged(Bytes("00fed10e"), entry).toHex();
        };
        QTEST(damaged(Fault::Flip), "flipped");
        QTEST(damaged(Fault::Drop), "dropped");
        QTEST(damaged(Fault::Double), "doubled");
    }

    void HowManyAreLeft()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::Truncated);
        entry.length = 3;
        QCOMPARE(Simulator::Damaged(Bytes("00fed10e"), entry).toHex(), QByteArray("00fed1"));
        entry.length = 0;
        QCOMPARE(Simulator::Damaged(Bytes("00fed10e"), entry).toHex(), QByteArray());
        entry.length = 1024;
        QCOMPARE(Simulator::Damaged(Bytes("00fed10e"), entry).toHex(), QByteArray("00fed10e"));
    }

    void OtherStrayBytes()
    {
        FaultEntry before = Simulator::EntryOf(Fault::GarbageBefore);
        before.bytes = Bytes("0600ff");
        QCOMPARE(Simulator::Damaged(Bytes("06c660"), before).toHex(), QByteArray("0600ff06c660"));
        FaultEntry after = Simulator::EntryOf(Fault::GarbageAfter);
        after.bytes = Bytes("00");
        QCOMPARE(Simulator::Damaged(Bytes("06c660"), after).toHex(), QByteArray("06c66000"));
    }

    void NoAnswerStaysNone()
    {
        for (const Simulator::NamedFault& fault : Simulator::Faults) {
            QVERIFY2(Simulator::Damaged(QByteArray(), Simulator::EntryOf(fault.fault)).isEmpty(), fault.name);
        }
    }

    void EveryRequest()
    {
        QCOMPARE(Pattern(Simulator::EntryOf(Fault::BadCrc), {ReadStatus, ReadVersion, ReadStatus}),
                 QByteArray("xxx"));
    }

    void OneLetter()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.request = 'W';
        QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadStatus, ReadVersion}), QByteArray(".x.x"));
    }

    void FromTheNth()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.from = 3;
        QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadStatus, ReadVersion}), QByteArray("..xx"));
    }

    void FromTheNthOfOneLetter()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.request = 's';
        entry.trigger.from = 2;
        QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadVersion, ReadStatus, ReadStatus}),
                 QByteArray("...xx"));
    }

    void SoManyTimes()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.count = 2;
        QCOMPARE(Pattern(entry, {ReadStatus, ReadStatus, ReadStatus, ReadStatus}), QByteArray("xx.."));
    }

    void JustTheNth()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.from = 2;
        entry.count = 1;
        QCOMPARE(Pattern(entry, {ReadStatus, ReadStatus, ReadStatus, ReadStatus}), QByteArray(".x.."));
    }

    void TimeSinceItWasSet()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.after = 10ms;
        entry.trigger.until = 20ms;
        const TimePoint setAt = Start + 100ms;
        ArmedFault fault(entry, setAt);
        QVERIFY(!fault.HappensAt(ReadStatus, setAt + 9ms));
        QVERIFY(fault.HappensAt(ReadStatus, setAt + 10ms));
        QVERIFY(fault.HappensAt(ReadStatus, setAt + 19ms));
        QVERIFY(!fault.HappensAt(ReadStatus, setAt + 20ms));
    }

    void RequestsCountBeforeTheTime()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.after = 10ms;
        entry.trigger.from = 3;
        entry.count = 1;
        ArmedFault fault(entry, Start);
        QVERIFY(!fault.HappensAt(ReadStatus, Start));
        QVERIFY(!fault.HappensAt(ReadStatus, Start));
        QVERIFY(!fault.HappensAt(ReadStatus, Start));
        QVERIFY(fault.HappensAt(ReadStatus, Start + 10ms));
        QVERIFY(!fault.HappensAt(ReadStatus, Start + 10ms));
    }

    void ProbabilityIsReproducible()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.probability = 0.5;
        const QVector<QByteArray> requests(20, ReadStatus);
        // The numbers of MT19937 that are below 2147483648.
        QCOMPARE(Pattern(entry, requests), QByteArray("x...xxx.xxxxxxx.x..."));
        entry.trigger.seed = 2;
        QCOMPARE(Pattern(entry, requests), QByteArray("xxx...xxxxxxx..xxxx."));
    }

    void ProbabilityOfNoneAndAll()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        const QVector<QByteArray> requests(1000, ReadStatus);
        entry.trigger.probability = 0.0;
        QCOMPARE(Pattern(entry, requests), QByteArray(1000, '.'));
        entry.trigger.probability = 1.0;
        QCOMPARE(Pattern(entry, requests), QByteArray(1000, 'x'));
    }

    void ProbabilityIsKept()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        entry.trigger.probability = 0.1;
        const int times = Pattern(entry, QVector<QByteArray>(10000, ReadStatus)).count('x');
        QVERIFY2(times > 900 && times < 1100, QByteArray::number(times).constData());
    }

    void NoiseIsARequestToo()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        const QByteArray noise = Bytes("00");
        QCOMPARE(Pattern(entry, {noise}), QByteArray("x"));
        entry.trigger.request = 's';
        QCOMPARE(Pattern(entry, {noise, QByteArray("s")}), QByteArray(".x"));
    }

    void ActByTheClock()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::HangUp);
        entry.trigger.after = 30ms;
        ArmedFault fault(entry, Start);
        QVERIFY(!fault.HappensAt(ReadStatus, Start + 40ms));
        QVERIFY(fault.DueAt() == Start + 30ms);
        QVERIFY(!fault.IsOver(Start + 40ms));
        fault.MarkDone();
        QVERIFY(!fault.DueAt().has_value());
        QVERIFY(fault.IsOver(Start));
    }

    void ActAtARequest()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::None);
        entry.command = Simulator::ControlCommand();
        entry.trigger.request = 's';
        ArmedFault fault(entry, Start);
        QVERIFY(!fault.DueAt().has_value());
        QVERIFY(!fault.HappensAt(ReadVersion, Start));
        QVERIFY(fault.HappensAt(ReadStatus, Start));
    }

    void SilenceByTheClockSwallowsEverything()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::Silent);
        entry.trigger.after = 10ms;
        QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start));
        QVERIFY(ArmedFault(entry, Start).SwallowsEverything(Start + 10ms));
        entry.count = 1;
        QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start + 10ms));
        entry.count.reset();
        entry.trigger.request = 's';
        QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start + 10ms));
        QVERIFY(!ArmedFault(Simulator::EntryOf(Fault::BadCrc), Start).SwallowsEverything(Start));
    }

    void Over()
    {
        FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
        QVERIFY(!ArmedFault(entry, Start).IsOver(Start + std::chrono::hours(24)));
        entry.trigger.until = 10ms;
        QVERIFY(!ArmedFault(entry, Start).IsOver(Start + 9ms));
        QVERIFY(ArmedFault(entry, Start).IsOver(Start + 10ms));
        entry.count = 1;
        ArmedFault once(entry, Start);
        QVERIFY(once.HappensAt(ReadStatus, Start));
        QVERIFY(once.IsOver(Start));
    }

    void EmptyPlan()
    {
        FaultPlan plan;
        QVERIFY(plan.HappeningAt(ReadStatus, Start).empty());
        QVERIFY(plan.CollectDue(Start).empty());
        QVERIFY(!plan.NextDueAt().has_value());
        QVERIFY(!plan.SwallowsEverything(Start));
    }

    void KeepsTheOrderOfThePlan()
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

    void ActsComeInTheOrderOfTheirTimes()
    {
        FaultPlan plan;
        QVERIFY(plan.Add({HangUpAfter(30ms), HangUpAfter(10ms)}, Start));
        QVERIFY(plan.NextDueAt() == Start + 10ms);
        QVERIFY(plan.CollectDue(Start + 9ms).empty());
        const std::vector<FaultEntry> due = plan.CollectDue(Start + 30ms);
        QCOMPARE(due.size(), std::size_t(2));
        QVERIFY(due.at(0).trigger.after == 10ms);
        QVERIFY(due.at(1).trigger.after == 30ms);
        QVERIFY(plan.CollectDue(Start + 40ms).empty());
        QVERIFY(!plan.NextDueAt().has_value());
    }

    void PlanSwallowsEverything()
    {
        FaultPlan plan;
        QVERIFY(plan.Add({Simulator::EntryOf(Fault::BadCrc), Simulator::EntryOf(Fault::Silent)}, Start));
        QVERIFY(plan.SwallowsEverything(Start));
    }

    void ClearForgetsAll()
    {
        FaultPlan plan;
        QVERIFY(plan.Add({Simulator::EntryOf(Fault::Silent), HangUpAfter(10ms)}, Start));
        plan.Clear();
        QVERIFY(plan.HappeningAt(ReadStatus, Start).empty());
        QVERIFY(!plan.NextDueAt().has_value());
    }

    void NeverTooMany()
    {
        FaultPlan plan;
        QVERIFY(plan.Add(std::vector<FaultEntry>(999, HangUpAfter(10ms)), Start));
        QVERIFY(plan.Add({Simulator::EntryOf(Fault::BadCrc)}, Start));
        QVERIFY(!plan.Add({Simulator::EntryOf(Fault::Slow)}, Start));
        QCOMPARE(plan.HappeningAt(ReadStatus, Start).size(), std::size_t(1));
        plan.CollectDue(Start + 10ms);
        QVERIFY(plan.Add({Simulator::EntryOf(Fault::Slow)}, Start));
        QCOMPARE(plan.HappeningAt(ReadStatus, Start).size(), std::size_t(2));
    }
};

QTEST_APPLESS_MAIN(TestFaults)
#include "tst_faults.moc"
