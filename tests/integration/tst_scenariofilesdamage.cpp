#include <QtTest>

#include "integration/scenariofiles.h"

/// Files that make every answer a damaged one or a refusal.
class TestScenarioFilesDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LosesTheLink_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Damage); }
    void LosesTheLink();
};

void TestScenarioFilesDamage::LosesTheLink()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyLoss(file);
}

QTEST_GUILESS_MAIN(TestScenarioFilesDamage)
#include "tst_scenariofilesdamage.moc"
