#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/keypad.h"
#include "panel/kit/theme.h"

using VesmarClient::Outcome;

/// The voltage is on only while somebody holds the button, and whatever happens, it goes off.
class TestPanelHighVoltage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void ReleasingTheButtonStops();
    void SlidingOffTheButtonStops();
    void EscapeStops();
    void TheSpaceBarStops();
    void TheEnterKeyHolds();
    void ABlockedScreenStops();
    void ClosingTheWindowStops();
    void WhatNobodyAttendsIsStopped_data();
    void WhatNobodyAttendsIsStopped();
    void AStopComesBeforeADate();
    void AStopThatIsNotConfirmedIsTold();
    void TheWindowDoesNotCloseUntold();

private:
    static void Begin(PanelBench& bench);
    static void VerifyStopped(PanelBench& bench);
};

/// Holds the button until the voltage is on.
void TestPanelHighVoltage::Begin(PanelBench& bench)
{
    bench.Connect();
    bench.Click("measure");
    bench.Click("tile-hv");
    bench.Press("start");
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    QVERIFY(bench.Find("banner") != nullptr);
}

void TestPanelHighVoltage::VerifyStopped(PanelBench& bench)
{
    AWAIT_EQUAL(bench.Text("outcome"), QStringLiteral("Aborted"));
    QCOMPARE(bench.Text("stopped"), QStringLiteral("The instrument is confirmed to have stopped."));
    AWAIT(bench.Find("banner") == nullptr);
}

void TestPanelHighVoltage::ReleasingTheButtonStops()
{
    PanelBench bench;
    Begin(bench);
    AWAIT(bench.session.record()->times.size() > 15);
    const QPoint inBanner = bench.Find("banner")->geometry().topLeft() + QPoint(4, 4);
    QCOMPARE(bench.window.grab().toImage().pixelColor(inBanner), QColor("#c62828"));
    bench.Shoot("high-voltage");
    bench.Release("start");
    VerifyStopped(bench);
    QVERIFY(!bench.session.record()->failure.isFailure());
    bench.Shoot("high-voltage-off");
}

void TestPanelHighVoltage::SlidingOffTheButtonStops()
{
    PanelBench bench;
    Begin(bench);
    QTest::mouseMove(bench.window.windowHandle(), QPoint(400, 200));
    VerifyStopped(bench);
    QTest::mouseRelease(bench.window.windowHandle(), Qt::LeftButton, {}, QPoint(400, 200));
}

void TestPanelHighVoltage::EscapeStops()
{
    PanelBench bench;
    Begin(bench);
    bench.PressKey(Qt::Key_Escape);
    VerifyStopped(bench);
    bench.Release("start");
}

void TestPanelHighVoltage::TheSpaceBarStops()
{
    PanelBench bench;
    Begin(bench);
    bench.PressKey(Qt::Key_Space);
    VerifyStopped(bench);
    bench.Release("start");
}

void TestPanelHighVoltage::TheEnterKeyHolds()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("measure");
    bench.Click("tile-hv");
    AWAIT(bench.Find("start")->isEnabled());
    bench.Find("start")->setFocus();
    bench.PressKey(Qt::Key_Return);
    AWAIT_EQUAL(bench.Text("phase"), QStringLiteral("Measuring"));
    bench.ReleaseKey(Qt::Key_Return);
    VerifyStopped(bench);
}

/// The application does nothing for 5 s. Meanwhile the instrument has long stopped, as its own log tells.
void TestPanelHighVoltage::ABlockedScreenStops()
{
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("log"));
    PanelBench bench({QStringLiteral("--log"), log});
    Begin(bench);
    QThread::sleep(5);
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("function 9 stopped by request"));
    QVERIFY(bench.session.measurement() != nullptr); // nothing was received yet
    VerifyStopped(bench);
    QCOMPARE(bench.session.record()->failure.name, QStringLiteral("keep-alive-missed"));
    bench.Shoot("blocked");
    bench.Release("start");
}

void TestPanelHighVoltage::ClosingTheWindowStops()
{
    PanelBench bench;
    Begin(bench);
    QVERIFY(!bench.window.close());
    bench.Shoot("closing");
    AWAIT(!bench.window.isVisible());
    QCOMPARE(bench.session.record()->outcome, Outcome::Aborted);
    QVERIFY(bench.session.record()->isStopConfirmed);
}

void TestPanelHighVoltage::WhatNobodyAttendsIsStopped_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("with Escape") << static_cast<int>(Qt::Key_Escape);
    QTest::newRow("with the space bar") << static_cast<int>(Qt::Key_Space);
    QTest::newRow("with the button") << 0;
}

/// Somebody has started a high-voltage test at the instrument itself.
void TestPanelHighVoltage::WhatNobodyAttendsIsStopped()
{
    QFETCH(int, key);
    PanelBench bench;
    bench.Connect();
    bench.Execute("function 9");
    AWAIT(bench.Find("banner") != nullptr);
    if (key != 0) {
        bench.PressKey(static_cast<Qt::Key>(key));
    } else {
        bench.Click("stopAny");
    }
    AWAIT(bench.Find("banner") == nullptr);
    QVERIFY(!bench.session.isDangerous());
}

/// A job that is under way does not swallow it.
void TestPanelHighVoltage::AStopComesBeforeADate()
{
    PanelBench bench;
    bench.Connect();
    bench.Execute("function 9");
    AWAIT(bench.Find("banner") != nullptr);
    const auto* const date = bench.session.instrument().setCalibrationDate(QDateTime::currentDateTime());
    bench.session.stopAny();
    AWAIT_EQUAL(date->outcome(), Outcome::Aborted);
    AWAIT(bench.Find("banner") == nullptr);
}

void TestPanelHighVoltage::AStopThatIsNotConfirmedIsTold()
{
    PanelBench bench({QStringLiteral("--run-on"), QStringLiteral("600000")});
    bench.Execute("scenario runs-on-after-stop");
    Begin(bench);
    bench.Release("start");
    AWAIT(bench.Text("stopped").startsWith(QStringLiteral("It is not confirmed")));
    QVERIFY(bench.Find("banner") != nullptr);
    bench.Shoot("not-stopped");
    bench.Click("stopAgain");
    AWAIT_EQUAL(bench.Text("stopped"), QStringLiteral("The instrument is confirmed to have stopped."));
    AWAIT(bench.Find("banner") == nullptr);
}

void TestPanelHighVoltage::TheWindowDoesNotCloseUntold()
{
    PanelBench bench({QStringLiteral("--run-on"), QStringLiteral("600000")});
    bench.Execute("scenario runs-on-after-stop");
    Begin(bench);
    new Panel::Keypad(bench.Find("start"), QStringLiteral("Under the curtain"), {});
    QVERIFY(!bench.window.close());
    AWAIT(bench.Find("answer") != nullptr);
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(bench.window.focusWidget()->objectName(), QStringLiteral("answer"));
        bench.PressKey(Qt::Key_Tab);
    }
    QVERIFY(bench.Text("curtainText").startsWith(QStringLiteral("It is not confirmed")));
    bench.Shoot("closing-not-stopped");
    bench.Click("answer"); // to stop again
    AWAIT(!bench.window.isVisible());
    QVERIFY(!bench.session.isStopInDoubt());
}

QTEST_MAIN(TestPanelHighVoltage)

#include "tst_panelhighvoltage.moc"
