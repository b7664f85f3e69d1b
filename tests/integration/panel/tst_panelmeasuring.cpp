#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/files.h"
#include "panel/kit/theme.h"
#include "panel/plot/lane.h"

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
    void AFingerAloneIsEnough();
    void ThePlotIsZoomedAndMoved();
    void ThePlotIsPaused();
    void ReadingsHaveTheUnitsOfAFile();

private:
    static void Open(PanelBench& bench, const char* tile);
    static void Begin(PanelBench& bench);
    /// The times that the plot shows.
    static QwtInterval Shown(PanelBench& bench)
    {
        return bench.Find<QwtPlot>("lane")->axisInterval(QwtPlot::xBottom);
    }
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
    AWAIT(bench.Text("times").endsWith(QStringLiteral("left")));
    AWAIT(!bench.session.record()->times.isEmpty() && bench.session.record()->times.last() > 2);
    bench.Shoot("measuring");
    AWAIT(!bench.Text("outcome").isEmpty());
    const Outcome outcome = bench.session.record()->outcome;
    const bool hasGap = !bench.session.record()->gaps.isEmpty(); // on a busy machine
    QVERIFY(outcome == Outcome::Completed || (outcome == Outcome::Interrupted && hasGap));
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

/// A number is typed on a keypad.
void TestPanelMeasuring::AFingerAloneIsEnough()
{
    PanelBench bench;
    Open(bench, "tile-rpe");
    bench.Click("number");
    bench.Shoot("keypad");
    for (const char* const key : {"key-7", "key-1", "key-2", "backspace"}) {
        bench.Click(key);
    }
    bench.Click("enter");
    AWAIT(bench.Find("keypad") == nullptr);
    QCOMPARE(bench.Find<QLineEdit>("number")->text(), QStringLiteral("71"));
    bench.Click("number");
    bench.Click("key-8");
    bench.Click("cancel");
    AWAIT(bench.Find("keypad") == nullptr);
    bench.Click("start");
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    QCOMPARE(bench.session.record()->settings.value(QStringLiteral("time")).toInt(), 71);
}

void TestPanelMeasuring::ThePlotIsZoomedAndMoved()
{
    PanelBench bench;
    Begin(bench);
    AWAIT(bench.session.record()->times.last() > 3);
    bench.Click("stop");
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Aborted"));
    const QwtInterval all = Shown(bench);
    QCOMPARE(all, QwtInterval(0, bench.session.record()->times.last()));
    bench.Click("zoomIn");
    QCOMPARE(Shown(bench), QwtInterval(all.maxValue() / 2, all.maxValue()));
    bench.Drag("lane", QPoint(60, 0));
    QVERIFY(Shown(bench).maxValue() < all.maxValue());
    QCOMPARE(Shown(bench).width(), all.width() / 2);
    bench.Click("zoomOut");
    QCOMPARE(Shown(bench), all);
    bench.Click("zoomIn");
    bench.Click("zoomAll");
    QCOMPARE(Shown(bench), all);
}

void TestPanelMeasuring::ThePlotIsPaused()
{
    PanelBench bench;
    Begin(bench);
    bench.Click("pause");
    const QwtInterval paused = Shown(bench);
    const int before = bench.session.record()->times.size();
    AWAIT(bench.session.record()->times.size() > before + 10);
    QCOMPARE(Shown(bench), paused);
    bench.Click("pause");
    AWAIT(Shown(bench).maxValue() > paused.maxValue() + 1);
}

void TestPanelMeasuring::ReadingsHaveTheUnitsOfAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("units.json"));
    QVERIFY(!Panel::writeNewFile(path, R"({"rpe": {"current": {"unit": "mA", "decimals": 1}}})").isFailure());
    QVERIFY(!VesmarClient::Functions::readUnits(path).isFailure());
    PanelBench bench;
    Begin(bench);
    QVERIFY2(bench.Text("value-current").contains(QRegularExpression(QStringLiteral("^\\d+\\.\\d\u00a0mA$"))),
             qPrintable(bench.Text("value-current")));
}

QTEST_MAIN(TestPanelMeasuring)

#include "tst_panelmeasuring.moc"
