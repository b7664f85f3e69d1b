#include <QMap>
#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Exchange;
using Vesmar::Error;
using Vesmar::Tester;

namespace
{

constexpr int Tries = 3;   // of a request of a connection that was good so far
constexpr int Checks = 11; // failed ones until the instrument counts as gone

int FirstAnswered(const QVector<Exchange>& exchanges)
{
    int index = 0;
    while (index < exchanges.size() && exchanges.at(index).answer.isEmpty()) {
        ++index;
    }
    return index;
}

QByteArrayList StatusRequests(int count)
{
    QByteArrayList requests;
    while (requests.size() < count) {
        requests.append(Frames::ReadStatus);
    }
    return requests;
}

} // namespace

class TestUnplugging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LosesAndFindsTheInstrument();
};

void TestUnplugging::LosesAndFindsTheInstrument()
{
    LineInstrument instrument;
    WatchedTester tester;
    QMap<Error, int> unansweredAt; // requests, when the error was signalled
    connect(tester.operator->(), &Tester::ErrorCodeChanged, this,
            [&](Error error) { unansweredAt[error] = instrument.SentSinceTheFirstFailure().size(); });
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);

    instrument.Unplug();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.SentSinceTheFirstFailure().size() > Tries + Checks, Patience);
    QCOMPARE(tester.ErrorCode(), QByteArray("100"));
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100"}), Patience);
    QVERIFY(unansweredAt.value(Error::CommunicationRecovery) >= Tries);
    QVERIFY(unansweredAt.value(Error::NoResponse) >= Tries + Checks);

    instrument.SetError(4);
    const int readingsBefore = tester.Signalled("TestResults").size();
    instrument.Plug();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() > readingsBefore, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100", "4"}));
    QCOMPARE(tester.Signalled("DeviceInformation").size(), 2);
    QVERIFY(tester.HasStayedOnItsThread());

    const QVector<Exchange> exchanges = instrument.RecordSinceTheFirstFailure();
    const QByteArrayList requests = RequestsOf(exchanges);
    QCOMPARE(requests.mid(1, 2), (QByteArrayList{requests.first(), requests.first()}));
    const int back = FirstAnswered(exchanges);
    QCOMPARE(requests.mid(Tries, back + 1 - Tries), StatusRequests(back + 1 - Tries));
    QCOMPARE(requests.mid(back + 1, 4), Frames::FirstRequests());
}

QTEST_GUILESS_MAIN(TestUnplugging)
#include "tst_unplugging.moc"
