#include <map>

#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

/// Tests that are started and bring no result. One instrument serves for all.
class TestRcdSilence : public QObject
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

void TestRcdSilence::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdSilence::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdSilence::EndsWithItsError_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<RcdFailure>("failure");
    QTest::newRow("Ub/Re silent") << RcdKinds::UbRe() << RcdFailure{Scenario::RcdSilent, 1, 15, 520, 1, 1};
    QTest::newRow("Ub/Re silent once")
        << RcdKinds::UbRe() << RcdFailure{Scenario::RcdSilentOnce, 1, 15, 520, 1, 1};
    QTest::newRow("Ub/Re garbage") << RcdKinds::UbRe() << RcdFailure{Scenario::RcdGarbage, 1, 15, 520, 1, 1};
    const std::map<const char*, RcdKind> startedAgain{{"Ia/Ta", RcdKinds::IaTa2()},
                                                      {"IEC Ia/Ta", RcdKinds::IecIaTa2()}};
    for (const auto& [name, kind] : startedAgain) {
        QTest::addRow("%s silent", name) << kind << RcdFailure{Scenario::RcdSilent, 1, 15, 201, 1, 3};
        QTest::addRow("%s garbage", name) << kind << RcdFailure{Scenario::RcdGarbage, 1, 15, 201, 1, 3};
    }
}

void TestRcdSilence::EndsWithItsError()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(kind, failure);
}

QTEST_GUILESS_MAIN(TestRcdSilence)
#include "tst_rcdsilence.moc"
