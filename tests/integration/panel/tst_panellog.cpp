#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/panel/panelbench.h"
#include "panel/kit/files.h"
#include "panel/kit/theme.h"
#include "panel/plot/readingplot.h"

/// The log of the line in words: live, and recorded.
class TestPanelLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Panel::applyTheme(Panel::Theme::Light); }
    void TheLineIsShownLiveThroughAFilter();
    void ARecordedLogIsShownWithItsPlots();
    void AFileThatIsNoLogIsTold();

private:
    /// Opens the log in this file, as a person would.
    static void Open(PanelBench& bench, const QByteArray& content);
    static int Rows(PanelBench& bench) { return bench.Find<QTableView>("log")->model()->rowCount(); }
    static QString TextOf(PanelBench& bench, int row)
    {
        return bench.Find<QTableView>("log")->model()->index(row, 2).data().toString();
    }
};

void TestPanelLog::Open(PanelBench& bench, const QByteArray& content)
{
    const QString path = QDir::home().filePath(QStringLiteral("recorded.log"));
    QFile::remove(path);
    QVERIFY(!Panel::writeNewFile(path, content).isFailure());
    bench.Click("openLog");
    auto* const entries = bench.Find<QListWidget>("entries");
    entries->setCurrentItem(entries->findItems(QStringLiteral("recorded.log"), Qt::MatchExactly).value(0));
    bench.Click("openChoice");
}

void TestPanelLog::TheLineIsShownLiveThroughAFilter()
{
    PanelBench bench;
    bench.Connect();
    bench.Click("log");
    AWAIT(Rows(bench) > 10);
    bench.Find<QLineEdit>("logFilter")->setText(QStringLiteral("204815"));
    AWAIT(Rows(bench) > 0);
    for (int row = 0; row < Rows(bench); ++row) {
        QVERIFY2(TextOf(bench, row).contains(QStringLiteral("204815")), qPrintable(TextOf(bench, row)));
    }
    bench.Find<QTableView>("log")->selectRow(0);
    QCOMPARE(bench.Text("logDetails"), TextOf(bench, 0));
    bench.Find<QLineEdit>("logFilter")->clear();
    bench.Shoot("log");
}

void TestPanelLog::ARecordedLogIsShownWithItsPlots()
{
    QByteArray lines;
    PanelBench bench;
    connect(&bench.session.traceLines(), &Panel::TraceLines::line, &bench.window,
            [&lines](const QByteArray& line) { lines += line + '\n'; });
    bench.Connect();
    bench.session.measure(VesmarClient::Settings("rpe").set("time", 3));
    AWAIT(bench.session.measurement() == nullptr);
    const QVector<double> measured = bench.session.record()->values.first();
    bench.Click("log");
    Open(bench, lines);
    AWAIT(bench.Find("logMeasurements") != nullptr);
    QVERIFY(Rows(bench) > 20);
    bench.Shoot("log-recorded");
    auto* const measurements = bench.Find<QComboBox>("logMeasurements");
    QCOMPARE(measurements->count(), 2);
    QVERIFY(measurements->itemText(1).contains(bench.session.record()->function().title));
    measurements->setFocus();
    bench.PressKey(Qt::Key_Down);
    AWAIT(bench.Find<Panel::ReadingPlot>("logPlot") != nullptr);
    const QVector<double> plotted = bench.Find<Panel::ReadingPlot>("logPlot")->record()->values.first();
    QVERIFY2(plotted.size() >= measured.size() && measured.size() > 10,
             qPrintable(QString::number(plotted.size())));
    QCOMPARE(static_cast<float>(plotted.last()), static_cast<float>(measured.last()));
    bench.Shoot("log-plot");
    bench.Click("liveLog");
    QVERIFY(bench.Find("logMeasurements") == nullptr);
}

void TestPanelLog::AFileThatIsNoLogIsTold()
{
    PanelBench bench;
    bench.window.show();
    bench.Click("log");
    Open(bench, "Once upon a time\n");
    AWAIT(bench.Find("failure") != nullptr);
}

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    QApplication application(argc, argv);
    TestPanelLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_panellog.moc"
