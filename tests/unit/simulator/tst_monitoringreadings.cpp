#include <cstring>

#include <QtTest>

#include "simulator/model/monitoringreadings.h"

class TestMonitoringReadings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BeginsAtTheUsualValues();
    void ChangesAndStaysPlausible();
    void SameSeedSameReadings();
};

namespace
{

/// The bytes as this machine (little-endian like the line) sees them.
float ValueAt(const QByteArray& data, int index)
{
    float value = 0;
    std::memcpy(&value, data.constData() + 4 * index, sizeof(value));
    return value;
}

} // namespace

void TestMonitoringReadings::BeginsAtTheUsualValues()
{
    // 230.0, 0.4, 50.0 and three zeros
    QCOMPARE(Simulator::MonitoringReadings(1).Data().toHex(),
             QByteArray("00006643cdcccc3e00004842000000000000000000000000"));
}

void TestMonitoringReadings::ChangesAndStaysPlausible()
{
    Simulator::MonitoringReadings readings(7);
    QByteArray previous = readings.Data();
    for (int round = 0; round < 10000; ++round) {
        readings.Advance();
        const QByteArray data = readings.Data();
        QVERIFY(data.left(12) != previous.left(12));
        QVERIFY(qAbs(ValueAt(data, 0) - 230) < 20);
        QVERIFY(ValueAt(data, 1) >= 0 && ValueAt(data, 1) < 2);
        QVERIFY(qAbs(ValueAt(data, 2) - 50) < 1);
        QCOMPARE(data.right(12), QByteArray(12, '\0'));
        previous = data;
    }
}

void TestMonitoringReadings::SameSeedSameReadings()
{
    Simulator::MonitoringReadings first(42);
    Simulator::MonitoringReadings same(42);
    Simulator::MonitoringReadings other(43);
    first.Advance();
    same.Advance();
    other.Advance();
    QCOMPARE(first.Data(), same.Data());
    QVERIFY(first.Data() != other.Data());
}

QTEST_APPLESS_MAIN(TestMonitoringReadings)
#include "tst_monitoringreadings.moc"
