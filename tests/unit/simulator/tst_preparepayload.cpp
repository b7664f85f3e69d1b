#include <QtTest>

#include "simulator/model/preparepayload.h"

using Simulator::Measurement;

class TestPreparePayload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Known_data();
    void Known();
    void CodesOfEachFunction_data();
    void CodesOfEachFunction();
    void Unknown_data();
    void Unknown();
    void FunctionNumbers_data();
    void FunctionNumbers();
};

void TestPreparePayload::Known_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<int>("measurement");
    const auto row = [](const char* payload, Measurement measurement) {
        QTest::newRow(payload) << QByteArray::fromHex(payload) << static_cast<int>(measurement);
    };
    row("01ff0100ffffffff", Measurement::Rln);
    row("01ff0200ffffffff", Measurement::Iec);
    row("02050000ffffffff", Measurement::Rpe);
    row("02ff0e00ffffffff", Measurement::Rpe);
    row("03050000ffffffff", Measurement::Riso);
    row("03ff1300ffffffff", Measurement::Riso);
    row("04050000ffffffff", Measurement::Isub);
    row("04ff0000ffffffff", Measurement::Isub);
    row("05050100ffffffff", Measurement::Ipe);
    row("05ff0500ffffffff", Measurement::Ipe);
    row("06050400ffffffff", Measurement::Idelta);
    row("06ff0000ffffffff", Measurement::Idelta);
    row("07050400ffffffff", Measurement::It);
    row("07ff0000ffffffff", Measurement::It);
    row("08050100ffffffff", Measurement::Power);
    row("08ff0000ffffffff", Measurement::Power);
    row("09050200ffffffff", Measurement::HvTest);
    row("09ff0500ffffffff", Measurement::HvTest);
}

void TestPreparePayload::Known()
{
    QFETCH(QByteArray, payload);
    QFETCH(int, measurement);
    const auto recognized = Simulator::RecognizePayload(payload);
    QVERIFY(recognized.has_value());
    QCOMPARE(static_cast<int>(*recognized), measurement);
}

void TestPreparePayload::CodesOfEachFunction_data()
{
    QTest::addColumn<QByteArray>("codes");
    const auto row = [](const char* start, const char* codes) {
        QTest::newRow(start) << QByteArray::fromHex(codes);
    };
    row("01ff", "0102");
    row("0205", "000104050607080c0e");
    row("02ff", "000104050607080c0e");
    row("0305", "000102030405060708090a0b10111213");
    row("03ff", "000102030405060708090a0b10111213");
    row("0405", "00");
    row("04ff", "00");
    row("0505", "00010405");
    row("05ff", "00010405");
    row("0605", "00010405");
    row("06ff", "00010405");
    row("0705", "0004");
    row("07ff", "0004");
    row("0805", "0001");
    row("08ff", "0001");
    row("0905", "0205");
    row("09ff", "0205");
}

void TestPreparePayload::CodesOfEachFunction()
{
    QFETCH(QByteArray, codes);
    const QByteArray start = QByteArray::fromHex(QTest::currentDataTag());
    QByteArray accepted;
    for (int code = 0; code <= 0xFF; ++code) {
        const QByteArray payload = start + static_cast<char>(code) + QByteArray::fromHex("00ffffffff");
        if (Simulator::RecognizePayload(payload)) {
            accepted.append(static_cast<char>(code));
        }
    }
    QCOMPARE(accepted.toHex(), codes.toHex());
}

void TestPreparePayload::Unknown_data()
{
    QTest::addColumn<QByteArray>("payload");
    const auto row = [](const char* name, const char* payload) {
        QTest::newRow(name) << QByteArray::fromHex(payload);
    };
    row("nothing", "");
    row("too short", "01ff0100ffffff");
    row("too long", "01ff0100ffffffffff");
    row("function 0", "00ff0100ffffffff");
    row("function 10", "0a00404b0000c842");
    row("function 10 unset", "0a00000000000000");
    row("function 10 like the others", "0aff0000ffffffff");
    row("function 11", "0b00800000000000");
    row("function 12", "0cff0000ffffffff");
    row("function 97", "61ff0200ffffffff");
    row("a time for RLN", "01050100ffffffff");
    row("a time for IEC", "01050200ffffffff");
    row("time flag 00", "02000000ffffffff");
    row("time flag 04", "02040000ffffffff");
    row("time flag 0a", "090a0200ffffffff");
    row("code that does not fit in the set", "09052200ffffffff");
    row("byte 3", "02050001ffffffff");
    row("byte 4", "0205000000ffffff");
    row("byte 5", "02050000ff00ffff");
    row("byte 6", "02050000ffff00ff");
    row("byte 7", "02050000ffffff00");
}

void TestPreparePayload::Unknown()
{
    QFETCH(QByteArray, payload);
    QVERIFY(!Simulator::RecognizePayload(payload).has_value());
}

void TestPreparePayload::FunctionNumbers_data()
{
    QTest::addColumn<int>("measurement");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("isSingle");
    const auto row = [](const char* name, Measurement measurement, int number, bool isSingle) {
        QTest::newRow(name) << static_cast<int>(measurement) << number << isSingle;
    };
    row("RLN", Measurement::Rln, 1, true);
    row("IEC", Measurement::Iec, 1, true);
    row("RPE", Measurement::Rpe, 2, false);
    row("RISO", Measurement::Riso, 3, false);
    row("ISUB", Measurement::Isub, 4, false);
    row("IPE", Measurement::Ipe, 5, false);
    row("IDELTA", Measurement::Idelta, 6, false);
    row("IT", Measurement::It, 7, false);
    row("POWER", Measurement::Power, 8, false);
    row("HVTest", Measurement::HvTest, 9, false);
}

void TestPreparePayload::FunctionNumbers()
{
    QFETCH(int, measurement);
    QFETCH(int, number);
    QFETCH(bool, isSingle);
    QCOMPARE(Simulator::FunctionNumber(static_cast<Measurement>(measurement)), number);
    QCOMPARE(Simulator::IsSingle(static_cast<Measurement>(measurement)), isSingle);
}

QTEST_APPLESS_MAIN(TestPreparePayload)
#include "tst_preparepayload.moc"
