#include <QtTest>

#include "simulator/faults/faults.h"

using Simulator::Fault;
using Simulator::FaultEntry;

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WhatBecomesOfAnAnswer_data();
    void WhatBecomesOfAnAnswer();
    void WhichBytes_data();
    void WhichBytes();
    void HowManyAreLeft();
    void OtherStrayBytes();
    void NoAnswerStaysNone();
};

void TestFaults::WhatBecomesOfAnAnswer_data()
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

void TestFaults::WhatBecomesOfAnAnswer()
{
    QFETCH(int, fault);
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, damaged);
    QCOMPARE(Simulator::Damaged(answer, Simulator::EntryOf(static_cast<Fault>(fault))).toHex(),
             damaged.toHex());
}

void TestFaults::WhichBytes_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("flipped");
    QTest::addColumn<QByteArray>("dropped");
    QTest::addColumn<QByteArray>("doubled");
    const auto row = [](const char* name, int position, int length, const char* flipped, const char* dropped,
                        const char* doubled) {
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

void TestFaults::WhichBytes()
{
    QFETCH(int, position);
    QFETCH(int, length);
    const auto damaged = [position, length](Fault fault) {
        FaultEntry entry = Simulator::EntryOf(fault);
        entry.position = position;
        entry.length = length;
        entry.mask = 0x0F;
        return Simulator::Damaged(QByteArray::fromHex("00fed10e"), entry).toHex();
    };
    QTEST(damaged(Fault::Flip), "flipped");
    QTEST(damaged(Fault::Drop), "dropped");
    QTEST(damaged(Fault::Double), "doubled");
}

void TestFaults::HowManyAreLeft()
{
    FaultEntry entry = Simulator::EntryOf(Fault::Truncated);
    entry.length = 3;
    QCOMPARE(Simulator::Damaged(QByteArray::fromHex("00fed10e"), entry).toHex(), QByteArray("00fed1"));
    entry.length = 0;
    QCOMPARE(Simulator::Damaged(QByteArray::fromHex("00fed10e"), entry).toHex(), QByteArray());
    entry.length = 1024;
    QCOMPARE(Simulator::Damaged(QByteArray::fromHex("00fed10e"), entry).toHex(), QByteArray("00fed10e"));
}

void TestFaults::OtherStrayBytes()
{
    FaultEntry before = Simulator::EntryOf(Fault::GarbageBefore);
    before.bytes = QByteArray::fromHex("0600ff");
    QCOMPARE(Simulator::Damaged(QByteArray::fromHex("06c660"), before).toHex(), QByteArray("0600ff06c660"));
    FaultEntry after = Simulator::EntryOf(Fault::GarbageAfter);
    after.bytes = QByteArray::fromHex("00");
    QCOMPARE(Simulator::Damaged(QByteArray::fromHex("06c660"), after).toHex(), QByteArray("06c66000"));
}

void TestFaults::NoAnswerStaysNone()
{
    for (const Simulator::NamedFault& fault : Simulator::Faults) {
        QVERIFY2(Simulator::Damaged(QByteArray(), Simulator::EntryOf(fault.fault)).isEmpty(), fault.name);
    }
}

QTEST_APPLESS_MAIN(TestFaults)
#include "tst_faults.moc"
