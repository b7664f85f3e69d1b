#include <QtTest>

#include "simulator/faults/armedfault.h"
#include "simulator/faults/faults.h"

using Simulator::ArmedFault;
using Simulator::Fault;
using Simulator::FaultEntry;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray ReadVersion = QByteArray::fromHex("57122a");
const TimePoint Start{};

/// At which of these requests it happens, in one letter each.
QByteArray Pattern(const FaultEntry& entry, const QVector<QByteArray>& requests)
{
    ArmedFault fault(entry, Start);
    QByteArray pattern;
    for (const QByteArray& request : requests) {
        pattern.append(fault.HappensAt(request, Start) ? 'x' : '.');
    }
    return pattern;
}

} // namespace

class TestArmedFault : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryRequest();
    void OneLetter();
    void FromTheNth();
    void FromTheNthOfOneLetter();
    void SoManyTimes();
    void JustTheNth();
    void TimeSinceItWasSet();
    void RequestsCountBeforeTheTime();
    void ProbabilityIsReproducible();
    void ProbabilityOfNoneAndAll();
    void ProbabilityIsKept();
    void NoiseIsARequestToo();
    void ActByTheClock();
    void ActAtARequest();
    void SwallowsEverything();
    void Over();
};

void TestArmedFault::EveryRequest()
{
    QCOMPARE(Pattern(Simulator::EntryOf(Fault::BadCrc), {ReadStatus, ReadVersion, ReadStatus}),
             QByteArray("xxx"));
}

void TestArmedFault::OneLetter()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.request = 'W';
    QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadStatus, ReadVersion}), QByteArray(".x.x"));
}

void TestArmedFault::FromTheNth()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.from = 3;
    QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadStatus, ReadVersion}), QByteArray("..xx"));
}

void TestArmedFault::FromTheNthOfOneLetter()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.request = 's';
    entry.trigger.from = 2;
    QCOMPARE(Pattern(entry, {ReadStatus, ReadVersion, ReadVersion, ReadStatus, ReadStatus}),
             QByteArray("...xx"));
}

void TestArmedFault::SoManyTimes()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.count = 2;
    QCOMPARE(Pattern(entry, {ReadStatus, ReadStatus, ReadStatus, ReadStatus}), QByteArray("xx.."));
}

void TestArmedFault::JustTheNth()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.from = 2;
    entry.count = 1;
    QCOMPARE(Pattern(entry, {ReadStatus, ReadStatus, ReadStatus, ReadStatus}), QByteArray(".x.."));
}

void TestArmedFault::TimeSinceItWasSet()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.after = milliseconds(10);
    entry.trigger.until = milliseconds(20);
    const TimePoint setAt = Start + milliseconds(100);
    ArmedFault fault(entry, setAt);
    QVERIFY(!fault.HappensAt(ReadStatus, setAt + milliseconds(9)));
    QVERIFY(fault.HappensAt(ReadStatus, setAt + milliseconds(10)));
    QVERIFY(fault.HappensAt(ReadStatus, setAt + milliseconds(19)));
    QVERIFY(!fault.HappensAt(ReadStatus, setAt + milliseconds(20)));
}

void TestArmedFault::RequestsCountBeforeTheTime()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.after = milliseconds(10);
    entry.trigger.from = 3;
    entry.count = 1;
    ArmedFault fault(entry, Start);
    QVERIFY(!fault.HappensAt(ReadStatus, Start));
    QVERIFY(!fault.HappensAt(ReadStatus, Start));
    QVERIFY(!fault.HappensAt(ReadStatus, Start));
    QVERIFY(fault.HappensAt(ReadStatus, Start + milliseconds(10)));
    QVERIFY(!fault.HappensAt(ReadStatus, Start + milliseconds(10)));
}

void TestArmedFault::ProbabilityIsReproducible()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.probability = 0.5;
    const QVector<QByteArray> requests(20, ReadStatus);
    // The numbers of MT19937 that are below 2147483648.
    QCOMPARE(Pattern(entry, requests), QByteArray("x...xxx.xxxxxxx.x..."));
    entry.trigger.seed = 2;
    QCOMPARE(Pattern(entry, requests), QByteArray("xxx...xxxxxxx..xxxx."));
}

void TestArmedFault::ProbabilityOfNoneAndAll()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    const QVector<QByteArray> requests(1000, ReadStatus);
    entry.trigger.probability = 0.0;
    QCOMPARE(Pattern(entry, requests), QByteArray(1000, '.'));
    entry.trigger.probability = 1.0;
    QCOMPARE(Pattern(entry, requests), QByteArray(1000, 'x'));
}

void TestArmedFault::ProbabilityIsKept()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    entry.trigger.probability = 0.1;
    const int times = Pattern(entry, QVector<QByteArray>(10000, ReadStatus)).count('x');
    QVERIFY2(times > 900 && times < 1100, QByteArray::number(times).constData());
}

void TestArmedFault::NoiseIsARequestToo()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    const QByteArray noise = QByteArray::fromHex("00");
    QCOMPARE(Pattern(entry, {noise}), QByteArray("x"));
    entry.trigger.request = 's';
    QCOMPARE(Pattern(entry, {noise, QByteArray("s")}), QByteArray(".x"));
}

void TestArmedFault::ActByTheClock()
{
    FaultEntry entry = Simulator::EntryOf(Fault::HangUp);
    entry.trigger.after = milliseconds(30);
    ArmedFault fault(entry, Start);
    QVERIFY(!fault.HappensAt(ReadStatus, Start + milliseconds(40)));
    QVERIFY(fault.DueAt() == Start + milliseconds(30));
    QVERIFY(!fault.IsOver(Start + milliseconds(40)));
    fault.NoteDone();
    QVERIFY(!fault.DueAt().has_value());
    QVERIFY(fault.IsOver(Start));
}

void TestArmedFault::ActAtARequest()
{
    FaultEntry entry = Simulator::EntryOf(Fault::None);
    entry.command = Simulator::ControlCommand();
    entry.trigger.request = 's';
    ArmedFault fault(entry, Start);
    QVERIFY(!fault.DueAt().has_value());
    QVERIFY(!fault.HappensAt(ReadVersion, Start));
    QVERIFY(fault.HappensAt(ReadStatus, Start));
}

void TestArmedFault::SwallowsEverything()
{
    FaultEntry entry = Simulator::EntryOf(Fault::Silent);
    entry.trigger.after = milliseconds(10);
    QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start));
    QVERIFY(ArmedFault(entry, Start).SwallowsEverything(Start + milliseconds(10)));
    entry.count = 1;
    QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start + milliseconds(10)));
    entry.count.reset();
    entry.trigger.request = 's';
    QVERIFY(!ArmedFault(entry, Start).SwallowsEverything(Start + milliseconds(10)));
    QVERIFY(!ArmedFault(Simulator::EntryOf(Fault::BadCrc), Start).SwallowsEverything(Start));
}

void TestArmedFault::Over()
{
    FaultEntry entry = Simulator::EntryOf(Fault::BadCrc);
    QVERIFY(!ArmedFault(entry, Start).IsOver(Start + std::chrono::hours(24)));
    entry.trigger.until = milliseconds(10);
    QVERIFY(!ArmedFault(entry, Start).IsOver(Start + milliseconds(9)));
    QVERIFY(ArmedFault(entry, Start).IsOver(Start + milliseconds(10)));
    entry.count = 1;
    ArmedFault once(entry, Start);
    QVERIFY(once.HappensAt(ReadStatus, Start));
    QVERIFY(once.IsOver(Start));
}

QTEST_APPLESS_MAIN(TestArmedFault)
#include "tst_armedfault.moc"
