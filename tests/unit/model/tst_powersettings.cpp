#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/powersettings.h>

#include "settingschecks.h"

using Vesmar::POWERSettings;

namespace
{

void SetEveryField(POWERSettings& settings)
{
    settings.SetMode(static_cast<POWERSettings::POWERMode>(81));
    settings.SetTime(77);
}

void VerifyEveryField(const POWERSettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<POWERSettings::POWERMode>(81));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestPOWERSettings : public QObject
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
};

void TestPOWERSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, POWERSettings>);
    SettingsChecks::VerifyPattern<POWERSettings>(8);
}

void TestPOWERSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<POWERSettings::POWERMode>, int>);
    QCOMPARE(static_cast<int>(POWERSettings::POWERMode::Mode1), 1);
    QCOMPARE(static_cast<int>(POWERSettings::POWERMode::Mode2), 2);
}

void TestPOWERSettings::HasItsDefaults()
{
    const POWERSettings settings;
    QCOMPARE(settings.GetMode(), static_cast<POWERSettings::POWERMode>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestPOWERSettings::StoresEveryFieldUnchecked()
{
    POWERSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestPOWERSettings::ClonesEveryField()
{
    POWERSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestPOWERSettings::CopiesEveryField()
{
    POWERSettings settings;
    SetEveryField(settings);
    const POWERSettings copy(settings);
    VerifyEveryField(copy);
}

void TestPOWERSettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("08 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
}

void TestPOWERSettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<POWERSettings>();
}

void TestPOWERSettings::BuildsTheCodeFromTheMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("mode -1") << -1 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("mode 0") << 0 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("mode 1") << 1 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
    QTest::newRow("mode 2") << 2 << QByteArray::fromHex("08 05 01 00 FF FF FF FF");
    QTest::newRow("mode 3") << 3 << QByteArray::fromHex("08 05 00 00 FF FF FF FF");
}

void TestPOWERSettings::BuildsTheCodeFromTheMode()
{
    QFETCH(const int, mode);
    QFETCH(const QByteArray, payload);
    POWERSettings settings;
    settings.SetMode(static_cast<POWERSettings::POWERMode>(mode));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

QTEST_APPLESS_MAIN(TestPOWERSettings)
#include "tst_powersettings.moc"
