#include <QtTest>

#include "protocol/dates.h"
#include "support/wire.h"

class TestDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DatesAreDecodedFromPackedDecimals_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QTime>("time");
        const auto row = [](const char* name, const char* bytes, QDate date, QTime time) {
            QTest::newRow(name) << WithChecksum(Wire::Bytes(bytes)) << date << time;
        };
        row("end of a year", "24 12 31 23 59 58", {2024, 12, 31}, {23, 59, 58});
        row("every field different", "16 03 07 14 05 09", {2016, 3, 7}, {14, 5, 9});
        row("2000", "00 01 01 00 00 00", {2000, 1, 1}, {0, 0, 0});
        row("2099", "99 10 20 10 20 30", {2099, 10, 20}, {10, 20, 30});
        row("tens of 10", "A0 01 01 00 00 00", {2100, 1, 1}, {0, 0, 0});
        row("units above 9", "0F 0A 0B 0C 0D 0E", {2015, 10, 11}, {12, 13, 14});
        row("month 13", "24 13 01 10 20 30", {}, {10, 20, 30});
        row("31 February", "24 02 31 10 20 30", {}, {10, 20, 30});
        row("25 o'clock", "24 12 31 25 00 00", {2024, 12, 31}, {});
        row("every bit set", "FF FF FF FF FF FF", {}, {});
        row("no bit set", "00 00 00 00 00 00", {}, {0, 0, 0});
    }

    void DatesAreDecodedFromPackedDecimals()
    {
        QFETCH(const QByteArray, bytes);
        QTEST(Vesmar::DecodeDate(bytes), "date");
        QTEST(Vesmar::DecodeTime(bytes), "time");
    }

    void DatesAreEncodedInPackedDecimals_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QByteArray>("bytes");
        const auto row = [](const char* name, QDate date, QTime time, const char* bytes) {
            QTest::newRow(name) << date << time << Wire::Bytes(bytes);
        };
        row("every field different", {2024, 3, 7}, {14, 5, 9}, "24 03 07 14 05 09");
        row("largest fields", {2099, 12, 31}, {23, 59, 59}, "99 12 31 23 59 59");
        row("midnight", {2009, 10, 20}, {0, 0, 0}, "09 10 20 00 00 00");
        row("2001", {2001, 1, 1}, {1, 1, 1}, "01 01 01 01 01 01");
        row("2000", {2000, 1, 1}, {1, 1, 1}, "00 01 01 01 01 01");
        row("before 2000", {1999, 12, 31}, {1, 1, 1}, "00 12 31 01 01 01");
        row("tens of 10 in 2100", {2100, 1, 1}, {1, 1, 1}, "A0 01 01 01 01 01");
        row("tens of 15 in 2155", {2155, 1, 1}, {1, 1, 1}, "F5 01 01 01 01 01");
        row("tens of 16 in 2161", {2161, 1, 1}, {1, 1, 1}, "01 01 01 01 01 01");
    }

    void DatesAreEncodedInPackedDecimals()
    {
        QFETCH(const QDate, date);
        QFETCH(const QTime, time);
        QTEST(Vesmar::EncodeDate(date) + Vesmar::EncodeTime(time), "bytes");
    }

    void TheLogShowsTheDayFirst()
    {
        QCOMPARE(Vesmar::DateText(QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9))),
                 QStringLiteral("07/03/2024 14:05:09"));
    }
};

QTEST_APPLESS_MAIN(TestDates)
#include "tst_dates.moc"
