#include "cli/doctor/linerecord.h"

#include <QtTest>

#include <cerrno>

using Cli::LineAnswer;
using Cli::LineExchange;
using Cli::LineRecord;
using std::chrono::microseconds;

namespace
{

const QByteArray Proper = QByteArray::fromHex("00F01FEF");
const QByteArray Refusal = QByteArray::fromHex("214334");

LineExchange Answered(const QByteArray& answer, int micros)
{
    return {answer, microseconds(micros), 0};
}

void Add(LineRecord& record, const LineExchange& exchange, int times)
{
    for (int i = 0; i < times; ++i) {
        record.Add(exchange);
    }
}

/// The counts of all buckets, in order.
QVector<int> Counts(const LineRecord& record)
{
    QVector<int> counts;
    for (const Cli::TimeBucket& bucket : record.Histogram()) {
        counts.append(bucket.count);
    }
    return counts;
}

} // namespace

class TestCliLineRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingAsked();
    void CountsEachKind();
    void KeepsTheLastProperStatus();
    void TimesOfAllAnswers();
    void HistogramWithItsLimits();
    void EachTimeIsInOneBucket_data();
    void EachTimeIsInOneBucket();
    void LateIsLaterThanALostLinkWaits();
    void HopelessAfterThreeSilentInARow();
    void HopelessWithABrokenLine();
};

void TestCliLineRecord::NothingAsked()
{
    const LineRecord record;
    QCOMPARE(record.Asked(), 0);
    QCOMPARE(record.LateCount(), 0);
    QVERIFY(!record.Times().has_value());
    QVERIFY(!record.Status().has_value());
    QVERIFY(!record.IsHopeless());
    QCOMPARE(Counts(record), QVector<int>(13, 0));
}

void TestCliLineRecord::CountsEachKind()
{
    LineRecord record;
    Add(record, Answered(Proper, 100), 4);
    Add(record, Answered(Refusal, 100), 3);
    Add(record, Answered("noise", 100), 2);
    Add(record, Answered({}, 0), 1);
    QCOMPARE(record.Asked(), 10);
    QCOMPARE(record.Count(LineAnswer::Proper), 4);
    QCOMPARE(record.Count(LineAnswer::Refused), 3);
    QCOMPARE(record.Count(LineAnswer::Damaged), 2);
    QCOMPARE(record.Count(LineAnswer::Silent), 1);
    QCOMPARE(record.LineError(), 0);
}

void TestCliLineRecord::KeepsTheLastProperStatus()
{
    LineRecord record;
    record.Add(Answered(Proper, 100));
    record.Add(Answered(QByteArray::fromHex("A3529A32"), 100));
    record.Add(Answered(Refusal, 100));
    QVERIFY(record.Status()->function == Vesmar::MeasurementType::RISO);
}

void TestCliLineRecord::TimesOfAllAnswers()
{
    LineRecord record;
    record.Add(Answered(Proper, 2500));
    record.Add(Answered(Refusal, 900500));
    record.Add(Answered({}, 0));
    record.Add(Answered("noise", 200));
    QCOMPARE(record.Times()->fastest, 0.2);
    QCOMPARE(record.Times()->median, 2.5);
    QCOMPARE(record.Times()->slowest, 900.5);
}

void TestCliLineRecord::HistogramWithItsLimits()
{
    QVector<int> limits;
    const LineRecord record;
    for (const Cli::TimeBucket& bucket : record.Histogram()) {
        limits.append(bucket.below.value_or(-1));
    }
    QCOMPARE(limits, (QVector<int>{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 4000, -1}));
}

void TestCliLineRecord::EachTimeIsInOneBucket_data()
{
    QTest::addColumn<int>("micros");
    QTest::addColumn<int>("bucket");
    QTest::newRow("at once") << 0 << 0;
    QTest::newRow("just below the first limit") << 999 << 0;
    QTest::newRow("at the first limit") << 1000 << 1;
    QTest::newRow("in the middle") << 150000 << 7;
    QTest::newRow("just below the last limit") << 3999999 << 11;
    QTest::newRow("at the last limit") << 4000000 << 12;
}

void TestCliLineRecord::EachTimeIsInOneBucket()
{
    QFETCH(int, micros);
    QFETCH(int, bucket);
    LineRecord record;
    Add(record, Answered(Proper, micros), 7);
    QVector<int> expected(13, 0);
    expected[bucket] = 7;
    QCOMPARE(Counts(record), expected);
}

void TestCliLineRecord::LateIsLaterThanALostLinkWaits()
{
    LineRecord record;
    record.Add(Answered(Proper, 500000));
    QCOMPARE(record.LateCount(), 0);
    record.Add(Answered(Proper, 500001));
    record.Add(Answered(Refusal, 3000000));
    QCOMPARE(record.LateCount(), 2);
}

void TestCliLineRecord::HopelessAfterThreeSilentInARow()
{
    LineRecord record;
    Add(record, Answered({}, 0), 2);
    QVERIFY(!record.IsHopeless());
    record.Add(Answered("noise", 100));
    Add(record, Answered({}, 0), 2);
    QVERIFY(!record.IsHopeless());
    record.Add(Answered({}, 0));
    QVERIFY(record.IsHopeless());
    QCOMPARE(record.Asked(), 6);
}

void TestCliLineRecord::HopelessWithABrokenLine()
{
    LineRecord record;
    record.Add({Proper, microseconds(100), EIO});
    QVERIFY(record.IsHopeless());
    QCOMPARE(record.LineError(), EIO);
    QCOMPARE(record.Asked(), 0);
}

QTEST_GUILESS_MAIN(TestCliLineRecord)
#include "tst_clilinerecord.moc"
