#include <QtTest>

#include "integration/lineinstrument.h"
#include "integration/scenariofiles.h"
#include "integration/watchedtester.h"

/// Files with an error that the instrument reports with its status.
class TestScenarioFilesStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void IsReported_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Status); }
    void IsReported();
};

void TestScenarioFilesStatus::IsReported()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyArrival(file, [](const auto& faults, int error) {
        LineInstrument instrument;
        instrument.AddFaults(faults);
        WatchedTester tester;
        tester->Enable();
        return ScenarioFiles::ToldUntil(tester, error);
    });
}

QTEST_GUILESS_MAIN(TestScenarioFilesStatus)
#include "tst_scenariofilesstatus.moc"
