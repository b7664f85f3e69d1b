#include <map>

#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;

/// What the check before the IEC Ia/Ta test finds. One instrument serves for all.
class TestRcdIecChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsWithItsError_data();
    void EndsWithItsError();
    void UnsuitableMainsIsPolledUntilItSuits();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdIecChecks::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdIecChecks::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdIecChecks::EndsWithItsError_data()
{
    QTest::addColumn<RcdFailure>("failure");
    const std::map<int, int> errors{{1, 500}, {2, 501}, {3, 502}, {4, 503}, {7, 504}, {8, 505}, {9, 506}};
    for (const auto& [code, error] : errors) {
        QTest::addRow("code %d", code) << RcdFailure{Scenario::RcdCheck, code, 15, error, 1, 0};
    }
}

void TestRcdIecChecks::EndsWithItsError()
{
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(RcdKinds::IecIaTa1(), failure);
}

void TestRcdIecChecks::UnsuitableMainsIsPolledUntilItSuits()
{
    constexpr int MoreThanTheBudget = 7;
    _rcd->instrument.SetFunction(0);
    _rcd->instrument.SetScenario(Scenario::RcdCheck, 10);
    _rcd->instrument.ClearRequests();
    _rcd->Start(RcdKinds::IecIaTa1());
    QTRY_VERIFY_WITH_TIMEOUT(_rcd->CountSent(Frames::ReadMeasurement) >= MoreThanTheBudget, Patience);
    QVERIFY(_rcd->IsInState(Vesmar::MeasurementState::Prepared));
    QCOMPARE(_rcd->tester->ErrorCode(), Error::RCDCheckObjectULNIECInvalid);
    _rcd->instrument.SetScenario(Scenario::RcdCheck, 0);
    _rcd->AwaitEnd();
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(_rcd->tester->TestResults()->GetMeasurementType(), Vesmar::MeasurementType::RCDIEC);
}

QTEST_GUILESS_MAIN(TestRcdIecChecks)
#include "tst_rcdiecchecks.moc"
