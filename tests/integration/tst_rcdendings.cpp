#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

Q_DECLARE_METATYPE(Simulator::Scenario)

/// Tests that come to their result in an unusual way. One instrument serves for all.
class TestRcdEndings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void BringsItsResult_data();
    void BringsItsResult();

private:
    void AddRows(const char* name, Scenario scenario, int number = 1);

    QTemporaryDir _directory;
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdEndings::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>(WithLog(WithQuickRcd(), _directory));
}

void TestRcdEndings::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdEndings::AddRows(const char* name, Scenario scenario, int number)
{
    QTest::addRow("Ub/Re %s", name) << RcdKinds::UbRe() << scenario << number << 1;
    QTest::addRow("Ia/Ta %s", name) << RcdKinds::IaTa2() << scenario << number << 1;
    QTest::addRow("IEC Ia/Ta %s", name) << RcdKinds::IecIaTa2() << scenario << number << 1;
}

void TestRcdEndings::BringsItsResult_data()
{
    QTest::addColumn<RcdKind>("kind");
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("starts");
    AddRows("glued", Scenario::RcdGlued);
    AddRows("in pieces", Scenario::RcdPieces, 20000);
    AddRows("checked clean", Scenario::RcdCheck, 0);
    AddRows("clean the second time", Scenario::RcdCheckOnce, 3);
    QTest::newRow("Ia/Ta in quick pieces") << RcdKinds::IaTa1() << Scenario::RcdPieces << 1 << 1;
    QTest::newRow("Ia/Ta start test 15") << RcdKinds::IaTa1() << Scenario::StartTest << 15 << 1;
    QTest::newRow("Ia/Ta without Ta") << RcdKinds::IaTa1() << Scenario::RcdNoTa << 1 << 1;
    QTest::newRow("IEC Ia/Ta without Ta") << RcdKinds::IecIaTa1() << Scenario::RcdNoTa << 1 << 1;
    QTest::newRow("Ia/Ta silent once") << RcdKinds::IaTa1() << Scenario::RcdSilentOnce << 1 << 2;
    QTest::newRow("IEC Ia/Ta silent once") << RcdKinds::IecIaTa1() << Scenario::RcdSilentOnce << 1 << 2;
    QTest::newRow("IEC Ia/Ta mains unsuitable once")
        << RcdKinds::IecIaTa1() << Scenario::RcdCheckOnce << 10 << 1;
}

void TestRcdEndings::BringsItsResult()
{
    QFETCH(const RcdKind, kind);
    QFETCH(const Scenario, scenario);
    QFETCH(const int, number);
    QFETCH(const int, starts);
    _rcd->VerifySuccess(kind, scenario, number, starts);
}

QTEST_GUILESS_MAIN(TestRcdEndings)
#include "tst_rcdendings.moc"
