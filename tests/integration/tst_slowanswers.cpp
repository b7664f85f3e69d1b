#include <chrono>

#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Fault;
using std::chrono::milliseconds;

class TestSlowAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DoNotHarmAGoodLink();
    void RecoverTheLinkWithinTheTimeOfACheck();
    void AreNoneAfterTheTimeOfACheck();
};

void TestSlowAnswers::DoNotHarmAGoodLink()
{
    LineInstrument instrument;
    WatchedTester tester;
    instrument.SetFault(Fault::Slow, milliseconds(800));
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    QCOMPARE(instrument.Sent().mid(0, 4), Frames::FirstRequests());
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestSlowAnswers::RecoverTheLinkWithinTheTimeOfACheck()
{
    LineInstrument instrument;
    WatchedTester tester;
    instrument.SetFault(Fault::BadCrc);
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    instrument.SetFault(Fault::Slow, milliseconds(250));
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "15"}));
}

void TestSlowAnswers::AreNoneAfterTheTimeOfACheck()
{
    LineInstrument instrument;
    WatchedTester tester;
    instrument.SetFault(Fault::BadCrc);
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    // Between the 500 ms of a check and the next check 300 ms later, which would take it for its own answer.
    instrument.SetFault(Fault::Slow, milliseconds(640));
    const int sentBefore = instrument.Sent().size();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() >= sentBefore + 4, Patience);
    QVERIFY(!instrument.Sent().contains(Frames::ReadVersion));
    QCOMPARE(tester.ErrorCode(), QByteArray("103"));
    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "15"}), Patience);
}

QTEST_GUILESS_MAIN(TestSlowAnswers)
#include "tst_slowanswers.moc"
