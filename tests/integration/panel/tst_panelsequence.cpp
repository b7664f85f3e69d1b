#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/files.h"
#include "panel/kit/theme.h"
#include "panel/report/reportbar.h"

/// Test plans, from the choice of a file to the files of the report.
class TestPanelSequence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void APlanIsMeasuredAndReported();
    void AnotherReportIsNotToldOf();
    void AFailedStepEndsThePlan();
    void AFailedStepLetsThePlanGoOnWhereItSaysSo();
    void AHighVoltageStepWaitsForTheHand();
    void AStoppedPlanIsNotComplete();
    void AStopThatIsNotConfirmedEndsThePlan();
    void ADamagedPlanIsRefused();

private:
    /// Opens a plan of these steps, as a person would.
    static void Open(PanelBench& bench, const QByteArray& steps, const char* onFailedStep = "stop");
    static QString StateOf(PanelBench& bench, int step);
    static QString ReadingsOf(PanelBench& bench, int step);
};

namespace
{

const QByteArray Earth = R"({"name": "Earth", "function": "rpe", "options": {"time": 1}})";
const QByteArray NoEarth = R"({"name": "Earth", "function": "rpe", "options": {"time": 1},
                               "criteria": {"resistance": {"max": -1}}})";
const QByteArray Touch = R"({"name": "Touch current", "function": "it", "options": {"time": 1},
                             "criteria": {"current": {"min": -1000, "max": 1000}}})";
const QByteArray HighVoltage = R"({"name": "Voltage", "function": "hv", "options": {"time": 2}})";

QString FolderOf(const char* name)
{
    return QDir::home().filePath(QLatin1String(name));
}

QByteArray ContentOf(const QString& folder, const char* ending)
{
    const QStringList names = QDir(folder).entryList({QStringLiteral("*_two-steps") + QLatin1String(ending)});
    return names.size() == 1 ? Panel::readFile(QDir(folder).filePath(names.first()), 10000000).bytes
                             : QByteArray();
}

} // namespace

void TestPanelSequence::Open(PanelBench& bench, const QByteArray& steps, const char* onFailedStep)
{
    const QByteArray json = QByteArray(R"({"version": 1, "name": "Two steps", "onFailedStep": ")") +
                            onFailedStep + "\",\n\"steps\": [" + steps + "]}\n";
    QFile::remove(FolderOf("plan.json"));
    QVERIFY(!Panel::writeNewFile(FolderOf("plan.json"), json).isFailure());
    bench.Connect();
    bench.Click("sequence");
    bench.Click("openPlan");
    auto* const entries = bench.Find<QListWidget>("entries");
    AWAIT(!entries->findItems(QStringLiteral("plan.json"), Qt::MatchExactly).isEmpty());
    entries->setCurrentItem(entries->findItems(QStringLiteral("plan.json"), Qt::MatchExactly).first());
    bench.Click("openChoice");
}

QString TestPanelSequence::StateOf(PanelBench& bench, int step)
{
    return bench.Find<QTableWidget>("steps")->item(step, 1)->text();
}

QString TestPanelSequence::ReadingsOf(PanelBench& bench, int step)
{
    return bench.Find<QTableWidget>("steps")->item(step, 2)->text();
}

void TestPanelSequence::APlanIsMeasuredAndReported()
{
    PanelBench bench;
    int readings = 0;
    int plots = 0; // Three readings, and one, unless a busy machine has shown them only once.
    connect(&bench.session, &Panel::Session::measurementEnded, &bench.window, [&](const auto& record) {
        readings += record->times.size() * record->values.size();
        plots += record->times.size() > 1 ? record->values.size() : 0;
    });
    Open(bench, Earth + ',' + Touch);
    bench.Click("startPlan");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Passed"));
    QCOMPARE(StateOf(bench, 0), QStringLiteral("measured"));
    QCOMPARE(StateOf(bench, 1), QStringLiteral("passed"));
    QVERIFY(ReadingsOf(bench, 0).contains(QStringLiteral("Resistance ")));
    const QTemporaryDir folder;
    bench.Find<QLineEdit>("reportFolder")->setText(folder.path());
    bench.Click("report");
    AWAIT(bench.Text("reportWritten").contains(QStringLiteral(".csv")));
    bench.Shoot("sequence");
    const QString html = QString::fromUtf8(ContentOf(folder.path(), ".html"));
    const QString serialNumber = bench.session.instrument().identity().serialNumber;
    const QString calibrated =
        bench.session.instrument().calibrationDate().toString(QStringLiteral("yyyy-MM-dd"));
    for (const QString& part : {serialNumber, calibrated, QStringLiteral("confirmed to have stopped"),
                                QStringLiteral("Earth"), QStringLiteral("Touch current")}) {
        QVERIFY2(html.contains(part), qPrintable(part));
    }
    QVERIFY(plots > 0);
    QCOMPARE(html.count(QStringLiteral("data:image/png")), plots);
    QCOMPARE(ContentOf(folder.path(), ".csv").count('\n'), readings + 1);
    QVERIFY(ContentOf(folder.path(), ".pdf").startsWith("%PDF"));
    bench.Click("report"); // Under another name.
    AWAIT(bench.Text("reportWritten").contains(QStringLiteral("two-steps-2.html")));
    bench.Find<QLineEdit>("reportFolder")->setText(QStringLiteral("/proc"));
    bench.Click("report");
    AWAIT(bench.Find("failure") != nullptr);
}

/// While a report is being written, another one is offered.
void TestPanelSequence::AnotherReportIsNotToldOf()
{
    const QTemporaryDir folder;
    Panel::PlanRecord plan;
    plan.name = QStringLiteral("Two steps");
    plan.begun = plan.ended = QDateTime::currentDateTime();
    Panel::ReportBar bar;
    bar.offer(plan);
    bar.findChild<QLineEdit*>(QStringLiteral("reportFolder"))->setText(folder.path());
    const auto* const told = bar.findChild<QLabel*>(QStringLiteral("reportWritten"));
    auto* const button = bar.findChild<QPushButton*>(QStringLiteral("report"));
    button->click();
    QVERIFY(!told->isHidden());
    bar.offer(plan);
    QVERIFY(!button->isEnabled());
    AWAIT(button->isEnabled());
    QVERIFY(told->isHidden());
    QVERIFY(!ContentOf(folder.path(), ".csv").isEmpty());
}

void TestPanelSequence::AFailedStepEndsThePlan()
{
    PanelBench bench;
    Open(bench, NoEarth + ',' + Touch);
    bench.Click("startPlan");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Failed"));
    QCOMPARE(StateOf(bench, 0), QStringLiteral("failed"));
    QCOMPARE(StateOf(bench, 1), QStringLiteral("not measured yet"));
    QVERIFY(ReadingsOf(bench, 0).contains(QStringLiteral("has to be at most -1")));
    bench.Shoot("sequence-failed");
}

void TestPanelSequence::AFailedStepLetsThePlanGoOnWhereItSaysSo()
{
    PanelBench bench;
    Open(bench, NoEarth + ',' + Touch, "continue");
    bench.Click("startPlan");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Failed"));
    AWAIT_EQUAL(StateOf(bench, 1), QStringLiteral("passed"));
}

void TestPanelSequence::AHighVoltageStepWaitsForTheHand()
{
    PanelBench bench;
    Open(bench, HighVoltage + ',' + Touch);
    bench.Click("startPlan");
    AWAIT_EQUAL(StateOf(bench, 0), QStringLiteral("hold the button to measure"));
    bench.Shoot("sequence-hold");
    bench.Press("holdStep");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Passed")); // The hand stays where it is.
    QCOMPARE(StateOf(bench, 0), QStringLiteral("measured"));
    bench.Click("startPlan");
    bench.Press("holdStep");
    AWAIT(!ReadingsOf(bench, 0).isEmpty());
    bench.Release("holdStep");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Not complete"));
    QCOMPARE(StateOf(bench, 0), QStringLiteral("not completed"));
    QVERIFY(!bench.session.isDangerous());
}

void TestPanelSequence::AStoppedPlanIsNotComplete()
{
    PanelBench bench;
    Open(bench, Touch + ',' + R"({"name": "Earth", "function": "rpe", "options": {"time": 600}})");
    bench.Click("startPlan");
    AWAIT(ReadingsOf(bench, 1).contains(QStringLiteral("Resistance")));
    bench.Click("stopPlan");
    AWAIT_EQUAL(bench.Text("verdict"), QStringLiteral("Not complete"));
    QCOMPARE(StateOf(bench, 0), QStringLiteral("passed"));
    QCOMPARE(StateOf(bench, 1), QStringLiteral("not completed"));
}

/// It is as red as after a single measurement, and has the same way out.
void TestPanelSequence::AStopThatIsNotConfirmedEndsThePlan()
{
    PanelBench bench({QStringLiteral("--run-on"), QStringLiteral("600000")});
    bench.Execute("scenario runs-on-after-stop");
    Open(bench, Earth + ',' + Touch);
    bench.Click("startPlan");
    AWAIT(bench.Text("stopped").startsWith(QStringLiteral("It is not confirmed")));
    QCOMPARE(StateOf(bench, 1), QStringLiteral("not measured yet"));
    QCOMPARE(bench.Text("verdict"), QStringLiteral("Not complete"));
    bench.Shoot("sequence-not-stopped");
    bench.Execute("restart 0"); // as if somebody had switched it off and on
    bench.Click("stopAgain");
    AWAIT_EQUAL(bench.Text("stopped"), QStringLiteral("The instrument is confirmed to have stopped."));
}

void TestPanelSequence::ADamagedPlanIsRefused()
{
    PanelBench bench;
    Open(bench, R"({"name": "Earth", "function": "rpe", "options": {"current": 7}})");
    AWAIT(bench.Find("failure") != nullptr);
    bench.Shoot("sequence-damaged");
    const auto labels = bench.Find("failure")->findChildren<QLabel*>();
    QVERIFY2(labels.first()->text().contains(
                 QStringLiteral("plan.json is damaged, line 2: \"current\": It is one of")),
             qPrintable(labels.first()->text()));
    QVERIFY(bench.Find("startPlan")->isEnabled()); // With the plan that was there before.
}

QTEST_MAIN(TestPanelSequence)

#include "tst_panelsequence.moc"
