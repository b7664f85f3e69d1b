#include <QDateTime>
#include <QJsonArray>
#include <QTemporaryFile>

#include "integration/measurerun.h"

namespace
{

constexpr int HighVoltage = 9;

struct Function {
    const char* name;
    const char* options;
    int number;           ///< What the instrument reports.
    const char* prepare;  ///< The prepare request without its checksum.
    QStringList readings; ///< In the order of JSON, which is that of the alphabet.
    bool isContinuous = true;
};

const std::vector<Function>& Functions()
{
    static const QString Current = QStringLiteral("current");
    static const QString Voltage = QStringLiteral("voltage");
    static const QString Resistance = QStringLiteral("resistance");
    static const std::vector<Function> All{
        {"rln",
         "",
         1,
         "5001ff0100ffffffff",
         {QStringLiteral("ISUB current"), QStringLiteral("ISUB voltage"), Current, Resistance, Voltage},
         false},
        {"iec",
         "",
         1,
         "5001ff0200ffffffff",
         {QStringLiteral("ULN"), QStringLiteral("delay"), QStringLiteral("result"), QStringLiteral("step"),
          Voltage},
         false},
        {"rpe", "--time 1 --current 3 --method 2", 2, "5002050700ffffffff", {Current, Resistance, Voltage}},
        {"riso", "--time 1 --voltage 2 --mode 4", 3, "5003051200ffffffff", {Current, Resistance, Voltage}},
        {"isub", "--time 1", 4, "5004050000ffffffff", {Current, Voltage}},
        {"ipe", "--time 1 --mode 2 --configuration 1", 5, "5005050100ffffffff", {Current, Voltage}},
        {"idelta", "--time 1 --mode 1 --configuration 2", 6, "5006050400ffffffff", {Current, Voltage}},
        {"it", "--time 1 --configuration 2", 7, "5007050400ffffffff", {Current}},
        {"power",
         "--time 1 --mode 2",
         8,
         "5008050100ffffffff",
         {QStringLiteral("apparent power"), Current, QStringLiteral("energy"), QStringLiteral("power"),
          QStringLiteral("power factor"), Voltage}},
        {"hv",
         "--time 1 --time-offset 0.5 --mode 2",
         9,
         "5009050500ffffffff",
         {QStringLiteral("PWM"), QStringLiteral("ULN"), Current, QStringLiteral("maximum voltage"),
          QStringLiteral("primary voltage"), Voltage}},
    };
    return All;
}

/// The line of readings carries a number for each name.
void CheckReadings(const QByteArray& line, const QStringList& names)
{
    const QJsonObject readings = PartOf(ObjectOf(line), "readings");
    QCOMPARE(readings.keys(), names);
    for (const QJsonValue& reading : readings) {
        QVERIFY2(reading.isDouble(), line.constData());
    }
}

/// Events with their times, and one result behind them.
void CheckEvents(const QByteArrayList& lines, const Function& function)
{
    for (const QByteArray& line : lines.mid(0, lines.size() - 1)) {
        const QString time = ValueOf(ObjectOf(line), "time").toString();
        QVERIFY2(QDateTime::fromString(time, Qt::ISODateWithMs).isValid(), line.constData());
        QVERIFY2(QByteArrayList({"status", "reading"}).contains(EventOf(line)), line.constData());
    }
    const QByteArrayList readings = EventsOf(lines, "reading");
    QVERIFY2(function.isContinuous ? readings.size() > 1 : readings.size() == 1, function.name);
    for (const QByteArray& reading : readings) {
        CheckReadings(reading, function.readings);
    }
}

void CheckResult(const QByteArray& line, const Function& function)
{
    const QJsonObject result = ObjectOf(line);
    QCOMPARE(EventOf(line), QByteArray("result"));
    QCOMPARE(TextOf(result, "function"), QByteArray(function.name));
    QCOMPARE(TextOf(result, "outcome"), QByteArray("done"));
    QCOMPARE(NumberOf(result, "status"), 0);
    QCOMPARE(ValueOf(result, "stopped").toBool(), true);
    QVERIFY2(ValueOf(result, "error").isNull(), line.constData());
    CheckReadings(line, function.readings);
}

/// The function was prepared as asked for, and it has ended.
void CheckLog(const MeasureRun& run, const Function& function)
{
    int prepared = 0;
    for (const QByteArray& entry : run.Log()) {
        prepared += entry.startsWith("50") ? 1 : 0;
        QVERIFY2(!entry.startsWith("50") || entry.startsWith(function.prepare), entry.constData());
    }
    QCOMPARE(prepared, 1);
    QVERIFY2(run.HasStopped(function.number), run.Log().join('\n').constData());
}

void CheckFunction(MeasureRun& run, const Function& function)
{
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors().startsWith("vesmar: A DANGEROUS VOLTAGE is present"),
             function.number == HighVoltage);
    QCOMPARE(run->Errors().count('\n'), function.number == HighVoltage ? 1 : 0);
    const QByteArrayList lines = run->Lines();
    QVERIFY2(!lines.isEmpty(), function.name);
    CheckEvents(lines, function);
    CheckResult(lines.last(), function);
    CheckLog(run, function);
}

/// `vesmar measure`, with a simulated instrument of its own, in front of a terminal. The words go before
/// both.
class Terminal
{
public:
    Terminal(const QString& arguments, Time time, const QString& before = {})
        : _run(QStringLiteral("script"),
               {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"),
                before + QStringLiteral("exec '%1' run -- '%2' measure %3")
                             .arg(SimulatorIn(time), QStringLiteral(VESMAR_PROGRAM), arguments),
                QStringLiteral("/dev/null")})
    {
    }

    ProgramRun* operator->() { return &_run; }

private:
    ProgramRun _run;
};

} // namespace

class TestMeasureProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryFunctionBringsItsReadings();
    void ReadingsAreShownAsText();
    void ReadingsAreWrittenToAFile();
    void FileThatCannotBeWrittenIsBadUse();
    void FileThatIsFullFailsTheMeasurement();
    void FailureOfTheInstrumentIsReported_data();
    void FailureOfTheInstrumentIsReported();
    void FailureIsFollowedByAdvice();
    void FunctionThatTheInstrumentGivesUpIsReported_data();
    void FunctionThatTheInstrumentGivesUpIsReported();
    void GapInTheReadingsIsTold();
    void NarrowTerminalShowsAllReadings_data();
    void NarrowTerminalShowsAllReadings();
    void AbortLeavesNoOldReadingsBehind();
    void SignalAbortsTheMeasurement();
    void EndOfTheReaderAbortsTheMeasurement();
    void OutputThatCannotBeWrittenAbortsTheMeasurement();
    void EndOfTheTerminalAbortsTheMeasurement();
    void UnconfirmedStopIsReported();
    void UnpluggedInstrumentLosesTheLink();
};

void TestMeasureProgram::EveryFunctionBringsItsReadings()
{
    CheckSideBySide(
        Functions(),
        [](const Function& function) {
            return std::make_unique<MeasureRun>(
                QStringLiteral("%1 --json %2")
                    .arg(QLatin1String(function.name), QLatin1String(function.options)));
        },
        CheckFunction, [](const Function& function) { return function.name; });
}

void TestMeasureProgram::ReadingsAreShownAsText()
{
    MeasureRun run(QStringLiteral("isub --time 1"));
    run->VerifySuccess();
    QByteArrayList lines = run->Lines();
    QVERIFY2(lines.size() > 4, run->Output().constData());
    const QByteArrayList end = lines.mid(lines.size() - 3);
    QCOMPARE(end.at(0), QByteArray("Measurement isub done. The instrument is confirmed to have stopped."));
    const QRegularExpression reading(
        QStringLiteral("^ *\\d+\\.\\d s  current ([-0-9.e]+), voltage ([-0-9.e]+)$"));
    QRegularExpressionMatch match;
    for (const QByteArray& line : lines.mid(0, lines.size() - 3)) {
        match = reading.match(QString::fromUtf8(line));
        QVERIFY2(match.hasMatch(), line.constData());
    }
    QCOMPARE(end.at(1), "  current           " + match.captured(1).toUtf8());
    QCOMPARE(end.at(2), "  voltage           " + match.captured(2).toUtf8());
}

void TestMeasureProgram::ReadingsAreWrittenToAFile()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("readings.csv")));
    MeasureRun run(QStringLiteral("riso --time 1 --json --csv '%1'").arg(file.fileName()));
    QCOMPARE(run->Finish(), 0);
    const QByteArrayList readings = EventsOf(run->Lines(), "reading");
    QVERIFY(readings.size() > 1);

    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList rows = file.readAll().split('\n');
    QCOMPARE(rows.first(), QByteArray("time,elapsed,resistance,voltage,current"));
    QCOMPARE(rows.last(), QByteArray());
    QCOMPARE(rows.size(), readings.size() + 2);
    for (int i = 0; i < readings.size(); ++i) {
        const QByteArrayList fields = rows.at(i + 1).split(',');
        QCOMPARE(fields.size(), 5);
        const QJsonObject event = ObjectOf(readings.at(i));
        const QJsonObject values = PartOf(event, "readings");
        QCOMPARE(fields.at(0), TextOf(event, "time"));
        QVERIFY(fields.at(1).toDouble() >= rows.at(i).split(',').at(1).toDouble()); // The header's is 0.
        QCOMPARE(fields.at(2).toDouble(), ValueOf(values, "resistance").toDouble());
        QCOMPARE(fields.at(3).toDouble(), ValueOf(values, "voltage").toDouble());
        QCOMPARE(fields.at(4).toDouble(), ValueOf(values, "current").toDouble());
    }
}

void TestMeasureProgram::FileThatCannotBeWrittenIsBadUse()
{
    MeasureRun run(QStringLiteral("rpe --csv /nowhere/readings"));
    QCOMPARE(run->Finish(), 1);
    QCOMPARE(run->Output(), QByteArray());
    QVERIFY2(run->Errors().startsWith("vesmar: ") && run->Errors().contains("/nowhere/readings"),
             run->Errors().constData());
    QCOMPARE(run.Log(), QByteArrayList()); // Nothing was sent.
}

void TestMeasureProgram::FileThatIsFullFailsTheMeasurement()
{
    const QTemporaryDir folder;
    const QString command =
        QStringLiteral("trap '' XFSZ; ulimit -f 1; exec \"$0\" measure it --time 6 --json --csv '%1'")
            .arg(folder.filePath(QStringLiteral("readings.csv")));
    ProgramRun run(QStringLiteral(SIMULATOR_PROGRAM),
                   {QStringLiteral("run"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                    command, QStringLiteral(VESMAR_PROGRAM)});
    const int status = run.Finish();
    const QJsonObject result = ObjectOf(run.Lines().last());
    const bool hasGap = !ValueOf(result, "gaps").toArray().isEmpty(); // busy machines have some; told first
    QCOMPARE(status, hasGap ? 8 : 3);
    QCOMPARE(TextOf(result, "outcome"), QByteArray(hasGap ? "interrupted" : "failed"));
    QCOMPARE(TextOf(result, "reason"), QByteArray(hasGap ? "gap" : "file-not-written"));
    QVERIFY(ValueOf(result, "stopped").toBool());
    VERIFY_CONTAINS(run.Errors(), " Not every reading was kept: cannot write the file ");
}

void TestMeasureProgram::FailureOfTheInstrumentIsReported_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("number");
    QTest::newRow("prepare-error") << "rpe"
                                   << "PrepareFailed" << 200;
    QTest::newRow("start-error") << "power"
                                 << "StartFailed" << 201;
    QTest::newRow("falls-back") << "hv"
                                << "MeasurementFailed" << 202;
    QTest::newRow("ends-without-result") << "rln"
                                         << "MeasurementFailed" << 202;
}

void TestMeasureProgram::FailureOfTheInstrumentIsReported()
{
    QFETCH(QString, function);
    QFETCH(QString, error);
    QFETCH(int, number);
    MeasureRun run(function + QStringLiteral(" --json"), InScenario(QTest::currentDataTag()));
    QCOMPARE(run->Finish(), 4);
    const QString named = QStringLiteral("%1 (%2): the ").arg(error).arg(number);
    VERIFY_CONTAINS(run->Errors(), named.toLatin1());
    VERIFY_CONTAINS(run->Errors(), "confirmed to have stopped");
    QCOMPARE(run->Errors().count('\n'), function == QLatin1String("hv") ? 2 : 1); // A warning of the voltage.

    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("failed"));
    QCOMPARE(NumberOf(result, "status"), 4);
    const QJsonObject shown = PartOf(result, "error");
    QCOMPARE(ValueOf(shown, "name").toString(), error);
    QCOMPARE(NumberOf(shown, "number"), number);
    VERIFY_CONTAINS(run.Log().join('\n'), " deselected");
}

void TestMeasureProgram::FailureIsFollowedByAdvice()
{
    MeasureRun run(QStringLiteral("power"), InScenario("start-error"));
    QCOMPARE(run->Finish(), 4);
    QCOMPARE(run->Errors(),
             QByteArray(
                 "vesmar: Measurement power failed: StartFailed (201): the instrument could not start the "
                 "measurement. The instrument is confirmed to have stopped.\n"
                 "  Likely causes   the instrument fell back while it started, such as for a missing mains "
                 "voltage\n"
                 "                  the instrument refused the start\n"
                 "  Next step       Check the mains supply and the connection of the appliance, then prepare "
                 "and start again.\n"));
}

void TestMeasureProgram::FunctionThatTheInstrumentGivesUpIsReported_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("restart") << QStringLiteral("6:restart 0");
    QTest::newRow("another function") << QStringLiteral("6:function 3");
}

/// What is read afterwards, such as the mains, must not look like readings of the function. The one reading
/// that was asked for before can come afterwards.
void TestMeasureProgram::FunctionThatTheInstrumentGivesUpIsReported()
{
    QFETCH(const QString, command);
    MeasureRun run(QStringLiteral("rpe --time 600 --json"), {QStringLiteral("--at"), command});
    QCOMPARE(run->Finish(), 4);
    QVERIFY(run.Log().contains("function 2 running"));
    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "reason"), QByteArray("function-lost"));
    QCOMPARE(ValueOf(result, "stopped").toBool(), true);
    QVERIFY(ValueOf(result, "readings").isNull());
    constexpr double MostOhm = 1; // and the mains have 230 V
    int othersCount = 0;
    for (const QByteArray& line : run->Lines()) {
        const QJsonObject readings = PartOf(ObjectOf(line), "readings");
        othersCount += ValueOf(readings, "resistance").toDouble() > MostOhm ? 1 : 0;
    }
    QVERIFY2(othersCount <= 1, run->Output().constData());
}

/// One request for a reading gets no answer, and the driver repeats it after 4 s and a pause.
void TestMeasureProgram::GapInTheReadingsIsTold()
{
    QTemporaryFile faults;
    QVERIFY(faults.open());
    faults.write(R"({"faults": [{"fault": "silent", "when": {"request": "e", "from": 10}, "count": 1}]})");
    faults.close();
    const QStringList options{QStringLiteral("--faults"), faults.fileName()};
    MeasureRun text(QStringLiteral("it --time 7"), options);
    MeasureRun json(QStringLiteral("it --time 7 --json"), options);
    QCOMPARE(text->Finish(), 8);
    VERIFY_CONTAINS(text->Output(), " s  no reading for 3 s\n");
    VERIFY_CONTAINS(text->Output(), "\n  no reading        for 4.");
    VERIFY_BEGINS(text->Errors(), "vesmar: Measurement it done, but for 4.");

    QCOMPARE(json->Finish(), 8);
    const QByteArrayList gaps = EventsOf(json->Lines(), "gap");
    QCOMPARE(gaps.size(), 5); // As it grew, and its end.
    const QJsonObject result = ResultOf(json);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("interrupted"));
    QCOMPARE(TextOf(result, "reason"), QByteArray("gap"));
    QVERIFY(ValueOf(result, "stopped").toBool());
    const QJsonArray told = ValueOf(result, "gaps").toArray();
    QCOMPARE(told.size(), 1);
    const QJsonObject gap = told.first().toObject();
    QCOMPARE(ValueOf(gap, "duration"), ValueOf(ObjectOf(gaps.last()), "duration"));
    QVERIFY(ValueOf(gap, "duration").toDouble() > 4.2);
    QVERIFY(ValueOf(gap, "begin").toDouble() > 0.5);
}

void TestMeasureProgram::NarrowTerminalShowsAllReadings_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("60") << 60;
    QTest::newRow("30") << 30;
}

void TestMeasureProgram::NarrowTerminalShowsAllReadings()
{
    QFETCH(int, width);
    Terminal terminal(QStringLiteral("hv --time 1 2> /dev/null"), Time::Virtual,
                      QStringLiteral("stty cols %1 rows 24; ").arg(width));
    QCOMPARE(terminal->Finish(), 0);
    QString shown = QString::fromUtf8(terminal->Output());
    shown.truncate(shown.indexOf(QLatin1String("Measurement hv done")));
    const QStringList lines = shown.remove(QRegularExpression(QStringLiteral("\033\\[\\d*[A-Z]")))
                                  .split(QRegularExpression(QStringLiteral("[\r\n]+")), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        QVERIFY2(line.size() < width, qPrintable(line));
    }
    for (const char* name : {"maximum voltage", "voltage", "current", "ULN", "primary voltage", "PWM"}) {
        const QRegularExpression whole(QStringLiteral("(^|, |  )%1 [\\d.]+(,|$)").arg(QLatin1String(name)));
        QVERIFY2(!lines.filter(whole).isEmpty(), name);
    }
    QVERIFY(!lines.filter(QStringLiteral("DANGEROUS VOLTAGE")).isEmpty());
}

void TestMeasureProgram::AbortLeavesNoOldReadingsBehind()
{
    Terminal terminal(QStringLiteral("it --time 600"), Time::Real);
    AWAIT(terminal->Output().contains(" of 600 s ") && terminal->Output().contains("  current "));
    terminal->WriteLine("\003");
    QCOMPARE(terminal->Finish(), 5);
    const QByteArray shown = terminal->Output();
    const QByteArray after = shown.mid(shown.indexOf("vesmar: Aborting the measurement (signal 2)"));
    VERIFY_CONTAINS(after, " s  waiting until the instrument has stopped\033[J");
    QVERIFY2(!after.mid(after.indexOf("waiting until the instrument has stopped")).contains("current "),
             after.constData());
}

void TestMeasureProgram::SignalAbortsTheMeasurement()
{
    const QVector<int> signalNumbers{SIGINT, SIGTERM, SIGHUP};
    MeasureRuns runs; // side by side
    for (int i = 0; i < signalNumbers.size(); ++i) {
        runs.push_back(
            std::make_unique<MeasureRun>(QStringLiteral("hv --time 600"), QStringList(), Time::Real));
    }
    for (int i = 0; i < signalNumbers.size(); ++i) {
        MeasureRun& run = *runs.at(static_cast<size_t>(i));
        AWAIT(run.Log().contains("function 9 running"));
        QVERIFY(!run.Log().contains("function 9 stopped by request"));
        QVERIFY(run->Signal(signalNumbers.at(i)));
        QCOMPARE(run->Finish(), 5);
        VERIFY_CONTAINS(run->Errors(),
                        "Aborting the measurement (signal " + QByteArray::number(signalNumbers.at(i)) + ')');
        QVERIFY2(
            run->Errors().endsWith("Measurement hv aborted. The instrument is confirmed to have stopped.\n"),
            run->Errors().constData());
        QVERIFY2(run.Log().contains("function 9 stopped by request"), run.Log().join('\n').constData());
        QVERIFY2(run.HasStopped(9), run.Log().join('\n').constData());
    }
}

void TestMeasureProgram::EndOfTheReaderAbortsTheMeasurement()
{
    MeasureRun run(QStringLiteral("hv --time 600 | head -n 1"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Lines().size(), 1);
    VERIFY_CONTAINS(run->Errors(), "nobody reads the output");
    QVERIFY2(run.HasStopped(9), run.Log().join('\n').constData());
}

void TestMeasureProgram::OutputThatCannotBeWrittenAbortsTheMeasurement()
{
    MeasureRun run(QStringLiteral("hv --time 600 > /dev/full"));
    QCOMPARE(run->Finish(), 3);
    VERIFY_CONTAINS(run->Errors(), "(cannot write the output: No space left on device)");
    QVERIFY2(run.HasStopped(9), run.Log().join('\n').constData());
}

/// The program of the terminal is killed, and the output with it.
void TestMeasureProgram::EndOfTheTerminalAbortsTheMeasurement()
{
    const QTemporaryDir folder;
    const QString logPath = folder.filePath(QStringLiteral("log"));
    const QString command =
        QStringLiteral("exec '%1' run --log '%2' -- '%3' measure hv --time 600")
            .arg(QStringLiteral(SIMULATOR_PROGRAM), logPath, QStringLiteral(VESMAR_PROGRAM));
    ProgramRun terminal(QStringLiteral("script"), {QStringLiteral("--quiet"), QStringLiteral("--command"),
                                                   command, QStringLiteral("/dev/null")});
    AWAIT(LogIn(logPath).contains("function 9 running"));
    QVERIFY(!LogIn(logPath).contains("function 9 stopped by request"));
    QVERIFY(terminal.Signal(SIGKILL));
    AWAIT(HasFunctionStopped(LogIn(logPath), 9));
    QVERIFY(LogIn(logPath).contains("function 9 stopped by request"));
}

void TestMeasureProgram::UnconfirmedStopIsReported()
{
    MeasureRun run(QStringLiteral("hv --time 1 --time-offset 0 --stop-timeout 0.1"),
                   InScenario("runs-on-after-stop"));
    QCOMPARE(run->Finish(), 6);
    VERIFY_CONTAINS(run->Errors(), "STOP NOT CONFIRMED: the instrument may still be running, and high "
                                   "voltage may be on. Switch it off at the instrument.");
    QVERIFY2(!run.HasStopped(9), run.Log().join('\n').constData());
}

void TestMeasureProgram::UnpluggedInstrumentLosesTheLink()
{
    MeasureRun run(QStringLiteral("hv --time 600 --stop-timeout 1 --json"),
                   Words(QStringLiteral("--at 8:unplug")));
    QCOMPARE(run->Finish(), 7);
    QVERIFY(run.Log().contains("function 9 running"));
    const QByteArray sentence =
        "Link lost, the state of the instrument is unknown: it may still be running, and high voltage may be "
        "on. Switch it off at the instrument.";
    VERIFY_ENDS(run->Errors(), "vesmar: " + sentence + '\n');
    const QJsonObject result = ResultOf(run);
    QCOMPARE(TextOf(result, "outcome"), QByteArray("link-lost"));
    QCOMPARE(NumberOf(result, "status"), 7);
    QCOMPARE(ValueOf(result, "stopped").toBool(true), false);
    QCOMPARE(TextOf(result, "message"), sentence);
}

QTEST_GUILESS_MAIN(TestMeasureProgram)
#include "tst_measureprogram.moc"
