#include <QtTest>

#include "simulator/wire/packedvalues.h"

class TestPackedValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LittleEndianInTheirOrder();
};

void TestPackedValues::LittleEndianInTheirOrder()
{
    QCOMPARE(Simulator::PackValues({1.0F, -2.0F, 0.5F, 230.0F, 0.0F, 0.1F}).toHex(),
             QByteArray("0000803f000000c00000003f0000664300000000cdcccc3d"));
}

QTEST_APPLESS_MAIN(TestPackedValues)
#include "tst_packedvalues.moc"
