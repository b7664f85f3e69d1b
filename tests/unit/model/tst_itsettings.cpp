#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/itsettings.h>

#include "settingschecks.h"

using Vesmar::ITSettings;

namespace
{

void SetEveryField(ITSettings& settings)
{
    settings.SetConfiguration(static_cast<ITSettings::ITConfiguration>(71));
    settings.SetTime(77);
}

void VerifyEveryField(const ITSettings& settings)
{
    QCOMPARE(settings.GetConfiguration(), static_cast<ITSettings::ITConfiguration>(71));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestITSettings : public QObject
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
    void BuildsTheCodeFromTheConfiguration_data();
    void BuildsTheCodeFromTheConfiguration();
};

void TestITSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, ITSettings>);
    SettingsChecks::VerifyPattern<ITSettings>(7);
}

void TestITSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<ITSettings::ITConfiguration>, int>);
    QCOMPARE(static_cast<int>(ITSettings::ITConfiguration::Configuration1), 1);
    QCOMPARE(static_cast<int>(ITSettings::ITConfiguration::Configuration2), 2);
}

void TestITSettings::HasItsDefaults()
{
    const ITSettings settings;
    QCOMPARE(settings.GetConfiguration(), static_cast<ITSettings::ITConfiguration>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestITSettings::StoresEveryFieldUnchecked()
{
    ITSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestITSettings::ClonesEveryField()
{
    ITSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestITSettings::CopiesEveryField()
{
    ITSettings settings;
    SetEveryField(settings);
    const ITSettings copy(settings);
    VerifyEveryField(copy);
}

void TestITSettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("07 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
}

void TestITSettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<ITSettings>();
}

void TestITSettings::BuildsTheCodeFromTheConfiguration_data()
{
    QTest::addColumn<int>("configuration");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("configuration -1") << -1 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("configuration 0") << 0 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("configuration 1") << 1 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
    QTest::newRow("configuration 2") << 2 << QByteArray::fromHex("07 05 04 00 FF FF FF FF");
    QTest::newRow("configuration 3") << 3 << QByteArray::fromHex("07 05 00 00 FF FF FF FF");
}

void TestITSettings::BuildsTheCodeFromTheConfiguration()
{
    QFETCH(const int, configuration);
    QFETCH(const QByteArray, payload);
    ITSettings settings;
    settings.SetConfiguration(static_cast<ITSettings::ITConfiguration>(configuration));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

QTEST_APPLESS_MAIN(TestITSettings)
#include "tst_itsettings.moc"
