#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/rcdsettings.h>

#include "settingschecks.h"

using Vesmar::RCDSettings;

namespace
{

void SetEveryField(RCDSettings& settings)
{
    settings.SetMode(static_cast<RCDSettings::RCDMode>(101));
    settings.SetQuantity(static_cast<RCDSettings::RCDQuantity>(102));
    settings.SetPhase(static_cast<RCDSettings::RCDPhase>(103));
    settings.SetCurrent(static_cast<RCDSettings::RCDCurrent>(104));
    settings.SetType(static_cast<RCDSettings::RCDType>(105));
    settings.SetRe(106.5F);
}

void VerifyEveryField(const RCDSettings& settings)
{
    QCOMPARE(settings.GetMode(), static_cast<RCDSettings::RCDMode>(101));
    QCOMPARE(settings.GetQuantity(), static_cast<RCDSettings::RCDQuantity>(102));
    QCOMPARE(settings.GetPhase(), static_cast<RCDSettings::RCDPhase>(103));
    QCOMPARE(settings.GetCurrent(), static_cast<RCDSettings::RCDCurrent>(104));
    QCOMPARE(settings.GetType(), static_cast<RCDSettings::RCDType>(105));
    QCOMPARE(settings.GetRe(), 106.5F);
}

} // namespace

class TestRCDSettings : public QObject
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
    void SendsReExceptForUbRe_data();
    void SendsReExceptForUbRe();
    void BuildsTheWholePayload();
};

void TestRCDSettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::MeasurementSettings, RCDSettings>);
    static_assert(!std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, RCDSettings>);
    SettingsChecks::VerifyPattern<RCDSettings>(10);
}

void TestRCDSettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<RCDSettings::RCDMode>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDSettings::RCDQuantity>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDSettings::RCDPhase>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDSettings::RCDCurrent>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RCDSettings::RCDType>, int>);
    QCOMPARE(static_cast<int>(RCDSettings::RCDMode::UbRe), 0);
    QCOMPARE(static_cast<int>(RCDSettings::RCDMode::IaTa1), 1);
    QCOMPARE(static_cast<int>(RCDSettings::RCDMode::IaTa2), 2);
    QCOMPARE(static_cast<int>(RCDSettings::RCDQuantity::Quantity0), 0);
    QCOMPARE(static_cast<int>(RCDSettings::RCDQuantity::Quantity1), 1);
    QCOMPARE(static_cast<int>(RCDSettings::RCDQuantity::Quantity2), 2);
    QCOMPARE(static_cast<int>(RCDSettings::RCDQuantity::Quantity3), 3);
    QCOMPARE(static_cast<int>(RCDSettings::RCDPhase::Phase0), 0);
    QCOMPARE(static_cast<int>(RCDSettings::RCDPhase::Phase1), 1);
    QCOMPARE(static_cast<int>(RCDSettings::RCDPhase::Phase2), 2);
    QCOMPARE(static_cast<int>(RCDSettings::RCDPhase::Phase3), 3);
    QCOMPARE(static_cast<int>(RCDSettings::RCDCurrent::Current0), 0);
    QCOMPARE(static_cast<int>(RCDSettings::RCDCurrent::Current1), 1);
    QCOMPARE(static_cast<int>(RCDSettings::RCDCurrent::Current2), 2);
    QCOMPARE(static_cast<int>(RCDSettings::RCDCurrent::Current3), 3);
    QCOMPARE(static_cast<int>(RCDSettings::RCDType::Type0), 0);
    QCOMPARE(static_cast<int>(RCDSettings::RCDType::Type1), 1);
    QCOMPARE(static_cast<int>(RCDSettings::RCDType::Type2), 2);
    QCOMPARE(static_cast<int>(RCDSettings::RCDType::Type3), 3);
}

void TestRCDSettings::HasItsDefaults()
{
    const RCDSettings settings;
    QCOMPARE(settings.GetMode(), static_cast<RCDSettings::RCDMode>(-1));
    QCOMPARE(settings.GetQuantity(), static_cast<RCDSettings::RCDQuantity>(-1));
    QCOMPARE(settings.GetPhase(), static_cast<RCDSettings::RCDPhase>(-1));
    QCOMPARE(settings.GetCurrent(), static_cast<RCDSettings::RCDCurrent>(-1));
    QCOMPARE(settings.GetType(), static_cast<RCDSettings::RCDType>(-1));
    QCOMPARE(settings.GetRe(), 0.0F);
}

void TestRCDSettings::StoresEveryFieldUnchecked()
{
    RCDSettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestRCDSettings::ClonesEveryField()
{
    RCDSettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestRCDSettings::CopiesEveryField()
{
    RCDSettings settings;
    SetEveryField(settings);
    const RCDSettings copy(settings);
    VerifyEveryField(copy);
}

void TestRCDSettings::PutsEachOptionInItsBits_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("quantity");
    QTest::addColumn<int>("phase");
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("nothing set") << -1 << -1 << -1 << -1 << -1
                                 << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("mode 0") << 0 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 00 FF FF FF FF");
    QTest::newRow("mode 1") << 1 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 40 00 00 00 00");
    QTest::newRow("mode 2") << 2 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 80 00 00 00 00");
    QTest::newRow("mode 3") << 3 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 C0 00 00 00 00");
    QTest::newRow("phase 0") << -1 << -1 << 0 << -1 << -1 << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("phase 1") << -1 << -1 << 1 << -1 << -1 << QByteArray::fromHex("0A 00 00 10 00 00 00 00");
    QTest::newRow("phase 2") << -1 << -1 << 2 << -1 << -1 << QByteArray::fromHex("0A 00 00 20 00 00 00 00");
    QTest::newRow("phase 3") << -1 << -1 << 3 << -1 << -1 << QByteArray::fromHex("0A 00 00 30 00 00 00 00");
    QTest::newRow("quantity 0") << -1 << 0 << -1 << -1 << -1
                                << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("quantity 1") << -1 << 1 << -1 << -1 << -1
                                << QByteArray::fromHex("0A 00 00 04 00 00 00 00");
    QTest::newRow("quantity 2") << -1 << 2 << -1 << -1 << -1
                                << QByteArray::fromHex("0A 00 00 08 00 00 00 00");
    QTest::newRow("quantity 3") << -1 << 3 << -1 << -1 << -1
                                << QByteArray::fromHex("0A 00 00 0C 00 00 00 00");
    QTest::newRow("current 0") << -1 << -1 << -1 << 0 << -1 << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("current 1") << -1 << -1 << -1 << 1 << -1 << QByteArray::fromHex("0A 00 00 01 00 00 00 00");
    QTest::newRow("current 2") << -1 << -1 << -1 << 2 << -1 << QByteArray::fromHex("0A 00 00 02 00 00 00 00");
    QTest::newRow("current 3") << -1 << -1 << -1 << 3 << -1 << QByteArray::fromHex("0A 00 00 03 00 00 00 00");
    QTest::newRow("type 0") << -1 << -1 << -1 << -1 << 0 << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("type 1") << -1 << -1 << -1 << -1 << 1 << QByteArray::fromHex("0A 00 40 00 00 00 00 00");
    QTest::newRow("type 2") << -1 << -1 << -1 << -1 << 2 << QByteArray::fromHex("0A 00 80 00 00 00 00 00");
    QTest::newRow("type 3") << -1 << -1 << -1 << -1 << 3 << QByteArray::fromHex("0A 00 C0 00 00 00 00 00");
    QTest::newRow("every option different")
        << 1 << 2 << 3 << 0 << 2 << QByteArray::fromHex("0A 00 80 78 00 00 00 00");
    QTest::newRow("all bits set") << 3 << 3 << 3 << 3 << 3 << QByteArray::fromHex("0A 00 C0 FF 00 00 00 00");
    QTest::newRow("mode not set among others")
        << -1 << 1 << 2 << 3 << 1 << QByteArray::fromHex("0A 00 40 27 00 00 00 00");
    QTest::newRow("phase not set among others")
        << 1 << 1 << -1 << 1 << 1 << QByteArray::fromHex("0A 00 40 45 00 00 00 00");
    QTest::newRow("quantity not set among others")
        << 1 << -1 << 1 << 1 << 1 << QByteArray::fromHex("0A 00 40 51 00 00 00 00");
    QTest::newRow("current not set among others")
        << 1 << 1 << 1 << -1 << 1 << QByteArray::fromHex("0A 00 40 54 00 00 00 00");
    QTest::newRow("type not set among others")
        << 1 << 1 << 1 << 1 << -1 << QByteArray::fromHex("0A 00 00 55 00 00 00 00");
    QTest::newRow("mode 5 loses its high bit")
        << 5 << -1 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 40 00 00 00 00");
    QTest::newRow("phase 5 spills into mode")
        << -1 << -1 << 5 << -1 << -1 << QByteArray::fromHex("0A 00 00 50 00 00 00 00");
    QTest::newRow("quantity 6 spills into phase")
        << -1 << 6 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 18 00 00 00 00");
    QTest::newRow("quantity 16 spills into mode")
        << -1 << 16 << -1 << -1 << -1 << QByteArray::fromHex("0A 00 00 40 00 00 00 00");
    QTest::newRow("current 4 spills into quantity")
        << -1 << -1 << -1 << 4 << -1 << QByteArray::fromHex("0A 00 00 04 00 00 00 00");
    QTest::newRow("current 255 fills the byte")
        << -1 << -1 << -1 << 255 << -1 << QByteArray::fromHex("0A 00 00 FF 00 00 00 00");
    QTest::newRow("current 256 leaves the byte")
        << -1 << -1 << -1 << 256 << -1 << QByteArray::fromHex("0A 00 00 00 00 00 00 00");
    QTest::newRow("type 5 loses its high bit")
        << -1 << -1 << -1 << -1 << 5 << QByteArray::fromHex("0A 00 40 00 00 00 00 00");
    QTest::newRow("minus two is not the unset value")
        << -1 << -1 << -1 << -2 << -2 << QByteArray::fromHex("0A 00 80 FE 00 00 00 00");
}

void TestRCDSettings::PutsEachOptionInItsBits()
{
    QFETCH(const int, mode);
    QFETCH(const int, quantity);
    QFETCH(const int, phase);
    QFETCH(const int, current);
    QFETCH(const int, type);
    QFETCH(const QByteArray, payload);
    RCDSettings settings;
    settings.SetMode(static_cast<RCDSettings::RCDMode>(mode));
    settings.SetQuantity(static_cast<RCDSettings::RCDQuantity>(quantity));
    settings.SetPhase(static_cast<RCDSettings::RCDPhase>(phase));
    settings.SetCurrent(static_cast<RCDSettings::RCDCurrent>(current));
    settings.SetType(static_cast<RCDSettings::RCDType>(type));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

void TestRCDSettings::SendsReExceptForUbRe_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<float>("re");
    QTest::addColumn<QByteArray>("lastFourBytes");
    QTest::newRow("Ub/Re") << 0 << 100.0F << QByteArray::fromHex("FF FF FF FF");
    QTest::newRow("Ub/Re with Re zero") << 0 << 0.0F << QByteArray::fromHex("FF FF FF FF");
    QTest::newRow("Ia/Ta 1") << 1 << 100.0F << QByteArray::fromHex("00 00 C8 42");
    QTest::newRow("Ia/Ta 2") << 2 << -2.5F << QByteArray::fromHex("00 00 20 C0");
    QTest::newRow("no mode") << -1 << 1.0F << QByteArray::fromHex("00 00 80 3F");
    QTest::newRow("unnamed mode") << 3 << 0.5F << QByteArray::fromHex("00 00 00 3F");
    QTest::newRow("no mode, Re zero") << -1 << 0.0F << QByteArray::fromHex("00 00 00 00");
}

void TestRCDSettings::SendsReExceptForUbRe()
{
    QFETCH(const int, mode);
    QFETCH(const float, re);
    QFETCH(const QByteArray, lastFourBytes);
    RCDSettings settings;
    settings.SetMode(static_cast<RCDSettings::RCDMode>(mode));
    settings.SetRe(re);
    const QByteArray payload = SettingsChecks::Payload(settings);
    QCOMPARE(payload.size(), 8);
    QCOMPARE(payload.mid(4), lastFourBytes);
}

void TestRCDSettings::BuildsTheWholePayload()
{
    RCDSettings settings;
    settings.SetMode(RCDSettings::RCDMode::IaTa1);
    settings.SetQuantity(RCDSettings::RCDQuantity::Quantity2);
    settings.SetPhase(RCDSettings::RCDPhase::Phase0);
    settings.SetCurrent(RCDSettings::RCDCurrent::Current3);
    settings.SetType(RCDSettings::RCDType::Type1);
    settings.SetRe(100.0F);
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("0A 00 40 4B 00 00 C8 42"));
}

QTEST_APPLESS_MAIN(TestRCDSettings)
#include "tst_rcdsettings.moc"
