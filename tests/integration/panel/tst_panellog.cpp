#include <memory>

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
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
    void ALogMayCrossMidnight();
    void AFileThatIsNoLogIsTold();

private:
    /// Measures for so many seconds, and returns the log of that.
    static QByteArray Recorded(PanelBench& bench, int seconds);
    /// The measurement that the log has, as it is plotted.
    static Panel::RecordPointer Plotted(PanelBench& bench);
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

QByteArray TestPanelLog::Recorded(PanelBench& bench, int seconds)
{
    const auto lines = std::make_shared<QByteArray>(); // what is under way comes after the disconnection
    connect(&bench.session.traceLines(), &Panel::TraceLines::line, &bench.window,
            [lines](const QByteArray& line) { *lines += line + '\n'; });
    bench.Connect();
    bench.session.measure(VesmarClient::Settings("rpe").set("time", seconds));
    [&] { AWAIT(bench.session.measurement() == nullptr); }();
    bench.session.traceLines().disconnect(&bench.window);
    return *lines;
}

Panel::RecordPointer TestPanelLog::Plotted(PanelBench& bench)
{
    auto* const measurements = bench.Find<QComboBox>("logMeasurements");
    measurements->setFocus();
    bench.PressKey(Qt::Key_Down);
    const auto* const plot = bench.Find<Panel::ReadingPlot>("logPlot");
    return measurements->count() == 2 && plot != nullptr ? plot->record() : Panel::RecordPointer();
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
    PanelBench bench;
    const QByteArray lines = Recorded(bench, 3);
    const QVector<double> measured = bench.session.record()->values.first();
    bench.Click("log");
    Open(bench, lines);
    AWAIT(bench.Find("logMeasurements") != nullptr);
    QVERIFY(Rows(bench) > 20);
    bench.Shoot("log-recorded");
    const Panel::RecordPointer record = Plotted(bench);
    QVERIFY(record);
    QVERIFY(bench.Find<QComboBox>("logMeasurements")->currentText().contains(record->function().title));
    const QVector<double> plotted = record->values.first();
    QVERIFY2(plotted.size() >= measured.size() && measured.size() > 10,
             qPrintable(QString::number(plotted.size())));
    QCOMPARE(static_cast<float>(plotted.last()), static_cast<float>(measured.last()));
    bench.Shoot("log-plot");
    bench.Click("liveLog");
    QVERIFY(bench.Find("logMeasurements") == nullptr);
}

/// A log has times of day alone: the clock of this one is set so that midnight is in the middle.
void TestPanelLog::ALogMayCrossMidnight()
{
    PanelBench bench;
    QString lines = QString::fromUtf8(Recorded(bench, 2));
    const auto& measured = *bench.session.record();
    const auto half = static_cast<qint64>(measured.times.last() * 500);
    const int shift = measured.begun.addMSecs(half).toUTC().time().msecsTo(QTime(23, 59, 59, 999));
    const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d{3}"));
    for (auto match = time.match(lines); match.hasMatch(); match = time.match(lines, match.capturedEnd())) {
        const QTime shifted = QTime::fromString(match.captured()).addMSecs(shift);
        lines.replace(match.capturedStart(), match.capturedLength(),
                      shifted.toString(QStringLiteral("HH:mm:ss.zzz")));
    }
    bench.Click("log");
    Open(bench, lines.toUtf8());
    AWAIT(bench.Find("logMeasurements") != nullptr);
    const Panel::RecordPointer plotted = Plotted(bench);
    QVERIFY(plotted);
    QVERIFY(std::is_sorted(plotted->times.cbegin(), plotted->times.cend()));
    QVERIFY(plotted->times.last() < 60);
    QVERIFY(lines.contains(QStringLiteral("23:59:59.")) && lines.contains(QStringLiteral("00:00:00.")));
}

void TestPanelLog::AFileThatIsNoLogIsTold()
{
    PanelBench bench;
    bench.window.show();
    bench.Click("log");
    Open(bench, "Once upon a time\n");
    AWAIT(bench.Find("failure") != nullptr);
}

QTEST_MAIN(TestPanelLog)

#include "tst_panellog.moc"
