#include <QtTest>

#include "simulator/wire/frames.h"

class TestFrames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ChecksumFollowsLowByteFirst();
    void ShortFrames();
    void DamageIsSeen_data();
    void DamageIsSeen();
    void RequestSizes_data();
    void RequestSizes();
};

void TestFrames::ChecksumFollowsLowByteFirst()
{
    QCOMPARE(Simulator::Sealed("123456789").toHex(), QByteArray("313233343536373839c331"));
    QCOMPARE(Simulator::Sealed("s").toHex(), QByteArray("73f44e"));
    QCOMPARE(Simulator::Sealed("W").toHex(), QByteArray("57122a"));
}

void TestFrames::ShortFrames()
{
    QCOMPARE(Simulator::Acknowledge().toHex(), QByteArray("06c660"));
    QCOMPARE(Simulator::Refusal().toHex(), QByteArray("214334"));
}

void TestFrames::DamageIsSeen_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("intact");
    QTest::newRow("intact") << QByteArray::fromHex("73f44e") << true;
    QTest::newRow("bit of the code") << QByteArray::fromHex("72f44e") << false;
    QTest::newRow("bit of the checksum") << QByteArray::fromHex("73f44f") << false;
    QTest::newRow("bytes of the checksum exchanged") << QByteArray::fromHex("734ef4") << false;
    QTest::newRow("checksum of nothing") << QByteArray::fromHex("0000") << false;
    QTest::newRow("one byte") << QByteArray::fromHex("73") << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void TestFrames::DamageIsSeen()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, intact);
    QCOMPARE(Simulator::IsIntact(frame), intact);
}

void TestFrames::RequestSizes_data()
{
    QTest::addColumn<QByteArray>("codes");
    QTest::addColumn<int>("size");
    QTest::newRow("no data") << QByteArray("sWSheRTV") << 3;
    QTest::newRow("mode") << QByteArray("x") << 4;
    QTest::newRow("confirmation") << QByteArray("Z") << 5;
    QTest::newRow("date") << QByteArray("rt") << 9;
    QTest::newRow("payload") << QByteArray("P") << 11;
    QTest::newRow("sector") << QByteArray("F") << 515;
    QTest::newRow("unknown") << QByteArray("\0wpX\xFF", 5) << 0;
}

void TestFrames::RequestSizes()
{
    QFETCH(QByteArray, codes);
    QFETCH(int, size);
    for (const char code : codes) {
        QCOMPARE(Simulator::RequestSize(code), size);
    }
}

QTEST_APPLESS_MAIN(TestFrames)
#include "tst_frames.moc"
