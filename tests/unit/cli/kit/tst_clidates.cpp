#include "cli/kit/dates.h"

#include <CLI/CLI.hpp>

#include <QtTest>

class TestCliDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void DateTimes_data();
    void DateTimes();
    void BadDateTimes_data();
    void BadDateTimes();
    void Dates();
    void BadDates_data();
    void BadDates();
    void WallClockHasTheFieldsOfTheLocalTime();
};

/// A place where the hour after two is missing once a year.
void TestCliDates::initTestCase()
{
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
}

void TestCliDates::DateTimes_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("taken");
    QTest::newRow("as ISO has it") << "2026-11-21T18:00:01"
                                   << "2026-11-21T18:00:01Z";
    QTest::newRow("with a blank") << "2026-11-21 18:00:01"
                                  << "2026-11-21T18:00:01Z";
    QTest::newRow("first") << "2001-01-01T00:00:00"
                           << "2001-01-01T00:00:00Z";
    QTest::newRow("last") << "2099-12-31T23:59:59"
                          << "2099-12-31T23:59:59Z";
    QTest::newRow("leap day") << "2028-02-29T00:00:00"
                              << "2028-02-29T00:00:00Z";
    QTest::newRow("hour that is missing here") << "2026-03-29T02:30:00"
                                               << "2026-03-29T02:30:00Z";
}

void TestCliDates::DateTimes()
{
    QFETCH(QString, given);
    const QDateTime value = Cli::ParseDateTime(given.toStdString());
    QTEST(value.toString(Qt::ISODate), "taken");
}

void TestCliDates::BadDateTimes_data()
{
    QTest::addColumn<QString>("given");
    for (const char* given :
         {"", "soon", "2000-12-31T23:59:59", "2100-01-01T00:00:00", "2026-02-29T00:00:00",
          "2026-13-01T00:00:00", "2026-11-21", "2026-11-21T", "2026-11-21T18:00", "2026-11-21T24:00:00",
          "2026-11-21T18:00:60", "2026-11-21T18:00:00Z", "2026-11-21T18:00:00+01:00", "2026-11-21T18:00:00.5",
          "2026-11-21T18:00:00T", "26-11-21T18:00:00", "21.11.2026 18:00:00", " 2026-11-21T18:00:00"}) {
        QTest::addRow("<%s>", given) << QString::fromLatin1(given);
    }
}

void TestCliDates::BadDateTimes()
{
    QFETCH(QString, given);
    try {
        Cli::ParseDateTime(given.toStdString());
        QFAIL("taken");
    } catch (const CLI::ValidationError& error) {
        QCOMPARE(QString::fromLatin1(error.what()),
                 QStringLiteral("set: \"%1\" is not a date and time from 2001-01-01T00:00:00 to "
                                "2099-12-31T23:59:59, nor now")
                     .arg(given));
    }
}

void TestCliDates::Dates()
{
    QCOMPARE(Cli::ParseDate("2026-11-21"), QDate(2026, 11, 21));
    QCOMPARE(Cli::ParseDate("2001-01-01"), QDate(2001, 1, 1));
    QCOMPARE(Cli::ParseDate("2099-12-31"), QDate(2099, 12, 31));
}

void TestCliDates::BadDates_data()
{
    QTest::addColumn<QString>("given");
    for (const char* given : {"", "now", "2000-12-31", "2100-01-01", "2026-02-29", "2026-11-21T00:00:00",
                              "2026-1-2", "20261121", "-2026-11-21"}) {
        QTest::addRow("<%s>", given) << QString::fromLatin1(given);
    }
}

void TestCliDates::BadDates()
{
    QFETCH(QString, given);
    try {
        Cli::ParseDate(given.toStdString());
        QFAIL("taken");
    } catch (const CLI::ValidationError& error) {
        QCOMPARE(QString::fromLatin1(error.what()),
                 QStringLiteral("set: \"%1\" is not a date from 2001-01-01 to 2099-12-31").arg(given));
    }
}

void TestCliDates::WallClockHasTheFieldsOfTheLocalTime()
{
    const QDateTime local(QDate(2026, 7, 1), QTime(12, 0), Qt::LocalTime);
    QCOMPARE(Cli::AsWallClock(local).toString(Qt::ISODate), QStringLiteral("2026-07-01T12:00:00Z"));
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime shown = Cli::WallClock();
    QVERIFY(Cli::AsWallClock(before) <= shown);
    QVERIFY(shown <= Cli::AsWallClock(QDateTime::currentDateTime()));
}

QTEST_GUILESS_MAIN(TestCliDates)
#include "tst_clidates.moc"
