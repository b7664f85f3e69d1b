#include "client/sessions/gapwatch.h"

#include <QtTest>

using VesmarClient::Gap;
using VesmarClient::GapWatch;
using Gaps = QVector<Gap>;

class TestClientGapWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ReadingsInTimeLeaveNoGap();
    void GapIsToldWhileItLasts();
    void GapThatNobodyAskedForIsTold();
    void EachGapIsKept();
    void GapMayBeFirstOrLast();
    void LostLinkIsAGapAtOnce();
    void NothingIsAGapUnlessTheMeasurementRuns();
};

void TestClientGapWatch::ReadingsInTimeLeaveNoGap()
{
    GapWatch watch;
    watch.Begin(500);
    QVERIFY(!watch.AcceptReading(1499));
    QVERIFY(!watch.Advance(2498));
    QVERIFY(!watch.AcceptReading(2498));
    QVERIFY(!watch.End(3000));
    QCOMPARE(watch.Gaps(), Gaps());
}

void TestClientGapWatch::GapIsToldWhileItLasts()
{
    GapWatch watch;
    watch.Begin(0);
    watch.AcceptReading(100);
    QVERIFY(!watch.Advance(1099));
    QVERIFY(watch.Advance(1100));
    QCOMPARE(watch.Gaps(), (Gaps{{100, 1000}}));
    QVERIFY(watch.Advance(2100));
    QCOMPARE(watch.Gaps(), (Gaps{{100, 2000}}));
    QVERIFY(watch.AcceptReading(4300));
    QCOMPARE(watch.Gaps(), (Gaps{{100, 4200}}));
    QVERIFY(!watch.AcceptReading(4400));
}

void TestClientGapWatch::GapThatNobodyAskedForIsTold()
{
    GapWatch watch;
    watch.Begin(0);
    QVERIFY(watch.AcceptReading(1000));
    QCOMPARE(watch.Gaps(), (Gaps{{0, 1000}}));
}

void TestClientGapWatch::EachGapIsKept()
{
    GapWatch watch;
    watch.Begin(0);
    watch.AcceptReading(2000);
    watch.AcceptReading(2100);
    watch.AcceptReading(5100);
    QCOMPARE(watch.Gaps(), (Gaps{{0, 2000}, {2100, 3000}}));
}

void TestClientGapWatch::GapMayBeFirstOrLast()
{
    GapWatch watch;
    watch.Begin(700);
    QVERIFY(watch.AcceptReading(2000));
    QVERIFY(watch.End(3000));
    QVERIFY(!watch.Advance(9000));
    QCOMPARE(watch.Gaps(), (Gaps{{700, 1300}, {2000, 1000}}));
}

void TestClientGapWatch::LostLinkIsAGapAtOnce()
{
    GapWatch watch;
    watch.Begin(0);
    watch.AcceptReading(100);
    QVERIFY(watch.LoseLink(300));
    QCOMPARE(watch.Gaps(), (Gaps{{100, 200}}));
    QVERIFY(watch.End(5000));
    QCOMPARE(watch.Gaps(), (Gaps{{100, 4900}}));
}

void TestClientGapWatch::NothingIsAGapUnlessTheMeasurementRuns()
{
    GapWatch watch;
    QVERIFY(!watch.Advance(5000));
    QVERIFY(!watch.LoseLink(5000));
    QVERIFY(!watch.AcceptReading(5000));
    QVERIFY(!watch.End(9000));
    QCOMPARE(watch.Gaps(), Gaps());
}

QTEST_GUILESS_MAIN(TestClientGapWatch)
#include "tst_clientgapwatch.moc"
