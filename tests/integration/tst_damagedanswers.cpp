#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Fault;

Q_DECLARE_METATYPE(Simulator::Fault)

class TestDamagedAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RecoversWhenTheyEnd_data();
    void RecoversWhenTheyEnd();
    void LoseTheLinkWhenTheyLast_data();
    void LoseTheLinkWhenTheyLast();
    void WrongLengthNeverResetsTheMode();
};

void TestDamagedAnswers::RecoversWhenTheyEnd_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("wrong checksum") << Fault::BadCrc;
    QTest::newRow("refusal") << Fault::Refuse;
    QTest::newRow("garbage before") << Fault::GarbageBefore;
    QTest::newRow("garbage after") << Fault::GarbageAfter;
    QTest::newRow("truncated") << Fault::Truncated;
    QTest::newRow("wrong length") << Fault::WrongLength;
}

void TestDamagedAnswers::RecoversWhenTheyEnd()
{
    QFETCH(Fault, fault);
    LineInstrument instrument;
    instrument.SetError(5);
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(fault);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"5", "103"}), Patience);

    instrument.SetFault(Fault::None);
    const int readingsBefore = tester.Signalled("TestResults").size();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() > readingsBefore, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"5", "103", "5"}));
    QCOMPARE(tester.Signalled("DeviceInformation").size(), 2);
    const QByteArrayList requests = instrument.Sent();
    QCOMPARE(requests.mid(requests.lastIndexOf(Frames::ReadVersion) - 1, 4), Frames::FirstRequests());
}

void TestDamagedAnswers::LoseTheLinkWhenTheyLast_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("in pieces") << Fault::Split;
    QTest::newRow("inverted byte") << Fault::Flip;
    QTest::newRow("missing byte") << Fault::Drop;
    QTest::newRow("doubled byte") << Fault::Double;
}

void TestDamagedAnswers::LoseTheLinkWhenTheyLast()
{
    QFETCH(Fault, fault);
    LineInstrument instrument(WithQuickRestart());
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(fault);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "102"}), Patience);
    QVERIFY(instrument.Sent().contains(Frames::ChangeToNormalMode));

    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "102", "15"}), Patience);
}

/// The checks that recover the link look at the checksum alone, so the link seems good until the next
/// request.
void TestDamagedAnswers::WrongLengthNeverResetsTheMode()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(Fault::WrongLength);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);

    constexpr int MoreThanAllChecks = 30;
    const int sentBefore = instrument.Sent().size();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() >= sentBefore + MoreThanAllChecks, Patience);
    for (const QByteArray& request : instrument.Sent().mid(sentBefore)) {
        QCOMPARE(request, QByteArray(Frames::ReadStatus));
    }
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList{"103"});
}

QTEST_GUILESS_MAIN(TestDamagedAnswers)
#include "tst_damagedanswers.moc"
