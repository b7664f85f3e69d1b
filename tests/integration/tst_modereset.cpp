#include <chrono>

#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Exchange;
using Simulator::Fault;
using std::chrono::milliseconds;

Q_DECLARE_METATYPE(Simulator::Fault)

namespace
{

constexpr int Tries = 3;   // of a request of a connection that was good so far, and of the change of the mode
constexpr int Checks = 11; // failed ones until the mode is reset, and again until the link counts as lost

QByteArrayList Repeated(const QByteArray& request, int count)
{
    QByteArrayList requests;
    while (requests.size() < count) {
        requests.append(request);
    }
    return requests;
}

} // namespace

class TestModeReset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void IsTriedOnceBeforeTheLinkCountsAsLost_data();
    void IsTriedOnceBeforeTheLinkCountsAsLost();
};

void TestModeReset::IsTriedOnceBeforeTheLinkCountsAsLost_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("damaged answers") << Fault::BadCrc << QByteArray("102");
    QTest::newRow("refusals") << Fault::Refuse << QByteArray("101");
}

void TestModeReset::IsTriedOnceBeforeTheLinkCountsAsLost()
{
    QFETCH(Fault, fault);
    QFETCH(QByteArray, error);
    constexpr int RequestsUntilLost = Tries + Checks + Tries + Checks;
    LineInstrument instrument(WithQuickRestart());
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);

    instrument.SetFault(fault);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", error}), Patience);
    QVERIFY(instrument.SentSinceTheFirstFailure().size() >= RequestsUntilLost);
    QTRY_VERIFY_WITH_TIMEOUT(instrument.SentSinceTheFirstFailure().size() > RequestsUntilLost + Checks,
                             Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", error}));

    const QVector<Exchange> exchanges = instrument.RecordSinceTheFirstFailure();
    const QByteArrayList requests = RequestsOf(exchanges);
    QCOMPARE(requests.mid(0, RequestsUntilLost + Checks),
             Repeated(requests.first(), Tries) + Repeated(Frames::ReadStatus, Checks) +
                 Repeated(Frames::ChangeToNormalMode, Tries) + Repeated(Frames::ReadStatus, 2 * Checks));
    const int afterReset = Tries + Checks + Tries;
    QVERIFY(exchanges.at(afterReset).receivedAt - exchanges.at(afterReset - 1).receivedAt >=
            milliseconds(3000));

    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", error, "15"}));
}

QTEST_GUILESS_MAIN(TestModeReset)
#include "tst_modereset.moc"
