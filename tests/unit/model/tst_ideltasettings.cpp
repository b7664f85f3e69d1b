#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/ideltasettings.h>

#include "settingschecks.h"

using Vesmar::IDELTASettings;

namespace
{

void SetEveryField(IDELTASettings& settings)
{
    settings.SetMode(static_cast<IDELTASettings::IDELTAMode>(61));
    settings.SetConfiguration(static_cast<IDELTASettings::IDELTAConfiguration>(62));
    settings.SetTime(77);
}

void VerifyEveryField(const IDELTASettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<IDELTASettings::IDELTAMode>(61));
    QCOMPARE(settings.GetConfiguration(), static_cast<IDELTASettings::IDELTAConfiguration>(62));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestIDELTASettings : public QObject
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

void TestIDELTASettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, IDELTASettings>);
    SettingsChecks::VerifyPattern<IDELTASettings>(6);
}

void TestIDELTASettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<IDELTASettings::IDELTAMode>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<IDELTASettings::IDELTAConfiguration>, int>);
    QCOMPARE(static_cast<int>(IDELTASettings::IDELTAMode::Mode1), 1);
    QCOMPARE(static_cast<int>(IDELTASettings::IDELTAMode::Mode2), 2);
    QCOMPARE(static_cast<int>(IDELTASettings::IDELTAConfiguration::Configuration1), 1);
    QCOMPARE(static_cast<int>(IDELTASettings::IDELTAConfiguration::Configuration2), 2);
}

void TestIDELTASettings::HasItsDefaults()
{
    const IDELTASettings settings;
    QCOMPARE(settings.GetMode(), static_cast<IDELTASettings::IDELTAMode>(0));
    QCOMPARE(settings.GetConfiguration(), static_cast<IDELTASettings::IDELTAConfiguration>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestIDELTASettings::StoresEveryFieldUnchecked()
{
    IDELTASettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestIDELTASettings::ClonesEveryField()
{
    IDELTASettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestIDELTASettings::CopiesEveryField()
{
    IDELTASettings settings;
    SetEveryField(settings);
    const IDELTASettings copy(settings);
    VerifyEveryField(copy);
}

void TestIDELTASettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("06 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
}

void TestIDELTASettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<IDELTASettings>();
}

void TestIDELTASettings::BuildsTheCodeFromModeAndConfiguration_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("configuration");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("mode -1, configuration -1") << -1 << -1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 0") << -1 << 0 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 1") << -1 << 1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 2") << -1 << 2 << QByteArray::fromHex("06 05 04 00 FF FF FF FF");
    QTest::newRow("mode -1, configuration 3") << -1 << 3 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration -1") << 0 << -1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 0") << 0 << 0 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 1") << 0 << 1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 2") << 0 << 2 << QByteArray::fromHex("06 05 04 00 FF FF FF FF");
    QTest::newRow("mode 0, configuration 3") << 0 << 3 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration -1") << 1 << -1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 0") << 1 << 0 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 1") << 1 << 1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 2") << 1 << 2 << QByteArray::fromHex("06 05 04 00 FF FF FF FF");
    QTest::newRow("mode 1, configuration 3") << 1 << 3 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration -1") << 2 << -1 << QByteArray::fromHex("06 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 0") << 2 << 0 << QByteArray::fromHex("06 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 1") << 2 << 1 << QByteArray::fromHex("06 05 01 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 2") << 2 << 2 << QByteArray::fromHex("06 05 05 00 FF FF FF FF");
    QTest::newRow("mode 2, configuration 3") << 2 << 3 << QByteArray::fromHex("06 05 01 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration -1") << 3 << -1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 0") << 3 << 0 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 1") << 3 << 1 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 2") << 3 << 2 << QByteArray::fromHex("06 05 04 00 FF FF FF FF");
    QTest::newRow("mode 3, configuration 3") << 3 << 3 << QByteArray::fromHex("06 05 00 00 FF FF FF FF");
}

void TestIDELTASettings::BuildsTheCodeFromModeAndConfiguration()
{
    QFETCH(const int, mode);
    QFETCH(const int, configuration);
    QFETCH(const QByteArray, payload);
    IDELTASettings settings;
    settings.SetMode(static_cast<IDELTASettings::IDELTAMode>(mode));
    settings.SetConfiguration(static_cast<IDELTASettings::IDELTAConfiguration>(configuration));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

QTEST_APPLESS_MAIN(TestIDELTASettings)
#include "tst_ideltasettings.moc"
