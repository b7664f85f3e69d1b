#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/hvtestsettings.h>

#include "settingschecks.h"

using Vesmar::HVTestSettings;

namespace
{

void SetEveryField(HVTestSettings& settings)
{
    settings.SetMode(static_cast<HVTestSettings::HVMode>(91));
    settings.SetMeasurementTimeOffset(92.5F);
    settings.SetTime(77);
}

void VerifyEveryField(const HVTestSettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<HVTestSettings::HVMode>(91));
    QCOMPARE(settings.GetMeasurementTimeOffset(), 92.5F);
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestHVTestSettings : public QObject
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
    void BuildsTheCodeFromTheMode_data();
    void BuildsTheCodeFromTheMode();
    void DefaultsGiveTheirPayload();
};

void TestHVTestSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, HVTestSettings>);
    SettingsChecks::VerifyPattern<HVTestSettings>(9);
}

void TestHVTestSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<HVTestSettings::HVMode>, int>);
    QCOMPARE(static_cast<int>(HVTestSettings::HVMode::Mode1), 1);
    QCOMPARE(static_cast<int>(HVTestSettings::HVMode::Mode2), 2);
}

void TestHVTestSettings::HasItsDefaults()
{
    const HVTestSettings settings;
    QCOMPARE(settings.GetMode(), static_cast<HVTestSettings::HVMode>(1));
    QCOMPARE(settings.GetMeasurementTimeOffset(), 3.5F);
    QCOMPARE(settings.GetTime(), 5);
}

void TestHVTestSettings::StoresEveryFieldUnchecked()
{
    HVTestSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestHVTestSettings::ClonesEveryField()
{
    HVTestSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestHVTestSettings::CopiesEveryField()
{
    HVTestSettings settings;
    SetEveryField(settings);
    const HVTestSettings copy(settings);
    VerifyEveryField(copy);
}

void TestHVTestSettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("09 FF 02 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
}

void TestHVTestSettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<HVTestSettings>();
}

void TestHVTestSettings::BuildsTheCodeFromTheMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("mode -1") << -1 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("mode 0") << 0 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("mode 1") << 1 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
    QTest::newRow("mode 2") << 2 << QByteArray::fromHex("09 05 05 00 FF FF FF FF");
    QTest::newRow("mode 3") << 3 << QByteArray::fromHex("09 05 02 00 FF FF FF FF");
}

void TestHVTestSettings::BuildsTheCodeFromTheMode()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, payload);
    HVTestSettings settings;
    settings.SetMode(static_cast<HVTestSettings::HVMode>(mode));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

void TestHVTestSettings::DefaultsGiveTheirPayload()
{
    HVTestSettings settings;
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("09 05 02 00 FF FF FF FF"));
}

QTEST_APPLESS_MAIN(TestHVTestSettings)
#include "tst_hvtestsettings.moc"
