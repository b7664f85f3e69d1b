#include <QtTest>

#include "integration/recordedrun.h"

namespace
{

constexpr char Damaged[] = R"({"faults": [{"fault": "flip", "position": 1, "mask": 4}]})";
constexpr char LostAndBack[] =
    R"({"faults": [{"fault": "silent", "when": {"request": "s", "from": 40}, "count": 8}]})";
constexpr char HungUp[] =
    R"({"faults": [{"fault": "hang-up", "when": {"request": "s", "from": 40}, "count": 1}]})";
constexpr char HungUpForAWhile[] =
    R"({"faults": [{"fault": "hang-up", "line-back-in": 1500, "when": {"request": "s", "from": 40}, "count": 1}]})";

RecordedKinds Kinds()
{
    const QString measure = QStringLiteral("measure rpe --time 6");
    const QString measureBriefly = QStringLiteral("measure rpe --time 6 --stop-timeout 5");
    const QString info = QStringLiteral("info --timeout 30");
    const char* const damaged = "arrive damaged";
    return {
        {"damaged", Damaged, info, 2, damaged, "InvalidResponse (102)"},
        {"damaged, from the middle", Damaged, info, 2, damaged, "damaged checksum", true},
        {"lost and back", LostAndBack, measure, 7, "It is back", "CommunicationRecovery (103)", false, true},
        {"hung up", HungUp, measureBriefly, 7, "Link lost, the state of the instrument is unknown",
         "CommunicationRecovery (103)", false, true},
        {"hung up for a while", HungUpForAWhile, measureBriefly, 7, "Link lost",
         "CommunicationRecovery (103)", false, true},
    };
}

} // namespace

/// A link in trouble, at an instrument that plays what it recorded of another one.
class TestRecordedLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EndsAsTheFirstOneDid_data() { _runs.AddRows(); }
    void EndsAsTheFirstOneDid();

private:
    RecordedRuns _runs{Kinds()};
};

void TestRecordedLinks::EndsAsTheFirstOneDid()
{
    QFETCH(const int, kind);
    const QByteArray problem = _runs.Problem(kind);
    QVERIFY2(problem.isEmpty(), problem.constData());
}

QTEST_GUILESS_MAIN(TestRecordedLinks)
#include "tst_recordedlinks.moc"
