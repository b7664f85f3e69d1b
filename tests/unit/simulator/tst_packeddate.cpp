#include <QtTest>

#include "simulator/wire/packeddate.h"

class TestPackedDate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PacksOneByteAField();
    void UnpacksOneByteAField();
    void RefusesWhatIsNoDate_data();
    void RefusesWhatIsNoDate();
};

void TestPackedDate::PacksOneByteAField()
{
    const QDateTime date(QDate(2024, 3, 7), QTime(14, 5, 9), Qt::UTC);
    QCOMPARE(Simulator::PackDate(date).toHex(), QByteArray("240307140509"));
}

void TestPackedDate::UnpacksOneByteAField()
{
    const auto date = Simulator::UnpackDate(QByteArray::fromHex("241231235958"));
    QVERIFY(date.has_value());
    QCOMPARE(*date, QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
    const auto firstYear = Simulator::UnpackDate(QByteArray::fromHex("000101000000"));
    QVERIFY(firstYear.has_value());
    QCOMPARE(*firstYear, QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC));
}

void TestPackedDate::RefusesWhatIsNoDate_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("year beyond two digits") << QByteArray::fromHex("a00101000000");
    QTest::newRow("units beyond nine") << QByteArray::fromHex("240a01000000");
    QTest::newRow("month 13") << QByteArray::fromHex("241301000000");
    QTest::newRow("31 February") << QByteArray::fromHex("240231000000");
    QTest::newRow("25:00") << QByteArray::fromHex("240101250000");
    QTest::newRow("too short") << QByteArray::fromHex("2401010000");
    QTest::newRow("too long") << QByteArray::fromHex("24010100000000");
}

void TestPackedDate::RefusesWhatIsNoDate()
{
    QFETCH(QByteArray, data);
    QVERIFY(!Simulator::UnpackDate(data).has_value());
}

QTEST_APPLESS_MAIN(TestPackedDate)
#include "tst_packeddate.moc"
