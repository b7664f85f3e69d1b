#include <QtTest>

#include "simulator/model/deviceclock.h"

class TestDeviceClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RunsWithTheTime();
    void RunsOnFromWhereItIsSet();
};

void TestDeviceClock::RunsWithTheTime()
{
    const Simulator::TimePoint start;
    const Simulator::DeviceClock clock(QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC), start);
    QCOMPARE(clock.Date(start + std::chrono::seconds(3)),
             QDateTime(QDate(2025, 1, 1), QTime(0, 0, 1), Qt::UTC));
}

void TestDeviceClock::RunsOnFromWhereItIsSet()
{
    const Simulator::TimePoint start;
    Simulator::DeviceClock clock(QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC), start);
    clock.Set(QDateTime(QDate(2030, 6, 5), QTime(12, 0), Qt::UTC), start + std::chrono::hours(1));
    QCOMPARE(clock.Date(start + std::chrono::minutes(61)),
             QDateTime(QDate(2030, 6, 5), QTime(12, 1), Qt::UTC));
}

QTEST_APPLESS_MAIN(TestDeviceClock)
#include "tst_deviceclock.moc"
