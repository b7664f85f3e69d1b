#include <cmath>
#include <cstring>

#include <QtTest>

#include "simulator/model/monitoringreadings.h"
#include "simulator/model/rcdreadings.h"
#include "simulator/model/readings.h"

using namespace std::chrono_literals;
using Simulator::Measurement;
using Simulator::RcdReadings;
using Simulator::Readings;
using Simulator::Values;
using std::chrono::milliseconds;

namespace
{

/// Returns the bytes as this machine, which is little-endian like the line, sees them.
Values ValuesOf(const QByteArray& data)
{
    Values values{};
    std::memcpy(values.data(), data.constData(), sizeof(values));
    return values;
}

bool IsNear(float value, float expected)
{
    return std::abs(value - expected) <= std::abs(expected) * 0.03F;
}

/// Returns the mean of the first value at the same moment of many measurements: it settles, without the
/// noise.
float MeanOfFirst(Measurement measurement, milliseconds moment)
{
    constexpr int Rounds = 200;
    Readings readings(3);
    float sum = 0;
    for (int round = 0; round < Rounds; ++round) {
        readings.Begin(measurement);
        readings.Advance(moment);
        sum += ValuesOf(readings.Data())[0];
    }
    return sum / Rounds;
}

/// Returns the bytes as this machine, which is little-endian like the line, sees them.
template <typename Number>
double NumberAt(const QByteArray& data, int index)
{
    Number number{};
    std::memcpy(&number, data.constData() + index, sizeof(number));
    return static_cast<double>(number);
}

bool IsWithinATenth(double value, double expected)
{
    return std::abs(value - expected) <= expected * 0.1;
}

} // namespace

class TestReadings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ZerosBeforeTheFirstStep()
    {
        Readings readings(1);
        QCOMPARE(readings.Data(), QByteArray(24, '\0'));
        readings.Begin(Measurement::Rpe);
        QCOMPARE(readings.Data(), QByteArray(24, '\0'));
    }

    void SettledValues_data()
    {
        QTest::addColumn<int>("measurement");
        QTest::addColumn<QVector<float>>("expected");
        const auto row = [](const char* name, Measurement measurement, const QVector<float>& expected) {
            QTest::newRow(name) << static_cast<int>(measurement) << expected;
        };
        row("RLN", Measurement::Rln, {52.0F, 4.16F, 0.08F, 40.0F, 0.21F, 0.0F});
        row("IEC", Measurement::Iec, {1.0F, 230.0F, 230.0F, 3.0F, 12.0F, 0.0F});
        row("RPE", Measurement::Rpe, {0.118F, 0.0236F, 0.2F, 0.0F, 0.0F, 0.0F});
        row("RISO", Measurement::Riso, {125.0F, 525.0F, 4.2F, 0.0F, 0.0F, 0.0F});
        row("ISUB", Measurement::Isub, {0.21F, 230.0F, 0.0F, 0.0F, 0.0F, 0.0F});
        row("IPE", Measurement::Ipe, {0.35F, 230.0F, 0.0F, 0.0F, 0.0F, 0.0F});
        row("IDELTA", Measurement::Idelta, {0.42F, 230.0F, 0.0F, 0.0F, 0.0F, 0.0F});
        row("IT", Measurement::It, {0.06F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F});
        row("HVTest", Measurement::HvTest, {1500.0F, 1500.0F, 0.8F, 230.0F, 24.0F, 62.0F});
    }

    void SettledValues()
    {
        QFETCH(int, measurement);
        QFETCH(QVector<float>, expected);
        Readings readings(5);
        readings.Begin(static_cast<Measurement>(measurement));
        readings.Advance(10000ms);
        QByteArray previous;
        for (int round = 0; round < 50; ++round) {
            readings.Advance(100ms);
            const Values values = ValuesOf(readings.Data());
            for (int index = 0; index < expected.size(); ++index) {
                QVERIFY2(
                    IsNear(values.at(static_cast<std::size_t>(index)), expected.at(index)),
                    qPrintable(QStringLiteral("value %1 is %2")
                                   .arg(index + 1)
                                   .arg(static_cast<double>(values.at(static_cast<std::size_t>(index))))));
            }
            QVERIFY(readings.Data() != previous); // noise
            previous = readings.Data();
        }
    }

    void Settling_data()
    {
        QTest::addColumn<int>("measurement");
        QTest::addColumn<float>("afterOneTimeConstant");
        const auto row = [](const char* name, Measurement measurement, float value) {
            QTest::newRow(name) << static_cast<int>(measurement) << value;
        };
        // 1 - 1/e of the settled value from below, 1 + 0.5/e from above
        row("RISO", Measurement::Riso, 125.0F * 0.632F);
        row("ISUB", Measurement::Isub, 0.21F * 0.632F);
        row("RPE", Measurement::Rpe, 0.118F * 1.184F);
        row("IPE", Measurement::Ipe, 0.35F * 1.184F);
        row("IDELTA", Measurement::Idelta, 0.42F * 1.184F);
        row("IT", Measurement::It, 0.06F * 1.184F);
    }

    void Settling()
    {
        QFETCH(int, measurement);
        QFETCH(float, afterOneTimeConstant);
        const float mean = MeanOfFirst(static_cast<Measurement>(measurement), 400ms);
        QVERIFY2(std::abs(mean - afterOneTimeConstant) < afterOneTimeConstant * 0.002F,
                 qPrintable(QString::number(static_cast<double>(mean))));
    }

    void ResistanceFitsVoltageAndCurrent_data()
    {
        QTest::addColumn<int>("measurement");
        QTest::newRow("RLN") << static_cast<int>(Measurement::Rln);
        QTest::newRow("RPE") << static_cast<int>(Measurement::Rpe);
        QTest::newRow("RISO") << static_cast<int>(Measurement::Riso);
    }

    void ResistanceFitsVoltageAndCurrent()
    {
        QFETCH(int, measurement);
        Readings readings(11);
        readings.Begin(static_cast<Measurement>(measurement));
        for (int round = 0; round < 50; ++round) {
            readings.Advance(100ms);
            const Values values = ValuesOf(readings.Data());
            QCOMPARE(values[0], values[1] / values[2]);
        }
    }

    void VerdictOfIec()
    {
        Readings readings(9);
        readings.Begin(Measurement::Iec);
        readings.Advance(1000ms);
        QCOMPARE(readings.Data().left(4).toHex(), QByteArray("0000803f"));
        QCOMPARE(readings.Data().mid(12, 4).toHex(), QByteArray("00004040"));
    }

    void PowerAddsUp()
    {
        Readings readings(13);
        readings.Begin(Measurement::Power);
        double energy = 0;
        for (int round = 0; round < 600; ++round) {
            readings.Advance(100ms);
            const Values values = ValuesOf(readings.Data());
            energy += static_cast<double>(values[1]) / 36000; // a tenth of a second in hours
            QVERIFY(std::abs(static_cast<double>(values[0]) - energy) <= energy * 1e-4);
            QCOMPARE(values[5], values[2] * values[3]);
            QCOMPARE(values[1], values[5] * values[4]);
            QVERIFY(values[4] > 0.9F && values[4] <= 1.0F);
        }
        const Values settled = ValuesOf(readings.Data());
        QVERIFY(IsNear(settled[2], 1.85F));
        QVERIFY(IsNear(settled[3], 230.0F));
        QVERIFY(IsNear(settled[4], 0.968F));
    }

    void HighVoltageRampsUp()
    {
        Readings readings(17);
        readings.Begin(Measurement::HvTest);
        float highest = 0;
        for (int tenth = 1; tenth <= 60; ++tenth) {
            readings.Advance(100ms);
            const Values values = ValuesOf(readings.Data());
            const float ramp = tenth < 30 ? static_cast<float>(tenth) / 30.0F : 1.0F;
            highest = std::max(highest, values[1]);
            QCOMPARE(values[0], highest);
            QVERIFY(IsNear(values[1], 1500.0F * ramp));
            QVERIFY(IsNear(values[2], 0.8F * ramp));
            QVERIFY(IsNear(values[3], 230.0F));
            QVERIFY(IsNear(values[4], 24.0F * ramp));
            QVERIFY(IsNear(values[5], 62.0F * ramp));
        }
    }

    void NextMeasurementBeginsAnew()
    {
        Readings readings(19);
        readings.Begin(Measurement::HvTest);
        readings.Advance(5000ms);
        readings.Begin(Measurement::HvTest);
        readings.Advance(300ms);
        QVERIFY(IsNear(ValuesOf(readings.Data())[0], 150.0F));
    }

    void SameSeedSameReadings()
    {
        Readings first(42);
        Readings same(42);
        Readings other(43);
        for (Readings* readings : {&first, &same, &other}) {
            readings->Begin(Measurement::Power);
            readings->Advance(100ms);
            readings->Advance(100ms);
        }
        QCOMPARE(first.Data(), same.Data());
        QVERIFY(first.Data() != other.Data());
    }

    void MonitoringBeginsAtTheUsualValues()
    {
        // 230.0, 0.4, 50.0 and three zeros
        QCOMPARE(Simulator::MonitoringReadings(1).Data().toHex(),
                 QByteArray("00006643cdcccc3e00004842000000000000000000000000"));
    }

    void MonitoringChangesAndStaysPlausible()
    {
        Simulator::MonitoringReadings readings(7);
        QByteArray previous = readings.Data();
        for (int round = 0; round < 10000; ++round) {
            readings.Advance();
            const QByteArray data = readings.Data();
            QVERIFY(data.left(12) != previous.left(12));
            QVERIFY(qAbs(ValuesOf(data)[0] - 230) < 20);
            QVERIFY(ValuesOf(data)[1] >= 0 && ValuesOf(data)[1] < 2);
            QVERIFY(qAbs(ValuesOf(data)[2] - 50) < 1);
            QCOMPARE(data.right(12), QByteArray(12, '\0'));
            previous = data;
        }
    }

    void SameSeedSameMonitoring()
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

    void UbRe()
    {
        RcdReadings readings(5);
        QByteArray previous;
        for (int round = 0; round < 50; ++round) {
            const QByteArray data = readings.UbRe();
            QVERIFY2(IsWithinATenth(NumberAt<float>(data, 0), 12.4), data.toHex().constData());
            QCOMPARE(data.mid(4), QByteArray(20, '\0'));
            QVERIFY(data != previous); // noise
            previous = data;
        }
    }

    void IaTa()
    {
        RcdReadings readings(5);
        QSet<QByteArray> seen;
        for (int round = 0; round < 50; ++round) {
            const QByteArray data = readings.IaTa(true);
            QVERIFY2(IsWithinATenth(NumberAt<float>(data, 0), 12.4), data.toHex().constData());
            QVERIFY2(IsWithinATenth(NumberAt<quint16>(data, 4), 215), data.toHex().constData());
            QVERIFY2(IsWithinATenth(NumberAt<quint16>(data, 6), 243), data.toHex().constData());
            QCOMPARE(data.mid(8), QByteArray(16, '\0'));
            seen.insert(data);
        }
        QVERIFY(seen.size() > 10);
    }

    void NoTa()
    {
        RcdReadings readings(5);
        const QByteArray data = readings.IaTa(false);
        QVERIFY(IsWithinATenth(NumberAt<quint16>(data, 4), 215));
        QCOMPARE(data.mid(6, 2).toHex(), QByteArray("eeee"));
        QCOMPARE(data.mid(8), QByteArray(16, '\0'));
    }

    void SameSeedSameRcdReadings()
    {
        RcdReadings first(42);
        RcdReadings same(42);
        RcdReadings other(43);
        const QByteArray reading = first.UbRe();
        QCOMPARE(reading, same.UbRe());
        QVERIFY(reading != other.UbRe());
        QCOMPARE(first.IaTa(true), same.IaTa(true));
    }
};

QTEST_APPLESS_MAIN(TestReadings)
#include "tst_readings.moc"
