#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/isubsettings.h>

#include "settingschecks.h"

using Vesmar::ISUBSettings;

namespace
{

void SetEveryField(ISUBSettings& settings)
{
    settings.SetTime(77);
}

void VerifyEveryField(const ISUBSettings& settings)
{
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestISUBSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void HasItsDefaults();
    void StoresEveryFieldUnchecked();
    void ClonesEveryField();
    void CopiesEveryField();
    void SendsWhetherATimeIsSetAndNeverTheTime_data();
    void SendsWhetherATimeIsSetAndNeverTheTime();
};

void TestISUBSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, ISUBSettings>);
    SettingsChecks::VerifyPattern<ISUBSettings>(4);
}

void TestISUBSettings::HasItsDefaults()
{
    const ISUBSettings settings;
    QCOMPARE(settings.GetTime(), 5);
}

void TestISUBSettings::StoresEveryFieldUnchecked()
{
    ISUBSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestISUBSettings::ClonesEveryField()
{
    ISUBSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestISUBSettings::CopiesEveryField()
{
    ISUBSettings settings;
    SetEveryField(settings);
    const ISUBSettings copy(settings);
    VerifyEveryField(copy);
}

void TestISUBSettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("04 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("04 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("04 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("04 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("04 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("04 05 00 00 FF FF FF FF");
}

void TestISUBSettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<ISUBSettings>();
}

QTEST_APPLESS_MAIN(TestISUBSettings)
#include "tst_isubsettings.moc"
