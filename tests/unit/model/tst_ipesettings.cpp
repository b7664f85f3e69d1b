#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/ipesettings.h>

#include "settingschecks.h"

using Vesmar::IPESettings;

namespace
{

void SetEveryField(IPESettings& settings)
{
    settings.SetMode(static_cast<IPESettings::IPEMode>(51));
    settings.SetConfiguration(static_cast<IPESettings::IPEConfiguration>(52));
    settings.SetTime(77);
}

void VerifyEveryField(const IPESettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<IPESettings::IPEMode>(51));
    QCOMPARE(settings.GetConfiguration(), static_cast<IPESettings::IPEConfiguration>(52));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestIPESettings : public QObject
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
    void BuildsTheCodeFromModeAndConfiguration_data();
    void BuildsTheCodeFromModeAndConfiguration();
};

void TestIPESettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, IPESettings>);
    SettingsChecks::VerifyPattern<IPESettings>(5);
}

void TestIPESettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<IPESettings::IPEMode>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<IPESettings::IPEConfiguration>, int>);
    QCOMPARE(static_cast<int>(IPESettings::IPEMode::Mode1), 1);
    QCOMPARE(static_cast<int>(IPESettings::IPEMode::Mode2), 2);
    QCOMPARE(static_cast<int>(IPESettings::IPEConfiguration::Configuration1), 1);
    QCOMPARE(static_cast<int>(IPESettings::IPEConfiguration::Configuration2), 2);
}

void TestIPESettings::HasItsDefaults()
{
    const IPESettings settings;
    QCOMPARE(settings.GetMode(), static_cast<IPESettings::IPEMode>(0));
    QCOMPARE(settings.GetConfiguration(), static_cast<IPESettings::IPEConfiguration>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestIPESettings::StoresEveryFieldUnchecked()
{
    IPESettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestIPESettings::ClonesEveryField()
{
    IPESettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestIPESettings::CopiesEveryField()
{
    IPESettings settings;
    SetEveryField(settings);
    const IPESettings copy(settings);
    VerifyEveryField(copy);
}

void TestIPESettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("05 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
}

void TestIPESettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<IPESettings>();
}

void TestIPESettings::BuildsTheCodeFromModeAndConfiguration_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("configuration");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("mode -1, configuration -1") << -1 << -1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 0") << -1 << 0 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 1") << -1 << 1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 2") << -1 << 2 << QByteArray::fromHex("05 05 04 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 3") << -1 << 3 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration -1") << 0 << -1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 0") << 0 << 0 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 1") << 0 << 1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 2") << 0 << 2 << QByteArray::fromHex("05 05 04 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 3") << 0 << 3 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration -1") << 1 << -1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 0") << 1 << 0 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 1") << 1 << 1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 2") << 1 << 2 << QByteArray::fromHex("05 05 04 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 3") << 1 << 3 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration -1") << 2 << -1 << QByteArray::fromHex("05 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 0") << 2 << 0 << QByteArray::fromHex("05 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 1") << 2 << 1 << QByteArray::fromHex("05 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 2") << 2 << 2 << QByteArray::fromHex("05 05 05 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 3") << 2 << 3 << QByteArray::fromHex("05 05 01 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration -1") << 3 << -1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 0") << 3 << 0 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 1") << 3 << 1 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 2") << 3 << 2 << QByteArray::fromHex("05 05 04 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 3") << 3 << 3 << QByteArray::fromHex("05 05 00 00 FF FF FF FF");
}

void TestIPESettings::BuildsTheCodeFromModeAndConfiguration()
{
    QFETCH(const int, mode);
    QFETCH(const int, configuration);
    QFETCH(const QByteArray, payload);
    IPESettings settings;
    settings.SetMode(static_cast<IPESettings::IPEMode>(mode));
    settings.SetConfiguration(static_cast<IPESettings::IPEConfiguration>(configuration));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

QTEST_APPLESS_MAIN(TestIPESettings)
#include "tst_ipesettings.moc"
