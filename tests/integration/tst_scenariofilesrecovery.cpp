#include <QtTest>

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/scenariofiles.h"
#include "integration/watchedtester.h"
#include "simulator/faults/faultfile.h"

/// Files that interrupt the link for a while.
class TestScenarioFilesRecovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LosesAndFindsTheLink_data() { ScenarioFiles::AddRows(ScenarioFiles::Occasion::Recovery); }
    void LosesAndFindsTheLink();
};

void TestScenarioFilesRecovery::LosesAndFindsTheLink()
{
    QFETCH(const QString, file);
    LineInstrument instrument;
    instrument.AddFaults(Simulator::ParseFaults(ScenarioFiles::Content(file)));
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    const int readings = tester.Signalled("TestResults").size();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() > readings, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"),
             (QByteArrayList{QByteArray::number(ScenarioFiles::ErrorOf(file)), "15"}));
}

QTEST_GUILESS_MAIN(TestScenarioFilesRecovery)
#include "tst_scenariofilesrecovery.moc"
