#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/rpesettings.h>

#include "settingschecks.h"

using Vesmar::RPESettings;

namespace
{

void SetEveryField(RPESettings& settings)
{
    settings.SetCurrent(static_cast<RPESettings::RPECurrent>(21));
    settings.SetMethod(static_cast<RPESettings::RPEMethod>(22));
    settings.SetTime(77);
}

void VerifyEveryField(const RPESettings& settings)
{
    QCOMPARE(settings.GetCurrent(), static_cast<RPESettings::RPECurrent>(21));
    QCOMPARE(settings.GetMethod(), static_cast<RPESettings::RPEMethod>(22));
    QCOMPARE(settings.GetTime(), 77);
}

} // namespace

class TestRPESettings : public QObject
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
    void BuildsTheCodeFromMethodAndCurrent_data();
    void BuildsTheCodeFromMethodAndCurrent();
    void DefaultsGiveTheirPayload();
};

void TestRPESettings::FollowsThePattern()
{
    static_assert(std::is_base_of_v<Vesmar::ContinuousMeasurementSettings, RPESettings>);
    SettingsChecks::VerifyPattern<RPESettings>(2);
}

void TestRPESettings::NamesTheInstrumentsNumbers()
{
    static_assert(std::is_same_v<std::underlying_type_t<RPESettings::RPECurrent>, int>);
    static_assert(std::is_same_v<std::underlying_type_t<RPESettings::RPEMethod>, int>);
    QCOMPARE(static_cast<int>(RPESettings::RPECurrent::Current0), 0);
    QCOMPARE(static_cast<int>(RPESettings::RPECurrent::Current1), 1);
    QCOMPARE(static_cast<int>(RPESettings::RPECurrent::Current2), 2);
    QCOMPARE(static_cast<int>(RPESettings::RPECurrent::Current3), 3);
    QCOMPARE(static_cast<int>(RPESettings::RPEMethod::Method0), 0);
    QCOMPARE(static_cast<int>(RPESettings::RPEMethod::Method1), 1);
    QCOMPARE(static_cast<int>(RPESettings::RPEMethod::Method2), 2);
    QCOMPARE(static_cast<int>(RPESettings::RPEMethod::Method3), 3);
}

void TestRPESettings::HasItsDefaults()
{
    const RPESettings settings;
    QCOMPARE(settings.GetCurrent(), static_cast<RPESettings::RPECurrent>(0));
    QCOMPARE(settings.GetMethod(), static_cast<RPESettings::RPEMethod>(0));
    QCOMPARE(settings.GetTime(), 5);
}

void TestRPESettings::StoresEveryFieldUnchecked()
{
    RPESettings settings;
    SetEveryField(settings);
    VerifyEveryField(settings);
}

void TestRPESettings::ClonesEveryField()
{
    RPESettings settings;
    SetEveryField(settings);
    const auto clone = SettingsChecks::Clone(settings);
    QVERIFY(clone != nullptr);
    VerifyEveryField(*clone);
}

void TestRPESettings::CopiesEveryField()
{
    RPESettings settings;
    SetEveryField(settings);
    const RPESettings copy(settings);
    VerifyEveryField(copy);
}

void TestRPESettings::SendsWhetherATimeIsSetAndNeverTheTime_data()
{
    SettingsChecks::AddTimeColumns();
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("02 05 00 00 FF FF FF FF");
    QTest::newRow("not set") << -1 << QByteArray::fromHex("02 FF 00 00 FF FF FF FF");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("02 05 00 00 FF FF FF FF");
    QTest::newRow("one") << 1 << QByteArray::fromHex("02 05 00 00 FF FF FF FF");
    QTest::newRow("default") << 5 << QByteArray::fromHex("02 05 00 00 FF FF FF FF");
    QTest::newRow("largest") << 2147483647 << QByteArray::fromHex("02 05 00 00 FF FF FF FF");
}

void TestRPESettings::SendsWhetherATimeIsSetAndNeverTheTime()
{
    SettingsChecks::VerifyTimePayload<RPESettings>();
}

void TestRPESettings::BuildsTheCodeFromMethodAndCurrent_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("current");
    QTest::addColumn<QByteArray>("payload");
    struct {
        int method;
        const char* withCurrent2;
        const char* withCurrent3;
        const char* withAnyOther;
    } const codes[] = {
        {-1, "04", "06", "00"}, {0, "00", "00", "00"}, {1, "04", "06", "00"},
        {2, "05", "07", "01"},  {3, "0C", "0E", "08"}, {4, "04", "06", "00"},
    };
    for (const auto& code : codes) {
        for (const int current : {-1, 0, 1, 2, 3, 4}) {
            const char* byte = current == 2   ? code.withCurrent2
                               : current == 3 ? code.withCurrent3
                                              : code.withAnyOther;
            QTest::addRow("method %d, current %d", code.method, current)
                << code.method << current
                << QByteArray::fromHex(QByteArray("02 05 ") + byte + "00 FF FF FF FF");
        }
    }
}

void TestRPESettings::BuildsTheCodeFromMethodAndCurrent()
{
    QFETCH(const int, method);
    QFETCH(const int, current);
    QFETCH(const QByteArray, payload);
    RPESettings settings;
    settings.SetMethod(static_cast<RPESettings::RPEMethod>(method));
    settings.SetCurrent(static_cast<RPESettings::RPECurrent>(current));
    QCOMPARE(SettingsChecks::Payload(settings), payload);
}

void TestRPESettings::DefaultsGiveTheirPayload()
{
    RPESettings settings;
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("02 05 00 00 FF FF FF FF"));
    settings.SetTime(-1);
    QCOMPARE(SettingsChecks::Payload(settings), QByteArray::fromHex("02 FF 00 00 FF FF FF FF"));
}

QTEST_APPLESS_MAIN(TestRPESettings)
#include "tst_rpesettings.moc"
