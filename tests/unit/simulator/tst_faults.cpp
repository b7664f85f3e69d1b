#include "simulator/faults.h"

#include <QtTest>

using Simulator::Fault;

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void WhatBecomesOfAnAnswer_data();
    void WhatBecomesOfAnAnswer();
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
    row("wrong length of data", Fault::WrongLength, "00fed10e", "00fe00ce30");
    row("wrong length of an acknowledge", Fault::WrongLength, "06c660", "0600a6aa");
}

void TestFaults::WhatBecomesOfAnAnswer()
{
    QFETCH(int, fault);
    QFETCH(QByteArray, answer);
    QFETCH(QByteArray, damaged);
    QCOMPARE(Simulator::Damaged(answer, static_cast<Fault>(fault)).toHex(), damaged.toHex());
}

void TestFaults::NoAnswerStaysNone()
{
    for (const Simulator::NamedFault& fault : Simulator::Faults) {
        QVERIFY2(Simulator::Damaged(QByteArray(), fault.fault).isEmpty(), fault.name);
    }
}

QTEST_APPLESS_MAIN(TestFaults)
#include "tst_faults.moc"
