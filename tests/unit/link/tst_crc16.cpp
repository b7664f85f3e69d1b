#include <QtTest>

#include "link/crc16.h"
#include "support/wire.h"

using Vesmar::CRC16;

namespace
{

QByteArray Pattern(int size)
{
    QByteArray bytes;
    for (int index = 0; index < size; ++index) {
        bytes.append(static_cast<char>(index * 151 + index / 7));
    }
    return bytes;
}

} // namespace

class TestCRC16 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void IsAQtObjectWithoutMembersOfItsOwn();
    void CalculatesWithItsBytesExchanged_data();
    void CalculatesWithItsBytesExchanged();
    void AppendsTheChecksumLowByteFirst_data();
    void AppendsTheChecksumLowByteFirst();
    void AgreesWithAnotherImplementation_data();
    void AgreesWithAnotherImplementation();
    void RefusesFramesWithoutData();
    void RefusesAnyFlippedBit();
    void RefusesTheBytesExchanged();

private:
    const CRC16 _crc16{nullptr};
};

void TestCRC16::IsAQtObjectWithoutMembersOfItsOwn()
{
    QObject parent;
    const auto* child = new CRC16(&parent);
    QCOMPARE(child->parent(), &parent);
    QCOMPARE(child->metaObject()->className(), "Vesmar::CRC16");
    QCOMPARE(child->metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
}

void TestCRC16::CalculatesWithItsBytesExchanged_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("checksum");
    QTest::newRow("nothing") << QByteArray() << 0;
    QTest::newRow("the digits 1 to 9") << QByteArray("123456789") << 0xC331;
    QTest::newRow("acknowledge") << Wire::Bytes("06") << 0xC660;
    QTest::newRow("refusal") << Wire::Bytes("21") << 0x4334;
    QTest::newRow("zero") << Wire::Bytes("00") << 0;
    QTest::newRow("high byte") << Wire::Bytes("FF") << 0xF01E;
}

void TestCRC16::CalculatesWithItsBytesExchanged()
{
    QFETCH(const QByteArray, data);
    QFETCH(const int, checksum);
    QCOMPARE(_crc16.Calculate(data), checksum);
}

void TestCRC16::AppendsTheChecksumLowByteFirst_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("nothing") << QByteArray() << Wire::Bytes("00 00");
    QTest::newRow("the digits 1 to 9")
        << QByteArray("123456789") << Wire::Bytes("31 32 33 34 35 36 37 38 39 C3 31");
    QTest::newRow("status request") << QByteArray("s") << Wire::Bytes("73 F4 4E");
}

void TestCRC16::AppendsTheChecksumLowByteFirst()
{
    QFETCH(QByteArray, data);
    QFETCH(const QByteArray, frame);
    _crc16.AddCRC(data);
    QCOMPARE(data, frame);
}

void TestCRC16::AgreesWithAnotherImplementation_data()
{
    QTest::addColumn<QByteArray>("data");
    for (int byte = 0; byte < 256; ++byte) {
        QTest::addRow("byte %d", byte) << QByteArray(1, static_cast<char>(byte));
    }
    for (const int size : {2, 3, 23, 24, 127, 128, 129, 513, 4096}) {
        QTest::addRow("%d bytes", size) << Pattern(size);
    }
}

void TestCRC16::AgreesWithAnotherImplementation()
{
    QFETCH(const QByteArray, data);
    QByteArray frame = data;
    _crc16.AddCRC(frame);
    QCOMPARE(frame, WithChecksum(data));
    QVERIFY(_crc16.Check(frame));
}

void TestCRC16::RefusesFramesWithoutData()
{
    QVERIFY(!_crc16.Check({}));
    QVERIFY(!_crc16.Check(Wire::Bytes("00")));
    QVERIFY(!_crc16.Check(Wire::Bytes("00 00"))); // Its checksum would match.
    QVERIFY(!_crc16.Check(Wire::Bytes("C6 60")));
}

void TestCRC16::RefusesAnyFlippedBit()
{
    const QByteArray frame = WithChecksum(Pattern(24));
    for (int bit = 0; bit < frame.size() * 8; ++bit) {
        QByteArray damaged = frame;
        damaged[bit / 8] = static_cast<char>(damaged.at(bit / 8) ^ (1 << (bit % 8)));
        QVERIFY2(!_crc16.Check(damaged), qPrintable(QStringLiteral("bit %1").arg(bit)));
    }
}

void TestCRC16::RefusesTheBytesExchanged()
{
    QVERIFY(_crc16.Check(Wire::Bytes("73 F4 4E")));
    QVERIFY(!_crc16.Check(Wire::Bytes("73 4E F4")));
}

QTEST_APPLESS_MAIN(TestCRC16)
#include "tst_crc16.moc"
