#include <QtTest>

#include "integration/scenariofiles.h"

/// Files that make the instrument fall silent for good.
class TestScenarioFilesSilence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LosesTheLink_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Silence); }
    void LosesTheLink();
};

void TestScenarioFilesSilence::LosesTheLink()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyLoss(file);
}

QTEST_GUILESS_MAIN(TestScenarioFilesSilence)
#include "tst_scenariofilessilence.moc"
