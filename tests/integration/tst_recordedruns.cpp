#include <QtTest>

#include "integration/recordedrun.h"

namespace
{

RecordedKinds Kinds()
{
    const QString measure = QStringLiteral("measure rpe --time 2");
    const char* const preparation = "PrepareFailed (200)";
    const char* const start = "StartFailed (201)";
    const char* const run = "MeasurementFailed (202)";
    return {
        {"good", NoFaults, measure, 0, "done", "stop measurement", false, true},
        {"good, single", NoFaults, QStringLiteral("measure rln"), 0, "done", "RLN (1), Completed (2)"},
        {"preparation", Scenario("200-preparation-fails"), measure, 4, preparation, preparation},
        {"preparation, from the middle", Scenario("200-preparation-fails"), measure, 4, preparation,
         "PrepareError (3)", true},
        {"start", Scenario("201-start-fails"), measure, 4, start, start},
        {"run", Scenario("202-no-result"), measure, 4, run, run, false, true},
        {"identity", NoFaults, QStringLiteral("info"), 0, "204815", "read version"},
    };
}

} // namespace

/// A measurement at an instrument that plays what it recorded of another one.
class TestRecordedRuns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EndsAsTheFirstOneDid_data() { _runs.AddRows(); }
    void EndsAsTheFirstOneDid();

private:
    RecordedRuns _runs{Kinds()};
};

void TestRecordedRuns::EndsAsTheFirstOneDid()
{
    QFETCH(const int, kind);
    const QByteArray problem = _runs.Problem(kind);
    QVERIFY2(problem.isEmpty(), problem.constData());
}

QTEST_GUILESS_MAIN(TestRecordedRuns)
#include "tst_recordedruns.moc"
