#include <chrono>

#include <QMap>

#include "integration/bench.h"
#include "support/serialdevice.h"

using Simulator::Exchange;
using Simulator::Fault;
using std::chrono::milliseconds;
using Vesmar::Error;
using Vesmar::Tester;

namespace
{

constexpr int Tries = 3; ///< Of a request while the connection is good, and of the change of the mode.
constexpr int Checks =
    11; ///< That have to fail before the mode is reset, and again before the link counts as lost.

int FirstAnswered(const QVector<Exchange>& exchanges)
{
    int index = 0;
    while (index < exchanges.size() && exchanges.at(index).answer.isEmpty()) {
        ++index;
    }
    return index;
}

QByteArrayList Repeated(const QByteArray& request, int count)
{
    QByteArrayList requests;
    while (requests.size() < count) {
        requests.append(request);
    }
    return requests;
}

} // namespace

/// The library at a line or an instrument that fails.
class TestLinkTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void HangUpIsALossUntilTheNewLineIsOpened();
    void ReadsThatFailAreALoss();
    void LinkRecoversWhenDamagedAnswersEnd_data();
    void LinkRecoversWhenDamagedAnswersEnd();
    void DamagedAnswersThatLastLoseTheLink_data();
    void DamagedAnswersThatLastLoseTheLink();
    void WrongLengthNeverResetsTheMode();
    void LossOfTheLinkLeavesMeasurementMode();
    void MeasurementModeAskedForDuringALossIsForgotten();
    void RequestsForDataSurviveALoss();
    void SlowAnswersDoNotHarmAGoodLink();
    void AnswersWithinTheTimeOfACheckRecoverTheLink();
    void AnswersAfterTheTimeOfACheckDoNotCount();
    void UnpluggedInstrumentIsLostAndFoundAgain();
    void ModeIsResetOnceBeforeTheLinkCountsAsLost_data();
    void ModeIsResetOnceBeforeTheLinkCountsAsLost();
};

void TestLinkTrouble::HangUpIsALossUntilTheNewLineIsOpened()
{
    Bench bench;
    bench.Connect();
    bench.instrument.SetFault(Fault::HangUp);
    bench.AwaitErrors({"103"});

    bench.instrument.Plug();
    bench.instrument.Attach();
    bench.tester->Disable();
    bench.tester->Enable();
    bench.AwaitIdentity(2);
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", "15"}));
    QCOMPARE(RecordedSerialDevice().opens, 1);
}

void TestLinkTrouble::ReadsThatFailAreALoss()
{
    Bench bench;
    bench.Connect();
    FailSerialDeviceReads(0);
    bench.AwaitErrors({"103", "100"});

    bench.instrument.Attach(); // This ends the failures.
    bench.AwaitIdentity(2);
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", "100", "15"}));
}

void TestLinkTrouble::LinkRecoversWhenDamagedAnswersEnd_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("wrong checksum") << Fault::BadCrc;
    QTest::newRow("refusal") << Fault::Refuse;
    QTest::newRow("garbage before") << Fault::GarbageBefore;
    QTest::newRow("garbage after") << Fault::GarbageAfter;
    QTest::newRow("truncated") << Fault::Truncated;
    QTest::newRow("wrong length") << Fault::WrongLength;
}

void TestLinkTrouble::LinkRecoversWhenDamagedAnswersEnd()
{
    QFETCH(Fault, fault);
    Bench bench;
    bench.instrument.SetError(5);
    bench.Connect();
    bench.instrument.SetFault(fault);
    bench.AwaitErrors({"5", "103"});

    bench.instrument.SetFault(Fault::None);
    bench.AwaitMoreReadings();
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"5", "103", "5"}));
    QCOMPARE(bench.tester.Signalled("DeviceInformation").size(), 2);
    const QByteArrayList requests = bench.instrument.Sent();
    QCOMPARE(requests.mid(requests.lastIndexOf(Wire::ReadVersion) - 1, 4), Wire::FirstRequests);
}

void TestLinkTrouble::DamagedAnswersThatLastLoseTheLink_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("in pieces") << Fault::Split;
    QTest::newRow("inverted byte") << Fault::Flip;
    QTest::newRow("missing byte") << Fault::Drop;
    QTest::newRow("doubled byte") << Fault::Double;
}

void TestLinkTrouble::DamagedAnswersThatLastLoseTheLink()
{
    QFETCH(Fault, fault);
    Bench bench(WithQuickRestart());
    bench.Connect();
    bench.instrument.SetFault(fault);
    bench.AwaitErrors({"103", "102"});
    QVERIFY(bench.instrument.Sent().contains(Wire::ChangeToNormalMode));

    bench.instrument.SetFault(Fault::None);
    bench.AwaitIdentity(2);
    bench.AwaitErrors({"103", "102", "15"});
}

/// The checks that recover the link look at the checksum alone, so the link seems good until the next
/// request.
void TestLinkTrouble::WrongLengthNeverResetsTheMode()
{
    Bench bench;
    bench.Connect();
    bench.instrument.SetFault(Fault::WrongLength);
    bench.AwaitErrors({"103"});

    constexpr int MoreThanAllChecks = 30;
    const int sentBefore = bench.instrument.Sent().size();
    AWAIT(bench.instrument.Sent().size() >= sentBefore + MoreThanAllChecks);
    for (const QByteArray& request : bench.instrument.Sent().mid(sentBefore)) {
        QCOMPARE(request, Wire::ReadStatus);
    }
    QCOMPARE(bench.tester.Errors(), QByteArrayList{"103"});
}

void TestLinkTrouble::LossOfTheLinkLeavesMeasurementMode()
{
    Bench bench;
    bench.Connect();
    bench.tester->SetIsMeasurementModeActive(true);
    QVERIFY(bench.tester->GetIsMeasurementModeActive());
    bench.instrument.SetFault(Fault::BadCrc);
    bench.AwaitErrors({"103"});
    QVERIFY(!bench.tester->GetIsMeasurementModeActive());
    bench.instrument.SetFault(Fault::None);
    bench.AwaitMoreReadings();
    QVERIFY(!bench.tester->GetIsMeasurementModeActive());
}

void TestLinkTrouble::MeasurementModeAskedForDuringALossIsForgotten()
{
    Bench bench;
    bench.Connect();
    bench.instrument.SetFault(Fault::BadCrc);
    bench.AwaitErrors({"103"});
    bench.tester->SetIsMeasurementModeActive(true);
    QVERIFY(bench.tester->GetIsMeasurementModeActive());
    bench.instrument.SetFault(Fault::None);
    bench.AwaitIdentity(2);
    QVERIFY(!bench.tester->GetIsMeasurementModeActive());
}

void TestLinkTrouble::RequestsForDataSurviveALoss()
{
    Bench bench;
    bench.Connect();
    bench.instrument.SetFault(Fault::BadCrc);
    bench.AwaitErrors({"103"});
    bench.tester->RetrieveDeviceInformation();
    bench.instrument.SetFault(Fault::None);
    bench.AwaitIdentity(3);
}

void TestLinkTrouble::SlowAnswersDoNotHarmAGoodLink()
{
    Bench bench;
    bench.instrument.SetFault(Fault::Slow, milliseconds(800));
    bench.Connect();
    QCOMPARE(bench.instrument.Sent().mid(0, 4), Wire::FirstRequests);
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestLinkTrouble::AnswersWithinTheTimeOfACheckRecoverTheLink()
{
    Bench bench;
    bench.instrument.SetFault(Fault::BadCrc);
    bench.tester->Enable();
    bench.AwaitErrors({"103"});
    bench.instrument.SetFault(Fault::Slow, milliseconds(250));
    AWAIT(!bench.tester.Signalled("TestResults").isEmpty());
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", "15"}));
}

void TestLinkTrouble::AnswersAfterTheTimeOfACheckDoNotCount()
{
    Bench bench;
    bench.instrument.SetFault(Fault::BadCrc);
    bench.tester->Enable();
    bench.AwaitErrors({"103"});
    // Between the 500 ms of a check and the next check 300 ms later, which would take it for its own answer.
    bench.instrument.SetFault(Fault::Slow, milliseconds(640));
    const int sentBefore = bench.instrument.Sent().size();
    AWAIT(bench.instrument.Sent().size() >= sentBefore + 4);
    QVERIFY(!bench.instrument.Sent().contains(Wire::ReadVersion));
    QCOMPARE(bench.tester.ErrorCode(), QByteArray("103"));
    bench.instrument.SetFault(Fault::None);
    bench.AwaitErrors({"103", "15"});
}

void TestLinkTrouble::UnpluggedInstrumentIsLostAndFoundAgain()
{
    Bench bench;
    QMap<Error, int> unansweredAt; // How many requests were unanswered when the error was signalled.
    connect(bench.tester.operator->(), &Tester::ErrorCodeChanged, this,
            [&](Error error) { unansweredAt[error] = bench.instrument.SentSinceTheFirstFailure().size(); });
    bench.Connect();

    bench.instrument.Unplug();
    AWAIT(bench.instrument.SentSinceTheFirstFailure().size() > Tries + Checks);
    QCOMPARE(bench.tester.ErrorCode(), QByteArray("100"));
    bench.AwaitErrors({"103", "100"});
    QVERIFY(unansweredAt.value(Error::CommunicationRecovery) >= Tries);
    QVERIFY(unansweredAt.value(Error::NoResponse) >= Tries + Checks);

    bench.instrument.SetError(4);
    bench.instrument.Plug();
    bench.AwaitMoreReadings();
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", "100", "4"}));
    QCOMPARE(bench.tester.Signalled("DeviceInformation").size(), 2);
    QVERIFY(bench.tester.HasStayedOnItsThread());

    const QVector<Exchange> exchanges = bench.instrument.RecordSinceTheFirstFailure();
    const QByteArrayList requests = RequestsOf(exchanges);
    QCOMPARE(requests.mid(1, 2), (QByteArrayList{requests.first(), requests.first()}));
    const int back = FirstAnswered(exchanges);
    QCOMPARE(requests.mid(Tries, back + 1 - Tries), Repeated(Wire::ReadStatus, back + 1 - Tries));
    QCOMPARE(requests.mid(back + 1, 4), Wire::FirstRequests);
}

void TestLinkTrouble::ModeIsResetOnceBeforeTheLinkCountsAsLost_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("damaged answers") << Fault::BadCrc << QByteArray("102");
    QTest::newRow("refusals") << Fault::Refuse << QByteArray("101");
}

void TestLinkTrouble::ModeIsResetOnceBeforeTheLinkCountsAsLost()
{
    QFETCH(Fault, fault);
    QFETCH(QByteArray, error);
    constexpr int RequestsUntilLost = Tries + Checks + Tries + Checks;
    Bench bench(WithQuickRestart());
    bench.Connect();

    bench.instrument.SetFault(fault);
    bench.AwaitErrors({"103", error});
    QVERIFY(bench.instrument.SentSinceTheFirstFailure().size() >= RequestsUntilLost);
    AWAIT(bench.instrument.SentSinceTheFirstFailure().size() > RequestsUntilLost + Checks);
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", error}));

    const QVector<Exchange> exchanges = bench.instrument.RecordSinceTheFirstFailure();
    const QByteArrayList requests = RequestsOf(exchanges);
    QCOMPARE(requests.mid(0, RequestsUntilLost + Checks),
             Repeated(requests.first(), Tries) + Repeated(Wire::ReadStatus, Checks) +
                 Repeated(Wire::ChangeToNormalMode, Tries) + Repeated(Wire::ReadStatus, 2 * Checks));
    const int afterReset = Tries + Checks + Tries;
    QVERIFY(exchanges.at(afterReset).receivedAt - exchanges.at(afterReset - 1).receivedAt >=
            milliseconds(3000));

    bench.instrument.SetFault(Fault::None);
    bench.AwaitIdentity(2);
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", error, "15"}));
}

QTEST_GUILESS_MAIN(TestLinkTrouble)
#include "tst_linktrouble.moc"
