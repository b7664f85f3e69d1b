#include <QtTest>

#include "simulator/wire/statusword.h"

class TestStatusWord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FreshInstrument();
    void FieldsAtTheirPlaces();
    void StartTestResultWhileNoFunctionIsActive();
};

void TestStatusWord::FreshInstrument()
{
    QCOMPARE(Simulator::StatusWord().Data().toHex(), QByteArray("00fe"));
}

void TestStatusWord::FieldsAtTheirPlaces()
{
    Simulator::StatusWord status;
    status.newMeasurement = true;
    status.mode = 1;
    status.function = 3;
    status.error = 5;
    status.functionState = 2;
    QCOMPARE(status.Data().toHex(), QByteArray("a352"));
}

void TestStatusWord::StartTestResultWhileNoFunctionIsActive()
{
    Simulator::StatusWord status;
    status.functionState = 7;
    status.startTestResult = 5;
    QCOMPARE(status.Data().toHex(), QByteArray("00f5"));
    status.function = 31;
    QCOMPARE(status.Data().toHex(), QByteArray("1ff7"));
}

QTEST_APPLESS_MAIN(TestStatusWord)
#include "tst_statusword.moc"
