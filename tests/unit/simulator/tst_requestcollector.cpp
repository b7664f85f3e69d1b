#include <QtTest>

#include "simulator/wire/requestcollector.h"

using Simulator::RequestCollector;
using Simulator::TimePoint;
using std::chrono::microseconds;

class TestRequestCollector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KnownRequestIsOverAtOnce();
    void RequestInPieces();
    void TwoRequestsInOnePiece();
    void DamagedRequestIsOverAfterSilence();
    void UnknownRequestIsOverAfterSilence();
    void NoiseWithoutAPauseEndsSomewhere();
    void NothingIsNoRequest();
};

void TestRequestCollector::KnownRequestIsOverAtOnce()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray::fromHex("73f44e"), start);
    const auto request = collector.Take(start);
    QVERIFY(request.has_value());
    QCOMPARE(request->frame.toHex(), QByteArray("73f44e"));
    QVERIFY(!collector.Take(start).has_value());
    QVERIFY(!collector.SilenceEndsAt().has_value());
}

void TestRequestCollector::RequestInPieces()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray::fromHex("7801"), start);
    QVERIFY(!collector.Take(start).has_value());
    collector.Append(QByteArray::fromHex("d1"), start + microseconds(1500));
    QVERIFY(!collector.Take(start + microseconds(2500)).has_value());
    collector.Append(QByteArray::fromHex("91"), start + microseconds(3000));
    const auto request = collector.Take(start + microseconds(3000));
    QVERIFY(request.has_value());
    QCOMPARE(request->frame.toHex(), QByteArray("7801d191"));
    QVERIFY(request->receivedAt == start);
}

void TestRequestCollector::TwoRequestsInOnePiece()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray::fromHex("73f44e57122a"), start);
    QCOMPARE(collector.Take(start).value().frame.toHex(), QByteArray("73f44e"));
    QCOMPARE(collector.Take(start).value().frame.toHex(), QByteArray("57122a"));
}

void TestRequestCollector::DamagedRequestIsOverAfterSilence()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray::fromHex("73f44f"), start);
    QVERIFY(!collector.Take(start + microseconds(49999)).has_value());
    QVERIFY(collector.SilenceEndsAt() == start + microseconds(50000));
    QCOMPARE(collector.Take(start + microseconds(50000)).value().frame.toHex(), QByteArray("73f44f"));
}

void TestRequestCollector::UnknownRequestIsOverAfterSilence()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray::fromHex("00"), start);
    QVERIFY(!collector.Take(start).has_value());
    QCOMPARE(collector.Take(start + microseconds(50000)).value().frame.toHex(), QByteArray("00"));
}

void TestRequestCollector::NoiseWithoutAPauseEndsSomewhere()
{
    const TimePoint start;
    RequestCollector collector;
    collector.Append(QByteArray(1024, '\0'), start);
    QVERIFY(!collector.Take(start).has_value());
    collector.Append(QByteArray(1, '\0'), start);
    QCOMPARE(collector.Take(start).value().frame.size(), 1025);
}

void TestRequestCollector::NothingIsNoRequest()
{
    RequestCollector collector;
    QVERIFY(!collector.Take(TimePoint() + std::chrono::hours(1)).has_value());
    QVERIFY(!collector.SilenceEndsAt().has_value());
}

QTEST_APPLESS_MAIN(TestRequestCollector)
#include "tst_requestcollector.moc"
