#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/theme.h"

using VesmarClient::Outcome;

/// Measurements as a person makes them.
class TestPanelMeasuring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void FromTheTileToTheReport();
    void WhatIsWrongStandsBesideTheField();
    void AnUnpluggedCableInTheMiddleIsTold();
    void AGapIsShown();
    void AResidualCurrentDeviceIsTested();
    void TheOtherTestsOfAResidualCurrentDeviceAreMade();
    void TheKeyboardAloneIsEnough();

private:
    static void Open(PanelBench& bench, const char* tile);
    static void Begin(PanelBench& bench);
};

void TestPanelMeasuring::Open(PanelBench& bench, const char* tile)
{
    bench.Connect();
    bench.Click("measure");
    bench.Click(tile);
}

/// A measurement without a limit, until it has given readings.
void TestPanelMeasuring::Begin(PanelBench& bench)
{
    Open(bench, "tile-rpe");
    bench.Click("special");
    bench.Click("start");
    AWAIT(bench.session.record()->times.size() > 10);
}

void TestPanelMeasuring::FromTheTileToTheReport()
{
    PanelBench bench;
    Open(bench, "tile-rpe");
    bench.Click("start");
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    AWAIT(!bench.session.record()->times.isEmpty() && bench.session.record()->times.last() > 2);
    QVERIFY(bench.Text("times").endsWith(QStringLiteral("left")));
    bench.Shoot("measuring");
    AWAIT(!bench.Text("outcome").isEmpty());
    const Outcome outcome = bench.session.record()->outcome;
    QVERIFY(outcome == Outcome::Completed || outcome == Outcome::Interrupted); // by a gap, on a busy machine
    QCOMPARE(bench.Text("stopped"), QStringLiteral("The instrument is confirmed to have stopped."));
    bench.Click("lane"); // sets the cursor
    bench.Shoot("result");
    const QTemporaryDir folder;
    bench.Find<QLineEdit>("reportFolder")->setText(folder.path());
    bench.Click("report");
    AWAIT(bench.Text("reportWritten").contains(QStringLiteral(".pdf")));
    bench.Shoot("reported");
}

void TestPanelMeasuring::WhatIsWrongStandsBesideTheField()
{
    PanelBench bench;
    Open(bench, "tile-rpe");
    AWAIT(bench.Find("start")->isEnabled());
    bench.Find<QLineEdit>("number")->setText(QStringLiteral("0"));
    QVERIFY(bench.Text("problem-time").contains(QStringLiteral("from 1 to 86400 s")));
    QVERIFY(!bench.Find("start")->isEnabled());
    bench.Shoot("wrong");
    bench.Click("more");
    QVERIFY(bench.Find("problem-time") == nullptr);
    QVERIFY(bench.Find("start")->isEnabled());
}

/// The link is lost, and the driver proves the stop once it is back.
void TestPanelMeasuring::AnUnpluggedCableInTheMiddleIsTold()
{
    PanelBench bench;
    Begin(bench);
    bench.Execute("unplug");
    AWAIT(!bench.session.record()->gaps.isEmpty());
    bench.Shoot("unplugged");
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Connection lost"));
    QVERIFY(bench.Find("failure") != nullptr);
    bench.Shoot("unplugged-result");
    QVERIFY(bench.Find("stopAgain") != nullptr || bench.session.record()->isStopConfirmed);
}

void TestPanelMeasuring::AGapIsShown()
{
    PanelBench bench;
    Begin(bench);
    bench.Execute("unplug");
    AWAIT(!bench.session.record()->gaps.isEmpty());
    bench.Execute("plug");
    const int before = bench.session.record()->times.size();
    AWAIT(bench.session.record()->times.size() > before + 10);
    bench.Click("stop");
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Aborted"));
    bench.Shoot("gap");
}

void TestPanelMeasuring::AResidualCurrentDeviceIsTested()
{
    PanelBench bench;
    Open(bench, "tile-rcd");
    QVERIFY(bench.Find("problem-mode") != nullptr);
    bench.Click("choice-ia-ta-1");
    QVERIFY(bench.Find("problem-mode") == nullptr);
    bench.Click("choice-true"); // measures Re first
    bench.Click("start");
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Completed"));
    for (const char* const value : {"value-Re", "value-Ia", "value-Ta"}) {
        QVERIFY2(bench.Text(value) != QStringLiteral("–"), value);
    }
    bench.Shoot("rcd");
}

void TestPanelMeasuring::TheOtherTestsOfAResidualCurrentDeviceAreMade()
{
    struct Test {
        const char* mode;
        const char* value; // that it gives; a clean-up gives none
    };
    PanelBench bench;
    Open(bench, "tile-rcd-iec");
    for (const Test& test : {Test{"choice-ia-ta-1", "value-Ta"}, Test{"choice-ia-ta-2", "value-Ta"},
                             Test{"choice-clean-up", nullptr}}) {
        bench.Click(test.mode);
        bench.Click("start");
        AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Completed"));
        QVERIFY(test.value == nullptr || bench.Text(test.value) != QStringLiteral("–"));
        bench.Click("options");
    }
    bench.Shoot("rcd-iec");
}

/// Tab, the space bar, Enter and F2: no mouse.
void TestPanelMeasuring::TheKeyboardAloneIsEnough()
{
    PanelBench bench;
    bench.Connect();
    bench.PressKey(Qt::Key_F2);
    const auto tabTo = [&bench](const char* name) {
        for (int i = 0; i < 60 && bench.window.focusWidget() != bench.Find(name); ++i) {
            bench.PressKey(Qt::Key_Tab);
        }
        QCOMPARE(bench.window.focusWidget()->objectName(), QLatin1String(name));
        bench.PressKey(Qt::Key_Space);
        bench.ReleaseKey(Qt::Key_Space);
    };
    tabTo("tile-rpe");
    AWAIT(bench.Find("start") != nullptr && bench.Find("start")->isEnabled());
    tabTo("start");
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    bench.PressKey(Qt::Key_Escape);
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Aborted"));
}

QTEST_MAIN(TestPanelMeasuring)

#include "tst_panelmeasuring.moc"
