#include <QtTest>

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/serialdevice.h"

using Simulator::Fault;

class TestBrokenLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void HangUpIsALossUntilTheNewLineIsOpened();
    void ReadsThatFailAreALoss();
};

void TestBrokenLine::HangUpIsALossUntilTheNewLineIsOpened()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(Fault::HangUp);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);

    instrument.Plug();
    instrument.Attach();
    tester->Disable();
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "15"}));
    QCOMPARE(RecordedSerialDevice().opens, 1);
}

void TestBrokenLine::ReadsThatFailAreALoss()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    FailSerialDeviceReads(0);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100"}), Patience);

    instrument.Attach(); // which ends the failures
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100", "15"}));
}

QTEST_GUILESS_MAIN(TestBrokenLine)
#include "tst_brokenline.moc"
