#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/iecsettings.h>

#include "settingschecks.h"

using Vesmar::IECSettings;

class TestIECSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void BuildsThePayloadOfTheRLNFunctionWithItsOwnCode();
};

void TestIECSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::MeasurementSettings, IECSettings>);
    static_assert(!std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, IECSettings>);
    SettingsChecks::VerifyPattern<IECSettings>(97);
}

void TestIECSettings::BuildsThePayloadOfTheRLNFunctionWithItsOwnCode()
{
    IECSettings settings;
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("01 FF 02 00 FF FF FF FF"));
}

QTEST_APPLESS_MAIN(TestIECSettings)
#include "tst_iecsettings.moc"
