#include <QtTest>

#include "simulator/model/rcdpayload.h"

using Simulator::RcdKind;

class TestRcdPayload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Known_data();
    void Known();
    void EveryOption_data();
    void EveryOption();
    void Unknown_data();
    void Unknown();
};

void TestRcdPayload::Known_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("kind");
    const auto row = [](const char* payload, int function, RcdKind kind) {
        QTest::newRow(payload) << QByteArray::fromHex(payload) << function << static_cast<int>(kind);
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

void TestRcdPayload::Known()
{
    QFETCH(QByteArray, payload);
    QFETCH(int, function);
    QFETCH(int, kind);
    const auto recognized = Simulator::RecognizeRcdPayload(payload);
    QVERIFY(recognized.has_value());
    QCOMPARE(recognized->function, function);
    QCOMPARE(static_cast<int>(recognized->kind), kind);
}

void TestRcdPayload::EveryOption_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    const auto row = [](const char* name, const char* start, const char* end, int first, int last) {
        QTest::newRow(name) << QByteArray::fromHex(start) << QByteArray::fromHex(end) << first << last;
    };
    row("Ub/Re", "0a0000", "ffffffff", 0x00, 0x3F);
    row("Ia/Ta", "0a0000", "0000c842", 0x40, 0xBF);
    row("IEC", "0b0000", "00000000", 0x40, 0xFF);
}

/// Phase, quantity and current may be anything; the mode decides.
void TestRcdPayload::EveryOption()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, end);
    QFETCH(int, first);
    QFETCH(int, last);
    for (int options = 0; options <= 0xFF; ++options) {
        const QByteArray payload = start + static_cast<char>(options) + end;
        QVERIFY2(Simulator::RecognizeRcdPayload(payload).has_value() == (first <= options && options <= last),
                 payload.toHex().constData());
    }
}

void TestRcdPayload::Unknown_data()
{
    QTest::addColumn<QByteArray>("payload");
    const auto row = [](const char* name, const char* payload) {
        QTest::newRow(name) << QByteArray::fromHex(payload);
    };
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

void TestRcdPayload::Unknown()
{
    QFETCH(QByteArray, payload);
    QVERIFY(!Simulator::RecognizeRcdPayload(payload).has_value());
}

QTEST_APPLESS_MAIN(TestRcdPayload)
#include "tst_rcdpayload.moc"
