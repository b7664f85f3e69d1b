#include <cmath>
#include <cstring>

#include <QtTest>

#include "simulator/model/rcdreadings.h"

using Simulator::RcdReadings;

namespace
{

/// The bytes as this machine (little-endian like the line) sees them.
template <typename Number>
double NumberAt(const QByteArray& data, int index)
{
    Number number{};
    std::memcpy(&number, data.constData() + index, sizeof(number));
    return static_cast<double>(number);
}

bool IsNear(double value, double expected)
{
    return std::abs(value - expected) <= expected * 0.1;
}

} // namespace

class TestRcdReadings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void UbRe();
    void IaTa();
    void NoTa();
    void SameSeedSameReadings();
};

void TestRcdReadings::UbRe()
{
    RcdReadings readings(5);
    QByteArray previous;
    for (int round = 0; round < 50; ++round) {
        const QByteArray data = readings.UbRe();
        QVERIFY2(IsNear(NumberAt<float>(data, 0), 12.4), data.toHex().constData());
        QCOMPARE(data.mid(4), QByteArray(20, '\0'));
        QVERIFY(data != previous); // noise
        previous = data;
    }
}

void TestRcdReadings::IaTa()
{
    RcdReadings readings(5);
    QSet<QByteArray> seen;
    for (int round = 0; round < 50; ++round) {
        const QByteArray data = readings.IaTa(true);
        QVERIFY2(IsNear(NumberAt<float>(data, 0), 12.4), data.toHex().constData());
        QVERIFY2(IsNear(NumberAt<quint16>(data, 4), 215), data.toHex().constData());
        QVERIFY2(IsNear(NumberAt<quint16>(data, 6), 243), data.toHex().constData());
        QCOMPARE(data.mid(8), QByteArray(16, '\0'));
        seen.insert(data);
    }
    QVERIFY(seen.size() > 10);
}

void TestRcdReadings::NoTa()
{
    RcdReadings readings(5);
    const QByteArray data = readings.IaTa(false);
    QVERIFY(IsNear(NumberAt<quint16>(data, 4), 215));
    QCOMPARE(data.mid(6, 2).toHex(), QByteArray("eeee"));
    QCOMPARE(data.mid(8), QByteArray(16, '\0'));
}

void TestRcdReadings::SameSeedSameReadings()
{
    RcdReadings first(42);
    RcdReadings same(42);
    RcdReadings other(43);
    const QByteArray reading = first.UbRe();
    QCOMPARE(reading, same.UbRe());
    QVERIFY(reading != other.UbRe());
    QCOMPARE(first.IaTa(true), same.IaTa(true));
}

QTEST_APPLESS_MAIN(TestRcdReadings)
#include "tst_rcdreadings.moc"
