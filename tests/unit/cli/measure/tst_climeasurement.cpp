#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include "cli/measure/measurementview.h"
#include "support/eventschema.h"
#include "support/redirection.h"

using VesmarClient::Error;
using VesmarClient::Failure;
using VesmarClient::Gap;
using VesmarClient::Outcome;
using VesmarClient::Phase;
using VesmarClient::Reading;
using namespace std::chrono_literals;

namespace
{

Reading ReadingOf(const char* name, double value, bool isPresent = true)
{
    Reading reading;
    reading.name = QString::fromLatin1(name);
    reading.value = value;
    reading.isPresent = isPresent;
    return reading;
}

const QVector<Reading> Readings{ReadingOf("current", 0.25), ReadingOf("maximum voltage", 0, false)};

QDateTime Noon()
{
    return {QDate(2024, 5, 6), QTime(12, 0, 0, 7), Qt::OffsetFromUTC, 7200};
}

QString Shown(QString text)
{
    return text.replace(QChar::Nbsp, QLatin1Char('_'));
}

Failure FailureNamed(const char* name, Error code = Error::NoErrors)
{
    return {
        code, QString::fromLatin1(name), QStringLiteral("This happened."), {}, QStringLiteral("Do that.")};
}

Cli::MeasurementEnd EndWith(Outcome outcome, bool isStopConfirmed, const Failure& failure = {})
{
    return {outcome, isStopConfirmed, failure, {}, Phase::Running};
}

Cli::MeasurementEnd EndWithGaps(bool isStopConfirmed)
{
    Cli::MeasurementEnd end = EndWith(Outcome::Interrupted, isStopConfirmed);
    end.failure = isStopConfirmed ? Failure() : FailureNamed("stop-not-confirmed");
    end.gaps = {Gap{1250, 3210}, Gap{9000, 1000}};
    return end;
}

Cli::MeasurementEnd LostWhilePreparing()
{
    Cli::MeasurementEnd end = EndWith(Outcome::LinkLost, true, FailureNamed("link-lost"));
    end.lastPhase = Phase::Preparing;
    return end;
}

using Form = Cli::MeasurementView::Form;

/// What the view shows where the output is no terminal.
template <typename Show>
QByteArray Written(const VesmarClient::Settings& settings, Form form, const Show& show)
{
    QTemporaryFile file;
    QTemporaryFile errors;
    if (!file.open() || !errors.open()) {
        return "no temporary file";
    }
    {
        const Redirection output(STDOUT_FILENO, file.handle());
        const Redirection errorOutput(STDERR_FILENO, errors.handle());
        Cli::MeasurementView view(settings, form, nullptr);
        show(view);
        view.Finish(0);
    }
    file.seek(0);
    return file.readAll();
}

} // namespace

Q_DECLARE_METATYPE(Cli::MeasurementEnd)

class TestCliMeasurement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Live();
    void Lines();
    void PhasesHaveNames();
    void ReadingAsJson();
    void Csv();
    void Table();
    void Ends_data();
    void Ends();
    void ResultAsJson();
    void DangerLastsUntilTheStop();
    void EachStatusIsToldOnce();
    void GapIsAnEvent();
    void FileIsOverwritten();
    void FileThatCannotBeWritten_data();
    void ReadingsAlone();
    void FileThatCannotBeWritten();
};

void TestCliMeasurement::Live()
{
    QCOMPARE(Shown(Cli::LiveLine({1300ms, 5000ms}, false, Cli::Listed(Readings))),
             QStringLiteral("___1.3_s_of_5_s [=====_______________]  current_0.25, maximum_voltage_-"));
    QCOMPARE(
        Shown(Cli::LiveLine({9000ms, 8500ms}, true, Cli::NoReading({0, 3999}))),
        QStringLiteral("___9.0_s_of_8.5_s [====================]  DANGEROUS_VOLTAGE  no reading for 3 s"));
    QCOMPARE(Shown(Cli::LiveLine({61000ms, std::nullopt}, false, QStringLiteral("running"))),
             QStringLiteral("__61.0_s  running"));
}

void TestCliMeasurement::Lines()
{
    QCOMPARE(Cli::TextLine(61000ms, false, Cli::Listed(Readings)),
             QByteArray("  61.0 s  current 0.25, maximum voltage -\n"));
    QCOMPARE(Cli::TextLine(100ms, true, QStringLiteral("x")), QByteArray("   0.1 s  DANGEROUS VOLTAGE  x\n"));
}

void TestCliMeasurement::PhasesHaveNames()
{
    QCOMPARE(Cli::PhaseName(Phase::AwaitingMains), QStringLiteral("waiting for a suitable mains voltage"));
    QCOMPARE(Cli::PhaseName(Phase::Confirming), QStringLiteral("waiting until the instrument has stopped"));
    QCOMPARE(Cli::PhaseName(Phase::Finished), QString());
}

void TestCliMeasurement::ReadingAsJson()
{
    QCOMPARE(
        Cli::ReadingJson(Noon(), 1500ms, Readings),
        QByteArray(R"({"elapsed":1.5,"event":"reading","readings":{"current":0.25,"maximum voltage":null},)"
                   R"("time":"2024-05-06T10:00:00.007Z"})"
                   "\n"));
}

/// A file of units changes neither the numbers of a file nor those of JSON.
void TestCliMeasurement::Csv()
{
    QVector<Reading> readings = Readings;
    readings[0].unit = QStringLiteral("A");
    readings[0].decimals = 1;
    QCOMPARE(Cli::CsvHeader(VesmarClient::Functions::find(VesmarClient::Function::ISUB)),
             QByteArray("time,elapsed,current,voltage\n"));
    QCOMPARE(Cli::CsvRow(Noon(), 1500ms, readings), QByteArray("2024-05-06T10:00:00.007Z,1.500,0.25,\n"));
    QCOMPARE(Cli::ResultText(readings.mid(0, 1), {}), QByteArray("  current           0.3 A\n"));
}

void TestCliMeasurement::Table()
{
    QCOMPARE(Cli::ResultText(Readings, {Gap{1250, 3210}}),
             QByteArray("  current           0.25\n"
                        "  maximum voltage   -\n"
                        "  no reading        for 3.2 s, after 1.3 s\n"));
}

void TestCliMeasurement::Ends_data()
{
    using Shown = Cli::Ending::Outcome;
    QTest::addColumn<Cli::MeasurementEnd>("end");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* name, const Cli::MeasurementEnd& end, int status, Shown outcome,
                        const char* reason, const QByteArray& message) {
        QTest::newRow(name) << end << status << static_cast<int>(outcome) << QString::fromLatin1(reason)
                            << QString::fromLatin1(message);
    };
    const QByteArray stopped = " The instrument is confirmed to have stopped.";
    const QByteArray notStopped =
        " STOP NOT CONFIRMED: the instrument may still be running, and high voltage "
        "may be on. Switch it off at the instrument.";
    const Failure unconfirmed = FailureNamed("stop-not-confirmed");
    row("done", EndWith(Outcome::Completed, true), 0, Shown::Done, "", "Measurement it done." + stopped);
    row("done, stop not confirmed", EndWith(Outcome::Completed, false, unconfirmed), 6, Shown::Failed,
        "stop-not-confirmed", "Measurement it done." + notStopped);
    row("gaps", EndWithGaps(true), 8, Shown::Interrupted, "gap",
        "Measurement it done, but for 4.2 s there was no reading." + stopped);
    row("gaps, stop not confirmed", EndWithGaps(false), 6, Shown::Failed, "stop-not-confirmed",
        "Measurement it done, but for 4.2 s there was no reading." + notStopped);
    row("aborted", EndWith(Outcome::Aborted, true), 5, Shown::Aborted, "",
        "Measurement it aborted." + stopped);
    row("aborted, stop not confirmed", EndWith(Outcome::Aborted, false, unconfirmed), 6, Shown::Aborted,
        "stop-not-confirmed", "Measurement it aborted." + notStopped);
    row("an error", EndWith(Outcome::Failed, true, Failure::ofError(Error::PrepareFailed)), 4, Shown::Failed,
        "",
        "Measurement it failed: PrepareFailed (200): the instrument could not prepare the measurement." +
            stopped);
    row("an error, stop not confirmed",
        EndWith(Outcome::Failed, false, FailureNamed("stop-not-confirmed", Error::PrepareFailed)), 6,
        Shown::Failed, "stop-not-confirmed",
        "Measurement it failed: PrepareFailed (200): the instrument could not prepare the measurement." +
            notStopped);
    row("a reason", EndWith(Outcome::Failed, true, FailureNamed("not-prepared")), 4, Shown::Failed,
        "not-prepared", "Measurement it failed: This happened. Do that." + stopped);
    row("stop not confirmed", EndWith(Outcome::Failed, false, unconfirmed), 6, Shown::Failed,
        "stop-not-confirmed", "Measurement it failed." + notStopped);
    row("another function", EndWith(Outcome::Failed, false, FailureNamed("other-function")), 6, Shown::Failed,
        "other-function", "Measurement it failed: This happened. Do that." + notStopped);
    row("link lost while preparing", LostWhilePreparing(), 7, Shown::LinkLost, "link-lost",
        "Link lost, or the measurement refused by the instrument, while preparing. It is back, and the "
        "instrument "
        "is confirmed to have stopped.");
    row("link lost in the middle", EndWith(Outcome::LinkLost, true, FailureNamed("link-lost")), 7,
        Shown::LinkLost, "link-lost",
        "Link lost in the middle of the measurement. It is back, and the instrument is confirmed to have "
        "stopped.");
    row("link lost for good", EndWith(Outcome::LinkLost, false, unconfirmed), 7, Shown::LinkLost, "link-lost",
        "Link lost, the state of the instrument is unknown: it may still be running, and high voltage may be "
        "on. "
        "Switch it off at the instrument.");
}

void TestCliMeasurement::Ends()
{
    QFETCH(const Cli::MeasurementEnd, end);
    const Cli::Ending ending = Cli::EndingOf(QStringLiteral("it"), end);
    QTEST(ending.status, "status");
    QTEST(static_cast<int>(ending.outcome), "outcome");
    QTEST(ending.reason, "reason");
    QTEST(ending.message, "message");
    QCOMPARE(static_cast<int>(ending.error), static_cast<int>(end.failure.code));
}

void TestCliMeasurement::ResultAsJson()
{
    const QString function = QStringLiteral("it");
    const auto line = [&function](const Cli::MeasurementEnd& end, const QVector<Reading>& readings) {
        return Cli::ResultLine(Noon(), Cli::EndingOf(function, end),
                               Cli::ResultFields(function, end, readings));
    };
    const QByteArray aborted = line(EndWith(Outcome::Aborted, true), {});
    CheckRun(aborted, 5);
    QVERIFY2(aborted.contains(R"("function":"it","gaps":[],)"), aborted.constData());
    QVERIFY2(aborted.contains(R"("readings":null,)"), aborted.constData());
    const QByteArray interrupted = line(EndWithGaps(true), Readings);
    CheckRun(interrupted, 8);
    QVERIFY2(interrupted.contains(R"("gaps":[{"begin":1.25,"duration":3.21},{"begin":9,"duration":1}])"),
             interrupted.constData());
    QVERIFY2(interrupted.contains(R"("readings":{"current":0.25,"maximum voltage":null})"),
             interrupted.constData());
}

void TestCliMeasurement::DangerLastsUntilTheStop()
{
    const auto lineIn = [](const char* function, Phase phase) {
        return Written(VesmarClient::Settings(function), Form::Text, [phase](Cli::MeasurementView& view) {
            view.ShowPhase(phase);
            view.ShowGap({0, 1000});
        });
    };
    QVERIFY(!lineIn("hv", Phase::Preparing).contains("DANGEROUS VOLTAGE"));
    for (const Phase phase : {Phase::Starting, Phase::Running, Phase::Stopping, Phase::Confirming}) {
        QVERIFY(lineIn("hv", phase).contains("DANGEROUS VOLTAGE"));
    }
    QVERIFY(!lineIn("rpe", Phase::Running).contains("DANGEROUS VOLTAGE"));
}

void TestCliMeasurement::EachStatusIsToldOnce()
{
    const QByteArray shown =
        Written(VesmarClient::Settings("it"), Form::Json, [](Cli::MeasurementView& view) {
            for (const Phase phase : {Phase::Preparing, Phase::Starting, Phase::Running}) {
                view.ShowPhase(phase);
            }
            const VesmarClient::Result result(VesmarClient::Function::IT, Readings, Noon());
            view.ShowResult(result);
            view.ShowResult(result);
            view.ShowPhase(Phase::Stopping);
            view.ShowResult(result);
            view.ShowPhase(Phase::Confirming);
            QCOMPARE(view.ShowEnd(EndWith(Outcome::Completed, true)), 0);
        });
    CheckRun(shown, 0);
    QByteArrayList statuses;
    for (const QByteArray& line : shown.split('\n')) {
        const int name = line.indexOf(R"("value":{"name":")");
        if (name >= 0) {
            statuses.append(line.mid(name + 17).split('"').first());
        }
    }
    QCOMPARE(statuses, QByteArrayList({"Preparing", "Prepared", "Starting", "Running", "Measuring",
                                       "Stopping", "Stopped"}));
}

void TestCliMeasurement::GapIsAnEvent()
{
    const QByteArray shown =
        Written(VesmarClient::Settings("it"), Form::Json, [](Cli::MeasurementView& view) {
            view.ShowGap({1250, 1001});
        });
    QVERIFY2(shown.startsWith(R"({"begin":1.25,"duration":1.001,"event":"gap","time":)"), shown.constData());
    QCOMPARE(ProblemOfEvent(shown), QString());
}

void TestCliMeasurement::FileIsOverwritten()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("readings.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("something that is longer than all that follows\n");
    file.close();
    Cli::ReadingsFile readings(file.fileName(), "a,b\n");
    readings.Write("1,2\n");
    QCOMPARE(readings.Problem(), QString());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("a,b\n1,2\n"));
}

void TestCliMeasurement::FileThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("problem");
    QTest::newRow("folder missing") << QStringLiteral("/nonexistent/x") << QStringLiteral("No such file");
    QTest::newRow("a folder") << QStringLiteral("/") << QStringLiteral("directory");
    QTest::newRow("a device") << QStringLiteral("/dev/null") << QStringLiteral("not a regular file");
}

/// The standard output has the readings alone.
void TestCliMeasurement::ReadingsAlone()
{
    const QByteArray shown = Written(VesmarClient::Settings("it"), Form::Csv, [](Cli::MeasurementView& view) {
        view.ShowPhase(VesmarClient::Phase::Running);
        view.ShowResult({VesmarClient::Function::IT, Readings, Noon()});
    });
    const QByteArrayList lines = shown.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines.first().contains(",current"), shown.constData());
    QVERIFY2(lines.at(1).contains(",0.25"), shown.constData());
    QCOMPARE(lines.last(), QByteArray());
}

void TestCliMeasurement::FileThatCannotBeWritten()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    const Cli::ReadingsFile file(path, "a\n");
    QVERIFY2(file.Problem().contains(problem), qPrintable(file.Problem()));
}

QTEST_GUILESS_MAIN(TestCliMeasurement)
#include "tst_climeasurement.moc"
