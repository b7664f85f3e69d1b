#include <QtTest>

#include <Vesmar/measurementresults.h>

#include "protocol/payload.h"

using Vesmar::MeasurementType;
using Vesmar::RCDOptions;

namespace
{

std::optional<Vesmar::PreparePayload> Decode(const char* payload)
{
    return Vesmar::DecodePayload(QByteArray::fromHex(payload));
}

void AddOptions(const char* payload, const QVector<int>& options)
{
    QTest::newRow(payload) << options;
}

} // namespace

/// Decoding. What the settings classes encode is compared in the test of the settings.
class TestPayload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TellsTheFunction_data()
    {
        QTest::addColumn<int>("function");
        QTest::newRow("01 FF 01 00 FF FF FF FF") << 1;
        QTest::newRow("01 FF 02 00 FF FF FF FF") << 97;
        QTest::newRow("02 05 02 00 FF FF FF FF") << 2;
        QTest::newRow("09 05 02 00 FF FF FF FF") << 9;
        QTest::newRow("0A 00 00 00 00 00 00 00") << 10;
        QTest::newRow("0B 00 00 00 00 00 00 00") << 11;
        QTest::newRow("03") << 3;
        const int none = -1;
        QTest::newRow("00 FF 01 00 FF FF FF FF") << none;
        QTest::newRow("0C 00 00 00 00 00 00 00") << none;
        QTest::newRow("61 FF 02 00 FF FF FF FF") << none;
        QTest::newRow("") << none;
    }

    void TellsTheFunction()
    {
        const auto payload = Decode(QTest::currentDataTag());
        QTEST(static_cast<int>(payload ? payload->function : MeasurementType::None), "function");
    }

    void TellsWhetherATimeIsSet()
    {
        QVERIFY(Decode("02 05 00 00 FF FF FF FF")->isTimeSet);
        QVERIFY(Decode("02 00 00 00 FF FF FF FF")->isTimeSet);
        QVERIFY(!Decode("02 FF 00 00 FF FF FF FF")->isTimeSet);
    }

    void TellsTheVariantOfRLNInTwoBytes()
    {
        QCOMPARE(Decode("01 FF 01 00 FF FF FF FF")->variant, 1);
        QCOMPARE(Decode("01 FF 02 00 FF FF FF FF")->variant, 2);
        QCOMPARE(Decode("01 FF 02 03 FF FF FF FF")->variant, 0x0302);
        QCOMPARE(Decode("01 FF 02")->variant, 2);
    }

    /// Method and current, and nothing for a code that no options make.
    void TellsTheOptionsOfRPE_data()
    {
        QTest::addColumn<QVector<int>>("options");
        AddOptions("02 05 00", {1, 1});
        AddOptions("02 05 04", {1, 2});
        AddOptions("02 05 06", {1, 3});
        AddOptions("02 05 01", {2, 1});
        AddOptions("02 05 05", {2, 2});
        AddOptions("02 05 07", {2, 3});
        AddOptions("02 05 08", {3, 1});
        AddOptions("02 05 0C", {3, 2});
        AddOptions("02 05 0E", {3, 3});
        for (const char* payload :
             {"02 05 02", "02 05 03", "02 05 09", "02 05 0A", "02 05 0F", "02 05 10", "02 05 FF"}) {
            AddOptions(payload, {});
        }
    }

    void TellsTheOptionsOfRPE()
    {
        const auto options = Vesmar::DecodeRPE(Decode(QTest::currentDataTag())->code);
        QTEST(options ? QVector<int>({options->method, options->current}) : QVector<int>(), "options");
    }

    /// Voltage and mode.
    void TellsTheOptionsOfRISO_data()
    {
        QTest::addColumn<QVector<int>>("options");
        AddOptions("03 05 00", {0, -1});
        AddOptions("03 05 03", {3, -1});
        AddOptions("03 05 04", {0, 1});
        AddOptions("03 05 09", {1, 2});
        AddOptions("03 05 12", {2, 4});
        AddOptions("03 05 0C", {0, -1});
        AddOptions("03 05 FF", {3, -1});
    }

    void TellsTheOptionsOfRISO()
    {
        const Vesmar::RISOOptions options = Vesmar::DecodeRISO(Decode(QTest::currentDataTag())->code);
        QTEST(QVector<int>({options.voltage, options.mode}), "options");
    }

    void TellsModeAndConfiguration_data()
    {
        QTest::addColumn<QVector<int>>("options");
        AddOptions("05 05 00", {1, 1});
        AddOptions("05 05 01", {2, 1});
        AddOptions("06 05 04", {1, 2});
        AddOptions("06 05 05", {2, 2});
        AddOptions("09 05 02", {1, 1});
        AddOptions("09 05 05", {2, 2});
    }

    void TellsModeAndConfiguration()
    {
        const int code = Decode(QTest::currentDataTag())->code;
        QTEST(QVector<int>({Vesmar::DecodeMode(code), Vesmar::DecodeConfiguration(code)}), "options");
    }

    /// Mode, quantity, phase, current and type, and whether line and neutral are swapped.
    void TellsTheOptionsOfAnRCDTest_data()
    {
        QTest::addColumn<QVector<int>>("options");
        AddOptions("0A 00 00 00", {0, 0, 0, 0, 0, 0});
        AddOptions("0A 00 40 4B", {1, 2, 0, 3, 1, 0});
        AddOptions("0B 00 80 78", {1, 2, 3, 0, 2, 1});
        AddOptions("0B 00 C0 FF", {3, 3, 3, 3, 3, 1});
        AddOptions("0B 00 3F 10", {0, 0, 1, 0, 0, 0});
        AddOptions("0B", {0, 0, 0, 0, 0, 0});
    }

    void TellsTheOptionsOfAnRCDTest()
    {
        const RCDOptions options = Decode(QTest::currentDataTag())->options;
        QTEST(QVector<int>({options.mode, options.quantity, options.phase, options.current, options.type,
                            options.isLNSwapped ? 1 : 0}),
              "options");
    }

    void TellsReOfAWholePayload()
    {
        QCOMPARE(Decode("0A 00 40 4B 00 00 C8 42")->re, 100.0F);
        QCOMPARE(Decode("0A 00 00 80 00 00 20 C0")->re, -2.5F);
        QCOMPARE(Decode("0A 00 40 4B 00 00 C8")->re, Vesmar::MeasurementResults::NoValue);
        QCOMPARE(Decode("0A 00 40 4B 00 00 C8 42 00")->re, Vesmar::MeasurementResults::NoValue);
    }
};

QTEST_APPLESS_MAIN(TestPayload)
#include "tst_payload.moc"
