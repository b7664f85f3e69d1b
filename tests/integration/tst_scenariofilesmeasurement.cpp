#include <Vesmar/rpesettings.h>

#include "integration/measuring.h"
#include "integration/scenariofiles.h"

/// Files with an error of an ordinary measurement.
class TestScenarioFilesMeasurement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Fails_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Measurement); }
    void Fails();
};

void TestScenarioFilesMeasurement::Fails()
{
    QFETCH(const QString, file);
    ScenarioFiles::VerifyArrival(file, [](const auto& faults, int error) {
        constexpr int LongTime = 600;
        Measuring measuring;
        measuring.instrument.AddFaults(faults);
        measuring.Prepare(*ForSeconds<Vesmar::RPESettings>(LongTime));
        measuring.tester->StartMeasurement();
        return ScenarioFiles::ToldUntil(measuring.tester, error);
    });
}

QTEST_GUILESS_MAIN(TestScenarioFilesMeasurement)
#include "tst_scenariofilesmeasurement.moc"
