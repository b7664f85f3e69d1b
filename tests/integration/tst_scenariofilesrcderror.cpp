#include "integration/scenariofiles.h"

/// Files with an error that the instrument has during an RCD test.
class TestScenarioFilesRcdError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Fails_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::RcdError); }
    void Fails();
};

void TestScenarioFilesRcdError::Fails()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyRcd(file, RcdKinds::UbRe());
}

QTEST_GUILESS_MAIN(TestScenarioFilesRcdError)
#include "tst_scenariofilesrcderror.moc"
