#include <array>
#include <cstddef>

#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/risosettings.h>

#include "settingschecks.h"

using Vesmar::RISOSettings;

namespace
{

void SetEveryField(RISOSettings& settings)
{
    settings.SetMode(static_cast<RISOSettings::RISOMode>(31));
    settings.SetVoltage(static_cast<RISOSettings::RISOVoltage>(32));
    settings.SetTime(77);
}

void VerifyEveryField(const RISOSettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<RISOSettings::RISOMode>(31));
    QCOMPARE(settings.GetVoltage(), static_cast<RISOSettings::RISOVoltage>(32));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestRISOSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void NamesTheInstrumentsNumbers();
    void HasItsDefaults();
    void StoresEveryFieldUnchecked();
    void ClonesEveryField();
    void CopiesEveryField();
    void SendsWhetherATimeIsSetAndNeverTheTime_data();
    void SendsWhetherATimeIsSetAndNeverTheTime();
    void BuildsTheCodeFromVoltageAndMode_data();
    void BuildsTheCodeFromVoltageAndMode();
    void DefaultsGiveTheirPayload();
};

void TestRISOSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, RISOSettings>);
    SettingsChecks::VerifyPattern<RISOSettings>(3);
}

void TestRISOSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<RISOSettings::RISOVoltage>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RISOSettings::RISOMode>, int>);
    QCOMPARE(static_cast<int>(RISOSettings::RISOVoltage::Voltage0), 0);
    QCOMPARE(static_cast<int>(RISOSettings::RISOVoltage::Voltage1), 1);
    QCOMPARE(static_cast<int>(RISOSettings::RISOVoltage::Voltage2), 2);
    QCOMPARE(static_cast<int>(RISOSettings::RISOVoltage::Voltage3), 3);
    QCOMPARE(static_cast<int>(RISOSettings::RISOMode::Mode1), 1);
    QCOMPARE(static_cast<int>(RISOSettings::RISOMode::Mode2), 2);
    QCOMPARE(static_cast<int>(RISOSettings::RISOMode::Mode4), 4);
}

void TestRISOSettings::HasItsDefaults()
{
    const RISOSettings settings;
    QCOMPARE(settings.GetMode(), static_cast<RISOSettings::RISOMode>(-1));
    QCOMPARE(settings.GetVoltage(), static_cast<RISOSettings::RISOVoltage>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestRISOSettings::StoresEveryFieldUnchecked()
{
    RISOSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestRISOSettings::ClonesEveryField()
{
    RISOSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestRISOSettings::CopiesEveryField()
{
    RISOSettings settings;
    SetEveryField(settings);
    const RISOSettings copy(settings);
    VerifyEveryField(copy);
}

void TestRISOSettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("03 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("03 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("03 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("03 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("03 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("03 05 00 00 FF FF FF FF");
}

void TestRISOSettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<RISOSettings>();
}

void TestRISOSettings::BuildsTheCodeFromVoltageAndMode_data()
{
    QTest::addColumn<int>("voltage");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("payload");
    struct {
        int mode;
        std::array<const char*, 4> byVoltage;
    } const codes[] = {
        {-1, {"00", "01", "02", "03"}}, {0, {"00", "01", "02", "03"}}, {1, {"04", "05", "06", "07"}},
        {2, {"08", "09", "0A", "0B"}},  {3, {"00", "01", "02", "03"}}, {4, {"10", "11", "12", "13"}},
        {5, {"00", "01", "02", "03"}},
    };
    for (const auto& code : codes) {
        for (int voltage = 0; voltage < 4; ++voltage) {
            QTest::addRow("voltage %d, mode %d", voltage, code.mode)
                << voltage << code.mode
                << QByteArray::fromHex(QByteArray("03 05 ") +
                                       code.byVoltage[static_cast<std::size_t>(voltage)] + "00 FF FF FF FF");
        }
    }
    QTest::newRow("voltage 4 runs into the mode bits")
        << 4 << -1 << QByteArray::fromHex("03 05 04 00 FF FF FF FF");
    QTest::newRow("voltage 9 joins mode 1") << 9 << 1 << QByteArray::fromHex("03 05 0D 00 FF FF FF FF");
    QTest::newRow("voltage 28 sets every mode bit")
        << 28 << 2 << QByteArray::fromHex("03 05 1C 00 FF FF FF FF");
    QTest::newRow("voltage 259 keeps its low bits")
        << 259 << 4 << QByteArray::fromHex("03 05 13 00 FF FF FF FF");
    QTest::newRow("voltage -1 fills the byte") << -1 << -1 << QByteArray::fromHex("03 05 FF 00 FF FF FF FF");
}

void TestRISOSettings::BuildsTheCodeFromVoltageAndMode()
{
    QFETCH(const int, voltage);
    QFETCH(const int, mode);
    QFETCH(const QByteArray, payload);
    RISOSettings settings;
    settings.SetVoltage(static_cast<RISOSettings::RISOVoltage>(voltage));
    settings.SetMode(static_cast<RISOSettings::RISOMode>(mode));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

void TestRISOSettings::DefaultsGiveTheirPayload()
{
    RISOSettings settings;
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("03 05 00 00 FF FF FF FF"));
}

QTEST_APPLESS_MAIN(TestRISOSettings)
#include "tst_risosettings.moc"
