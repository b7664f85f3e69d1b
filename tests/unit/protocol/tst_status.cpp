#include <QtTest>

#include "protocol/status.h"
#include "support/wire.h"

using Vesmar::Error;
using Vesmar::MeasurementType;
using Vesmar::Status;

class TestStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryFieldHasItsBits_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("function");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("process");
        const auto row = [](const char* name, const char* frame, bool isNew, int mode, int function,
                            int error, int process) {
            QTest::newRow(name) << Wire::Bytes(frame) << isNew << mode << function << error << process;
        };
        row("no function, no error", "00 F5 BA BF", false, 0, 0, 15, 5);
        row("function 3 with a reading", "A3 52 9A 32", true, 1, 3, 5, 2);
        row("update mode, RLN", "61 F7", false, 3, 1, 15, 7);
        row("mode 2", "40 00", false, 2, 0, 0, 0);
        row("RCD with a reading", "8A F7 AB 6B", true, 0, 10, 15, 7);
        row("RCD IEC", "0B FC", false, 0, 11, 15, 12);
        row("function 31", "1F E9", false, 0, 31, 14, 9);
        row("a reading alone", "80 FE", true, 0, 0, 15, 14);
        row("every bit set", "FF FF", true, 3, 31, 15, 15);
        row("no bit set", "00 00", false, 0, 0, 0, 0);
    }

    void EveryFieldHasItsBits()
    {
        QFETCH(const QByteArray, frame);
        QFETCH(const int, function);
        const Status status = Vesmar::DecodeStatus(frame);
        QTEST(status.hasNewMeasurement, "isNew");
        QTEST(static_cast<int>(status.mode), "mode");
        QCOMPARE(static_cast<int>(status.function), function);
        QTEST(static_cast<int>(status.error), "error");
        QTEST(status.processStatus, "process");

        // The process is that of the function, or of the start test where there is no function.
        constexpr int None = -1;
        const int functionState = status.functionState ? static_cast<int>(*status.functionState) : None;
        const int startTest = status.startTestResult ? static_cast<int>(*status.startTestResult) : None;
        QCOMPARE(functionState, function != 0 ? status.processStatus : None);
        QCOMPARE(startTest, function == 0 ? status.processStatus : None);
    }

    void MissingBytesCountAsZero()
    {
        QCOMPARE(static_cast<int>(Vesmar::DecodeStatus({}).function), 0);
        const Status status = Vesmar::DecodeStatus(Wire::Bytes("8B"));
        QVERIFY(status.hasNewMeasurement);
        QCOMPARE(status.function, MeasurementType::RCDIEC);
        QCOMPARE(static_cast<int>(status.error), 0);
        QCOMPARE(status.processStatus, 0);
    }

    void FourBitsNameAnotherFunction()
    {
        const QByteArray frame = Wire::Bytes("1B 37");
        QCOMPARE(static_cast<int>(Vesmar::DecodeStatus(frame).function), 27);
        const Status status = Vesmar::DecodeStatus(frame, Vesmar::FunctionBits::Four);
        QCOMPARE(status.function, MeasurementType::RCDIEC);
        QCOMPARE(static_cast<int>(status.error), 3);
        QCOMPARE(status.processStatus, 7);
    }

    void AnErrorOfAnRCDTestHasANumberOfItsOwn()
    {
        for (int number = 0; number < 15; ++number) {
            QCOMPARE(static_cast<int>(Vesmar::ErrorInRCDTest(Error(number))), 520 + number);
        }
        QCOMPARE(Vesmar::ErrorInRCDTest(Error(15)), Error::NoErrors);
    }

    void TheObjectCheckHasAnErrorForEveryByte()
    {
        const QMap<int, int> named = {{0, 15},  {2, 501}, {3, 502}, {4, 503},
                                      {7, 504}, {8, 505}, {9, 506}, {10, 507}};
        for (int byte = 0; byte < 256; ++byte) {
            const QByteArray answer(1, static_cast<char>(byte));
            QCOMPARE(static_cast<int>(Vesmar::DecodeObjectCheck(answer)), named.value(byte, 500));
        }
        QCOMPARE(Vesmar::DecodeObjectCheck({}), Error::NoErrors);
    }

    void TheObjectCheckReadsItsFirstByteAlone()
    {
        QCOMPARE(Vesmar::DecodeObjectCheck('\x00' + QByteArray(25, '\x03')), Error::NoErrors);
        QCOMPARE(Vesmar::DecodeObjectCheck('\x03' + QByteArray(25, '\x00')), Error::RCDCheckObject3);
    }
};

QTEST_APPLESS_MAIN(TestStatus)
#include "tst_status.moc"
