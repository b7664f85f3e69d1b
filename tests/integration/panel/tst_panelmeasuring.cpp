#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/theme.h"

/// Measurements as a person makes them.
class TestPanelMeasuring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void FromTheTileToTheResult();
};

void TestPanelMeasuring::FromTheTileToTheResult()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("measure");
    bench.Shoot("tiles");
    bench.Click("tile-rpe");
    bench.Shoot("options");
    bench.Click("start");
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    AWAIT(bench.session.record()->times.size() > 20);
    bench.Shoot("measuring");
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Completed"));
    QCOMPARE(bench.Text("stopped"), QStringLiteral("The instrument is confirmed to have stopped."));
    bench.Shoot("result");
}

QTEST_MAIN(TestPanelMeasuring)

#include "tst_panelmeasuring.moc"
