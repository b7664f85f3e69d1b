#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/rcdiecsettings.h>

#include "settingschecks.h"

using Vesmar::RCDIECSettings;

namespace
{

void SetEveryField(RCDIECSettings& settings)
{
    settings.SetMode(static_cast<RCDIECSettings::RCDIECMode>(111));
    settings.SetQuantity(static_cast<RCDIECSettings::RCDIECQuantity>(112));
    settings.SetPhase(static_cast<RCDIECSettings::RCDIECPhase>(113));
    settings.SetCurrent(static_cast<RCDIECSettings::RCDIECCurrent>(114));
    settings.SetType(static_cast<RCDIECSettings::RCDIECType>(115));
    settings.SetIsLNSwapped(true);
}

void VerifyEveryField(const RCDIECSettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<RCDIECSettings::RCDIECMode>(111));
    QCOMPARE(settings.GetQuantity(), static_cast<RCDIECSettings::RCDIECQuantity>(112));
    QCOMPARE(settings.GetPhase(), static_cast<RCDIECSettings::RCDIECPhase>(113));
    QCOMPARE(settings.GetCurrent(), static_cast<RCDIECSettings::RCDIECCurrent>(114));
    QCOMPARE(settings.GetType(), static_cast<RCDIECSettings::RCDIECType>(115));
    QCOMPARE(settings.GetIsLNSwapped(), true);
}

} // namespace

class TestRCDIECSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void NamesTheInstrumentsNumbers();
    void HasItsDefaults();
    void StoresEveryFieldUnchecked();
    void ClonesEveryField();
    void CopiesEveryField();
    void PutsEachOptionInItsBits_data();
    void PutsEachOptionInItsBits();
    void MarksSwappedLineAndNeutralInItsOwnBit_data();
    void MarksSwappedLineAndNeutralInItsOwnBit();
};

void TestRCDIECSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::MeasurementSettings, RCDIECSettings>);
    static_assert(!std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, RCDIECSettings>);
    SettingsChecks::VerifyPattern<RCDIECSettings>(11);
}

void TestRCDIECSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<RCDIECSettings::RCDIECMode>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDIECSettings::RCDIECQuantity>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDIECSettings::RCDIECPhase>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDIECSettings::RCDIECCurrent>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDIECSettings::RCDIECType>, int>);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECMode::IaTa1), 1);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECMode::IaTa2), 2);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECMode::CleanUp), 3);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECQuantity::Quantity0), 0);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECQuantity::Quantity1), 1);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECQuantity::Quantity2), 2);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECQuantity::Quantity3), 3);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECPhase::Phase0), 0);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECPhase::Phase1), 1);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECPhase::Phase2), 2);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECPhase::Phase3), 3);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECCurrent::Current0), 0);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECCurrent::Current1), 1);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECCurrent::Current2), 2);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECCurrent::Current3), 3);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECType::Type0), 0);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECType::Type1), 1);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECType::Type2), 2);
    QCOMPARE(static_cast<int>(RCDIECSettings::RCDIECType::Type3), 3);
}

void TestRCDIECSettings::HasItsDefaults()
{
    const RCDIECSettings settings;
    QCOMPARE(settings.GetMode(), static_cast<RCDIECSettings::RCDIECMode>(-1));
    QCOMPARE(settings.GetQuantity(), static_cast<RCDIECSettings::RCDIECQuantity>(-1));
    QCOMPARE(settings.GetPhase(), static_cast<RCDIECSettings::RCDIECPhase>(-1));
    QCOMPARE(settings.GetCurrent(), static_cast<RCDIECSettings::RCDIECCurrent>(-1));
    QCOMPARE(settings.GetType(), static_cast<RCDIECSettings::RCDIECType>(-1));
    QCOMPARE(settings.GetIsLNSwapped(), false);
}

void TestRCDIECSettings::StoresEveryFieldUnchecked()
{
    RCDIECSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestRCDIECSettings::ClonesEveryField()
{
    RCDIECSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestRCDIECSettings::CopiesEveryField()
{
    RCDIECSettings settings;
    SetEveryField(settings);
    const RCDIECSettings copy(settings);
    VerifyEveryField(copy);
}

void TestRCDIECSettings::PutsEachOptionInItsBits_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("quantity");
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("nothing set") << -1 << -1 << -1 << -1 << -1
                                 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("mode 0") << 0 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("mode 1") << 1 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 40 00 00 00 00");
    QTest::newRow("mode 2") << 2 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 80 00 00 00 00");
    QTest::newRow("mode 3") << 3 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 C0 00 00 00 00");
    QTest::newRow("phase 0") << -1 << -1 << 0 << -1 << -1 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("phase 1") << -1 << -1 << 1 << -1 << -1 << QByteArray::fromHex("0B 00 00 10 00 00 00 00");
    QTest::newRow("phase 2") << -1 << -1 << 2 << -1 << -1 << QByteArray::fromHex("0B 00 00 20 00 00 00 00");
    QTest::newRow("phase 3") << -1 << -1 << 3 << -1 << -1 << QByteArray::fromHex("0B 00 00 30 00 00 00 00");
    QTest::newRow("quantity 0") << -1 << 0 << -1 << -1 << -1
                                << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("quantity 1") << -1 << 1 << -1 << -1 << -1
                                << QByteArray::fromHex("0B 00 00 04 00 00 00 00");
    QTest::newRow("quantity 2") << -1 << 2 << -1 << -1 << -1
                                << QByteArray::fromHex("0B 00 00 08 00 00 00 00");
    QTest::newRow("quantity 3") << -1 << 3 << -1 << -1 << -1
                                << QByteArray::fromHex("0B 00 00 0C 00 00 00 00");
    QTest::newRow("current 0") << -1 << -1 << -1 << 0 << -1 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("current 1") << -1 << -1 << -1 << 1 << -1 << QByteArray::fromHex("0B 00 00 01 00 00 00 00");
    QTest::newRow("current 2") << -1 << -1 << -1 << 2 << -1 << QByteArray::fromHex("0B 00 00 02 00 00 00 00");
    QTest::newRow("current 3") << -1 << -1 << -1 << 3 << -1 << QByteArray::fromHex("0B 00 00 03 00 00 00 00");
    QTest::newRow("type 0") << -1 << -1 << -1 << -1 << 0 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("type 1") << -1 << -1 << -1 << -1 << 1 << QByteArray::fromHex("0B 00 40 00 00 00 00 00");
    QTest::newRow("type 2") << -1 << -1 << -1 << -1 << 2 << QByteArray::fromHex("0B 00 80 00 00 00 00 00");
    QTest::newRow("type 3") << -1 << -1 << -1 << -1 << 3 << QByteArray::fromHex("0B 00 C0 00 00 00 00 00");
    QTest::newRow("every option different")
        << 1 << 2 << 3 << 0 << 2 << QByteArray::fromHex("0B 00 80 78 00 00 00 00");
    QTest::newRow("all bits set") << 3 << 3 << 3 << 3 << 3 << QByteArray::fromHex("0B 00 C0 FF 00 00 00 00");
    QTest::newRow("mode not set among others")
        << -1 << 1 << 2 << 3 << 1 << QByteArray::fromHex("0B 00 40 27 00 00 00 00");
    QTest::newRow("phase not set among others")
        << 1 << 1 << -1 << 1 << 1 << QByteArray::fromHex("0B 00 40 45 00 00 00 00");
    QTest::newRow("quantity not set among others")
        << 1 << -1 << 1 << 1 << 1 << QByteArray::fromHex("0B 00 40 51 00 00 00 00");
    QTest::newRow("current not set among others")
        << 1 << 1 << 1 << -1 << 1 << QByteArray::fromHex("0B 00 40 54 00 00 00 00");
    QTest::newRow("type not set among others")
        << 1 << 1 << 1 << 1 << -1 << QByteArray::fromHex("0B 00 00 55 00 00 00 00");
    QTest::newRow("mode 5 loses its high bit")
        << 5 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 40 00 00 00 00");
    QTest::newRow("phase 5 spills into mode")
        << -1 << -1 << 5 << -1 << -1 << QByteArray::fromHex("0B 00 00 50 00 00 00 00");
    QTest::newRow("quantity 6 spills into phase")
        << -1 << 6 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 18 00 00 00 00");
    QTest::newRow("quantity 16 spills into mode")
        << -1 << 16 << -1 << -1 << -1 << QByteArray::fromHex("0B 00 00 40 00 00 00 00");
    QTest::newRow("current 4 spills into quantity")
        << -1 << -1 << -1 << 4 << -1 << QByteArray::fromHex("0B 00 00 04 00 00 00 00");
    QTest::newRow("current 255 fills the byte")
        << -1 << -1 << -1 << 255 << -1 << QByteArray::fromHex("0B 00 00 FF 00 00 00 00");
    QTest::newRow("current 256 leaves the byte")
        << -1 << -1 << -1 << 256 << -1 << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("type 5 loses its high bit")
        << -1 << -1 << -1 << -1 << 5 << QByteArray::fromHex("0B 00 40 00 00 00 00 00");
    QTest::newRow("minus two is not the unset value")
        << -1 << -1 << -1 << -2 << -2 << QByteArray::fromHex("0B 00 80 FE 00 00 00 00");
}

void TestRCDIECSettings::PutsEachOptionInItsBits()
{
    QFETCH(const int, mode);
    QFETCH(const int, quantity);
    QFETCH(const int, phase);
    QFETCH(const int, current);
    QFETCH(const int, type);
    QFETCH(const QByteArray, payload);
    RCDIECSettings settings;
    settings.SetMode(static_cast<RCDIECSettings::RCDIECMode>(mode));
    settings.SetQuantity(static_cast<RCDIECSettings::RCDIECQuantity>(quantity));
    settings.SetPhase(static_cast<RCDIECSettings::RCDIECPhase>(phase));
    settings.SetCurrent(static_cast<RCDIECSettings::RCDIECCurrent>(current));
    settings.SetType(static_cast<RCDIECSettings::RCDIECType>(type));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

void TestRCDIECSettings::MarksSwappedLineAndNeutralInItsOwnBit_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isLNSwapped");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("type not set, not swapped")
        << -1 << false << QByteArray::fromHex("0B 00 00 00 00 00 00 00");
    QTest::newRow("type not set, swapped") << -1 << true << QByteArray::fromHex("0B 00 80 00 00 00 00 00");
    QTest::newRow("type 0, swapped") << 0 << true << QByteArray::fromHex("0B 00 80 00 00 00 00 00");
    QTest::newRow("type 1, not swapped") << 1 << false << QByteArray::fromHex("0B 00 40 00 00 00 00 00");
    QTest::newRow("type 1, swapped") << 1 << true << QByteArray::fromHex("0B 00 C0 00 00 00 00 00");
    QTest::newRow("type 2, swapped") << 2 << true << QByteArray::fromHex("0B 00 80 00 00 00 00 00");
    QTest::newRow("type 3, swapped") << 3 << true << QByteArray::fromHex("0B 00 C0 00 00 00 00 00");
}

void TestRCDIECSettings::MarksSwappedLineAndNeutralInItsOwnBit()
{
    QFETCH(const int, type);
    QFETCH(const bool, isLNSwapped);
    QFETCH(const QByteArray, payload);
    RCDIECSettings settings;
    settings.SetType(static_cast<RCDIECSettings::RCDIECType>(type));
    settings.SetIsLNSwapped(isLNSwapped);
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

QTEST_APPLESS_MAIN(TestRCDIECSettings)
#include "tst_rcdiecsettings.moc"
