#include <QtTest>

#include "simulator/model/preparepayload.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::Measurement;
using Simulator::RcdKind;

class TestPreparePayload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void VariantsOfTheFirstFunction()
    {
        QVERIFY(Simulator::RecognizePayload(Bytes("01ff0100ffffffff")) == Measurement::Rln);
        QVERIFY(Simulator::RecognizePayload(Bytes("01ff0200ffffffff")) == Measurement::Iec);
    }

    void CodesOfEachFunction_data()
    {
        QTest::addColumn<QByteArray>("codes");
        const auto row = [](const char* start, const char* codes) { QTest::newRow(start) << Bytes(codes); };
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

    void CodesOfEachFunction()
    {
        QFETCH(QByteArray, codes);
        const QByteArray start = Bytes(QTest::currentDataTag());
        QByteArray accepted;
        for (int code = 0; code <= 0xFF; ++code) {
            const QByteArray payload = start + static_cast<char>(code) + Bytes("00ffffffff");
            if (const auto measurement = Simulator::RecognizePayload(payload)) {
                QCOMPARE(Simulator::FunctionNumber(*measurement), static_cast<int>(start.at(0)));
                accepted.append(static_cast<char>(code));
            }
        }
        QCOMPARE(accepted.toHex(), codes.toHex());
    }

    void Unknown_data()
    {
        QTest::addColumn<QByteArray>("payload");
        const auto row = [](const char* name, const char* payload) { QTest::newRow(name) << Bytes(payload); };
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

    void Unknown()
    {
        QFETCH(QByteArray, payload);
        QVERIFY(!Simulator::RecognizePayload(payload).has_value());
    }

    void FunctionNumbers_data()
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

    void FunctionNumbers()
    {
        QFETCH(int, measurement);
        QFETCH(int, number);
        QFETCH(bool, isSingle);
        QCOMPARE(Simulator::FunctionNumber(static_cast<Measurement>(measurement)), number);
        QCOMPARE(Simulator::IsSingle(static_cast<Measurement>(measurement)), isSingle);
    }

    void RcdKnown_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<int>("function");
        QTest::addColumn<int>("kind");
        const auto row = [](const char* payload, int function, RcdKind kind) {
            QTest::newRow(payload) << Bytes(payload) << function << static_cast<int>(kind);
        };
        row("0a000000ffffffff", 10, RcdKind::UbRe);
        row("0a008005ffffffff", 10, RcdKind::UbRe);
        row("0a00404b0000c842", 10, RcdKind::IaTa); // Re 100
        row("0a00c08100000000", 10, RcdKind::IaTa); // Re 0
        row("0a000040ffff7f7f", 10, RcdKind::IaTa); // Re without a value
        row("0b00004000000000", 11, RcdKind::IaTa);
        row("0b00808500000000", 11, RcdKind::IaTa);
        row("0b0000c000000000", 11, RcdKind::CleanUp);
    }

    void RcdKnown()
    {
        QFETCH(QByteArray, payload);
        QFETCH(int, function);
        QFETCH(int, kind);
        const auto recognized = Simulator::RecognizeRcdPayload(payload);
        QVERIFY(recognized.has_value());
        QCOMPARE(recognized->function, function);
        QCOMPARE(static_cast<int>(recognized->kind), kind);
    }

    void RcdEveryOption_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("end");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        const auto row = [](const char* name, const char* start, const char* end, int first, int last) {
            QTest::newRow(name) << Bytes(start) << Bytes(end) << first << last;
        };
        row("Ub/Re", "0a0000", "ffffffff", 0x00, 0x3F);
        row("Ia/Ta", "0a0000", "0000c842", 0x40, 0xBF);
        row("IEC", "0b0000", "00000000", 0x40, 0xFF);
    }

    /// The mode decides; phase, quantity and current may be anything.
    void RcdEveryOption()
    {
        QFETCH(QByteArray, start);
        QFETCH(QByteArray, end);
        QFETCH(int, first);
        QFETCH(int, last);
        for (int options = 0; options <= 0xFF; ++options) {
            const QByteArray payload = start + static_cast<char>(options) + end;
            QVERIFY2(Simulator::RecognizeRcdPayload(payload).has_value() ==
                         (first <= options && options <= last),
                     payload.toHex().constData());
        }
    }

    void RcdUnknown_data()
    {
        QTest::addColumn<QByteArray>("payload");
        const auto row = [](const char* name, const char* payload) { QTest::newRow(name) << Bytes(payload); };
        row("nothing", "");
        row("too short", "0a000000ffffff");
        row("too long", "0a000000ffffffffff");
        row("another function", "09050200ffffffff");
        row("function 12", "0c000000ffffffff");
        row("time flag", "0aff0000ffffffff");
        row("time flag of IEC", "0b05004000000000");
        row("type beyond its bits", "0a002000ffffffff");
        row("lowest bit of the type byte", "0b00014000000000");
        row("nothing set", "0a00000000000000");
        row("IEC with nothing set", "0b00000000000000");
        row("resistance for Ub/Re", "0a0000050000c842");
        row("no resistance for Ia/Ta", "0a000040ffffffff");
        row("endless resistance", "0a0000400000807f");
        row("resistance for IEC", "0b0000400000c842");
        row("FF for IEC", "0b000040ffffffff");
    }

    void RcdUnknown()
    {
        QFETCH(QByteArray, payload);
        QVERIFY(!Simulator::RecognizeRcdPayload(payload).has_value());
    }
};

QTEST_APPLESS_MAIN(TestPreparePayload)
#include "tst_preparepayload.moc"
