#include "integration/scenariofiles.h"

/// Files with an error of the way to a running RCD test.
class TestScenarioFilesRcd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Fails_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Rcd); }
    void Fails();
};

void TestScenarioFilesRcd::Fails()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyRcd(file, RcdKinds::IaTa1());
}

QTEST_GUILESS_MAIN(TestScenarioFilesRcd)
#include "tst_scenariofilesrcd.moc"
