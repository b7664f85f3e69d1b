#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

namespace
{

RcdFailure Before(int number)
{
    return {Scenario::None, 1, number, number, 0, 0};
}

RcdFailure WhenPrepared(int number)
{
    return {Scenario::RcdError, number, 15, 520 + number, 1, 0};
}

} // namespace

/// The instrument's own error, before a test and during one. One instrument serves for all.
class TestRcdDeviceErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsWithItsError_data();
    void EndsWithItsError();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdDeviceErrors::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdDeviceErrors::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdDeviceErrors::EndsWithItsError_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<RcdFailure>("failure");
    constexpr int Errors = 15;
    for (int number = 0; number < Errors; ++number) {
        QTest::addRow("Ia/Ta, %d before", number) << RcdKinds::IaTa1() << Before(number);
        QTest::addRow("Ia/Ta, %d when prepared", number) << RcdKinds::IaTa1() << WhenPrepared(number);
    }
    for (const int number : {0, 6, 14}) {
        QTest::addRow("Ub/Re, %d before", number) << RcdKinds::UbRe() << Before(number);
        QTest::addRow("Ub/Re, %d when prepared", number) << RcdKinds::UbRe() << WhenPrepared(number);
        QTest::addRow("IEC Ia/Ta, %d before", number) << RcdKinds::IecIaTa1() << Before(number);
        QTest::addRow("clean-up, %d before", number) << RcdKinds::CleanUp() << Before(number);
    }
}

void TestRcdDeviceErrors::EndsWithItsError()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(kind, failure);
}

QTEST_GUILESS_MAIN(TestRcdDeviceErrors)
#include "tst_rcddeviceerrors.moc"
