#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/rlnsettings.h>

#include "settingschecks.h"

using Vesmar::RLNSettings;

class TestRLNSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void BuildsThePayload();
};

void TestRLNSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::MeasurementSettings, RLNSettings>);
    static_assert(!std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, RLNSettings>);
    SettingsChecks::VerifyPattern<RLNSettings>(1);
}

void TestRLNSettings::BuildsThePayload()
{
    RLNSettings settings;
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("01 FF 01 00 FF FF FF FF"));
}

QTEST_APPLESS_MAIN(TestRLNSettings)
#include "tst_rlnsettings.moc"
