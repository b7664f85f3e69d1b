#include "integration/scenariofiles.h"
#include "integration/updating.h"

/// Files with an error of a firmware update.
class TestScenarioFilesUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Fails_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Update); }
    void Fails();
};

void TestScenarioFilesUpdate::Fails()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyArrival(file, [](const auto& faults, int error) {
        UpdateBench bench;
        bench.instrument.AddFaults(faults);
        bench.Connect();
        bench.Update(ImageOf(3));
        return ScenarioFiles::ToldUntil(bench.tester, error);
    });
}

QTEST_GUILESS_MAIN(TestScenarioFilesUpdate)
#include "tst_scenariofilesupdate.moc"
