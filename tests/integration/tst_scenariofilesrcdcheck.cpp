#include "integration/scenariofiles.h"

/// Files in which something is wrong with the object under test.
class TestScenarioFilesRcdCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Fails_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::RcdCheck); }
    void Fails();
};

void TestScenarioFilesRcdCheck::Fails()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyRcd(file, RcdKinds::IecIaTa1());
}

QTEST_GUILESS_MAIN(TestScenarioFilesRcdCheck)
#include "tst_scenariofilesrcdcheck.moc"
