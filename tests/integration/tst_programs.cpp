#include <QDir>
#include <QFileInfo>

#include "integration/programrun.h"

namespace
{

const QString SimulatorProgram = QStringLiteral(SIMULATOR_PROGRAM);
const QString VesmarProgram = QStringLiteral(VESMAR_PROGRAM);
constexpr char SerialDevice[] = "/dev/ttycommunication";

/// The arguments by which the simulator runs `vesmar` with its instrument.
QStringList SimulatedVesmar(const char* arguments, const QStringList& simulatorOptions = {})
{
    return QStringList{QStringLiteral("run")} + simulatorOptions + QStringList{QStringLiteral("--")} +
           QStringList{VesmarProgram} + Words(QLatin1String(arguments));
}

/// Without the language's locale, which a machine need not have.
QProcessEnvironment InLanguage(const QString& language)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("LANGUAGE"), language);
    return environment;
}

/// `vesmar` in the language, with the path of a log for LOG among the arguments.
std::unique_ptr<ProgramRun> RunInLanguage(const QString& language, QString arguments,
                                          const QTemporaryDir& folder)
{
    QFile log(folder.filePath(QStringLiteral("log")));
    log.open(QIODevice::WriteOnly);
    log.write("20:51:40.316  73f44e 00fed10e[4b]\n20:51:40.416  73f44e \n");
    log.close();
    arguments.replace(QStringLiteral("LOG"), log.fileName());
    return std::make_unique<ProgramRun>(VesmarProgram, Words(arguments), InLanguage(language));
}

QJsonValue At(const QJsonObject& object, const char* outer, const char* inner)
{
    return ValueOf(PartOf(object, outer), inner);
}

/// The text behind the label.
QByteArray Shown(const QByteArrayList& lines, const QByteArray& label)
{
    for (const QByteArray& line : lines) {
        if (line.startsWith(label + ':')) {
            return line.mid(label.size() + 1).trimmed();
        }
    }
    return {};
}

/// The values that the property has had, as `monitor --json` shows them.
QVector<QJsonValue> ValuesOf(const char* property, const QByteArrayList& lines)
{
    QVector<QJsonValue> values;
    for (const QByteArray& line : lines) {
        const QJsonObject change = ObjectOf(line);
        if (TextOf(change, "property") == property) {
            values.append(ValueOf(change, "value"));
        }
    }
    return values;
}

/// What `monitor --json` has shown, a word for each change that matters here: the error's number, or the name
/// of the property.
QByteArrayList Story(const QByteArrayList& lines)
{
    QByteArrayList story;
    for (const QByteArray& line : lines) {
        const QJsonObject change = ObjectOf(line);
        if (ValueOf(change, "event") != QLatin1String("change")) {
            continue;
        }
        const QJsonObject value = PartOf(change, "value");
        QByteArray word = TextOf(change, "property");
        if (word == "ErrorCode") {
            word = QByteArray::number(NumberOf(value, "number"));
        }
        if (!story.endsWith(word)) {
            story.append(word);
        }
    }
    return story;
}

/// The parts of the picture that every connection brings: identity, clock, readings.
bool HasPicture(const QByteArrayList& story)
{
    return story.contains("DeviceInformation") && story.contains("CurrentDateTime") &&
           story.contains("TestResults");
}

} // namespace

/// The programs as they are built.
class TestPrograms : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void InfoShowsIdentityAndClocks();
    void InfoAsJson();
    void InfoInUpdateMode();
    void InfoExplainsTheError();
    void FunctionThatNobodyAttendsIsTold_data();
    void FunctionThatNobodyAttendsIsTold();
    void StopProvesThatNothingRuns();
    void TerminalIsToldWhatIsAwaited();
    void MonitorShowsEveryChangeUntilItsTimeIsOver();
    void MonitorAsText();
    void MonitorEndsWithASignal_data();
    void MonitorEndsWithASignal();
    void MonitorEndsWithItsReader();
    void TraceOnlyWhenWanted();
    void TraceHasColoursOnATerminal_data();
    void TraceHasColoursOnATerminal();
    void OutputThatCannotBeWritten_data();
    void OutputThatCannotBeWritten();
    void OutputThatNobodyReads();
    void ReportHasWhatCanBeFoundOut();
    void ReportLeavesAFunctionThatNobodyAttends();
    void ReportWithoutAnInstrument();
    void DeviceMissing_data();
    void DeviceMissing();
    void LinkThatDoesNotComeUp_data();
    void LinkThatDoesNotComeUp();
    void ExitStatusIsPassedOn_data();
    void ExitStatusIsPassedOn();
    void TwoSideBySide();
    void BadUse_data();
    void BadUse();
    void BadUseOfAVerb_data();
    void BadUseOfAVerb();
    void LineIsSetUpAsTheInstrumentNeedsIt();
    void SignalEndsTheReadingOfALog_data();
    void SignalEndsTheReadingOfALog();
    void SignalEndsTheReadingBeforeAnExchange();
    void LanguageIsTheReaders_data();
    void LanguageIsTheReaders();
    void JsonIsTheSameInEveryLanguage_data();
    void JsonIsTheSameInEveryLanguage();
    void MonitorShowsTheLossAndTheReturn();
    void ProgramBesideAMeasurementIsRefused();
};

void TestPrograms::InfoShowsIdentityAndClocks()
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1); // The clock has no fractions.
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info"));
    run.VerifySuccess();

    const QByteArrayList lines = run.Lines();
    QCOMPARE(Shown(lines, "Device name"), QByteArray("PAT"));
    QCOMPARE(Shown(lines, "Device code"), QByteArray("410"));
    QCOMPARE(Shown(lines, "Serial number"), QByteArray("204815"));
    QCOMPARE(Shown(lines, "Version"), QByteArray("1.05"));
    QCOMPARE(Shown(lines, "Version code"), QByteArray("03"));
    QCOMPARE(Shown(lines, "Revision code"), QByteArray("02"));
    QCOMPARE(Shown(lines, "Build number"), QByteArray("2016"));
    QCOMPARE(Shown(lines, "Last calibrated"), QByteArray("2024-02-15 00:00:00"));
    QVERIFY(Shown(lines, "Mode").startsWith("Normal (0)"));
    QVERIFY(Shown(lines, "Error").startsWith("NoErrors (15)"));
    const QDateTime clock = QDateTime::fromString(QString::fromLatin1(Shown(lines, "Clock")),
                                                  QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    QVERIFY(before <= clock && clock <= QDateTime::currentDateTime());
}

void TestPrograms::InfoAsJson()
{
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info --json"));
    run.VerifySuccess();
    QCOMPARE(run.Lines().size(), 2);

    const QJsonObject info = ObjectOf(run.Lines().first());
    QCOMPARE(At(info, "DeviceInformation", "DeviceName").toString(), QStringLiteral("PAT"));
    QCOMPARE(At(info, "DeviceInformation", "SerialNumber").toString(), QStringLiteral("204815"));
    QCOMPARE(At(info, "DeviceInformation", "Version").toString(), QStringLiteral("1.05"));
    QCOMPARE(At(info, "DeviceInformation", "BuildNumber").toString(), QStringLiteral("2016"));
    QCOMPARE(TextOf(info, "CalibrationDateTime"), QByteArray("2024-02-15T00:00:00"));
    QVERIFY(QDateTime::fromString(info.value(QLatin1String("CurrentDateTime")).toString(), Qt::ISODate)
                .isValid());
    QCOMPARE(At(info, "TesterMode", "number").toInt(-1), 0);
    QCOMPARE(At(info, "ErrorCode", "number").toInt(-1), 15);
}

void TestPrograms::InfoInUpdateMode()
{
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info", AtOnce("mode 3")));
    QCOMPARE(run.Finish(), 3);
    QCOMPARE(Shown(run.Lines(), "Serial number"), QByteArray("204815"));
    VERIFY_CONTAINS(run.Errors(), "update mode");
}

void TestPrograms::InfoExplainsTheError()
{
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info", AtOnce("error 4")));
    QCOMPARE(run.Finish(), 0);
    QVERIFY2(
        run.Output().endsWith("Error:            DeviceError4 (4): the instrument reports its error 4\n"
                              "  Likely causes   the instrument has found something wrong with itself, its "
                              "supply or the connected appliance\n"
                              "  Next step       Look the number up in the instrument's own manual; restart "
                              "the instrument (vesmar restart) and see whether it comes back.\n"),
        run.Output().constData());
}

void TestPrograms::FunctionThatNobodyAttendsIsTold_data()
{
    QTest::addColumn<QString>("verb");
    QTest::newRow("info") << QStringLiteral("info");
    QTest::newRow("monitor") << QStringLiteral("monitor --for 2");
}

void TestPrograms::FunctionThatNobodyAttendsIsTold()
{
    QFETCH(QString, verb);
    ProgramRun run(SimulatorIn(Time::Virtual),
                   SimulatedVesmar(verb.toLatin1().constData(), AtOnce("function 9")));
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Errors(),
             QByteArray("vesmar: HVTest (9) is active at the instrument, Running (7), and no program attends "
                        "it: a dangerous voltage may be present. Keep away from the appliance. It is told to "
                        "stop; vesmar stop proves that it has.\n"
                        "vesmar: HVTest (9) is not active any more.\n"));
}

void TestPrograms::StopProvesThatNothingRuns()
{
    ProgramRun run(SimulatorIn(Time::Virtual), SimulatedVesmar("stop --json", AtOnce("function 9")));
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Lines().size(), 4); // found, ended, proved, done
    const QJsonObject stop = ObjectOf(run.Lines().at(2));
    QCOMPARE(TextOf(stop, "event"), QByteArray("stop"));
    QCOMPARE(NumberOf(PartOf(stop, "function"), "number"), 9);

    ProgramRun idle(SimulatorIn(Time::Virtual), SimulatedVesmar("stop"));
    idle.VerifySuccess();
    QCOMPARE(idle.Output(), QByteArray("Nothing runs at the instrument, which it confirms.\n"));
}

void TestPrograms::TerminalIsToldWhatIsAwaited()
{
    const QString command = QStringLiteral("'%1' run --scenario silent -- '%2' %3")
                                .arg(SimulatorIn(Time::Virtual), VesmarProgram);
    const auto shown = [&command](const char* verb) {
        ProgramRun terminal(QStringLiteral("script"),
                            {QStringLiteral("--quiet"), QStringLiteral("--command"),
                             command.arg(QLatin1String(verb)), QStringLiteral("/dev/null")});
        terminal.Finish();
        return terminal.Output();
    };
    VERIFY_CONTAINS(shown("info --timeout 1.5"), "Waiting for the instrument to answer, 1.5 s at the most.");
    VERIFY_CONTAINS(shown("doctor"), "Waiting for the answer to request 1 of 50.");
}

void TestPrograms::MonitorShowsEveryChangeUntilItsTimeIsOver()
{
    ProgramRun run(SimulatorIn(Time::Virtual), SimulatedVesmar("monitor --json --for 8", AtOnce("error 6")));
    run.VerifySuccess();

    const QByteArrayList lines = run.Lines();
    QCOMPARE(TextOf(ObjectOf(lines.last()), "message"), QByteArray("Monitored for the time given."));
    for (const QByteArray& line : lines) {
        const QString time = ObjectOf(line).value(QLatin1String("time")).toString();
        QVERIFY2(QDateTime::fromString(time, Qt::ISODateWithMs).isValid(), line.constData());
    }
    QCOMPARE(ValuesOf("CurrentDateTime", lines).size(), 1);
    QCOMPARE(NumberOf(ValuesOf("ErrorCode", lines).first().toObject(), "number"), 6);
    const QJsonObject identity = ValuesOf("DeviceInformation", lines).first().toObject();
    QCOMPARE(TextOf(identity, "SerialNumber"), QByteArray("204815"));
    const QVector<QJsonValue> results = ValuesOf("TestResults", lines);
    QVERIFY(results.size() >= 2);
    QVERIFY(results.at(0) != results.at(1));
    for (const QJsonValue& result : results) {
        const double voltage = At(result.toObject(), "readings", "ULN").toDouble();
        QVERIFY2(voltage > 200.0 && voltage < 260.0, qPrintable(QString::number(voltage)));
    }
}

void TestPrograms::MonitorAsText()
{
    ProgramRun run(SimulatorIn(Time::Virtual), SimulatedVesmar("monitor --for 5"));
    run.VerifySuccess();
    QVERIFY(!run.Lines().isEmpty());
    const QRegularExpression form(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} +[A-Za-z]+ +[^ ]"));
    for (const QByteArray& line : run.Lines()) {
        QVERIFY2(form.match(QString::fromUtf8(line)).hasMatch(), line.constData());
    }
    VERIFY_CONTAINS(run.Output(), "serial number 204815");
    VERIFY_CONTAINS(run.Output(), "ULN 2");
}

void TestPrograms::MonitorEndsWithASignal_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestPrograms::MonitorEndsWithASignal()
{
    QFETCH(int, signalNumber);
    ProgramRun run(SimulatorProgram, SimulatedVesmar("monitor"));
    AWAIT(run.Output().contains("DeviceInformation"));
    QVERIFY(run.IsRunning());
    QVERIFY(run.Signal(signalNumber));
    run.VerifySuccess();
}

void TestPrograms::MonitorEndsWithItsReader()
{
    const QStringList shell{QStringLiteral("run"),
                            QStringLiteral("--"),
                            QStringLiteral("sh"),
                            QStringLiteral("-c"),
                            QStringLiteral("\"$0\" monitor | head -n 1"),
                            VesmarProgram};
    ProgramRun run(SimulatorProgram, shell);
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Lines().size(), 1);
    QCOMPARE(run.Errors(), QByteArray());
}

void TestPrograms::TraceOnlyWhenWanted()
{
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info --trace"));
    QCOMPARE(run.Finish(), 0);
    const QByteArray trace = run.Errors();
    VERIFY_CONTAINS(trace, "\n<<<                              ENTERING INITIALIZATION STATE\n");
    VERIFY_CONTAINS(trace, "57122a");
    QVERIFY(!run.Output().contains('\033'));
    QCOMPARE(Shown(run.Lines(), "Serial number"), QByteArray("204815"));
}

/// The colours of the library are for a terminal alone.
void TestPrograms::TraceHasColoursOnATerminal_data()
{
    QTest::addColumn<bool>("hasColours");
    QTest::newRow("env -u NO_COLOR") << true;
    QTest::newRow("env NO_COLOR=1") << false;
}

void TestPrograms::TraceHasColoursOnATerminal()
{
    QFETCH(const bool, hasColours);
    const QString command =
        QStringLiteral("%1 %2 run -- %3 info --trace")
            .arg(QString::fromLatin1(QTest::currentDataTag()), SimulatorProgram, VesmarProgram);
    ProgramRun terminal(QStringLiteral("script"), {QStringLiteral("--quiet"), QStringLiteral("--command"),
                                                   command, QStringLiteral("/dev/null")});
    QCOMPARE(terminal.Finish(), 0);
    QCOMPARE(terminal.Output().contains("\033[0;34m<<<     "), hasColours);
    VERIFY_CONTAINS(terminal.Output(), "ENTERING INITIALIZATION STATE");
}

void TestPrograms::OutputThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char* arguments :
         {"--help", "--version", "measure hv --help", "explain", "measure it --csv -"}) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
    }
}

void TestPrograms::OutputThatCannotBeWritten()
{
    QFETCH(const QString, arguments);
    ProgramRun run(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("exec \"$0\" %1 > /dev/full").arg(arguments), VesmarProgram});
    QCOMPARE(run.Finish(), 3);
    QCOMPARE(run.Errors(), QByteArray("vesmar: cannot write the output: No space left on device\n"));
}

void TestPrograms::OutputThatNobodyReads()
{
    ProgramRun run(QStringLiteral("bash"),
                   {QStringLiteral("-c"),
                    QStringLiteral("exec > >(:); wait $!; exec \"$0\" measure it --csv -"), VesmarProgram});
    QCOMPARE(run.Finish(), 3);
    QCOMPARE(run.Errors(), QByteArray("vesmar: nobody reads the output\n"));
}

void TestPrograms::ReportHasWhatCanBeFoundOut()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report.txt"));
    const QByteArray arguments = "report " + path.toLocal8Bit();
    ProgramRun run(SimulatorProgram, SimulatedVesmar(arguments.constData()));
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Output(), "The report is in " + path.toLocal8Bit() + ".\n");
    const QByteArray report = ContentOf(path);
    // The doctor's status is 4 where the answers are late, as on a busy machine.
    const QRegularExpression form(
        QStringLiteral("\n== Versions ==\nvesmar .*\nQt .*\n== Doctor ==\n.*Exit status: [04]\n"
                       "\n== Instrument ==\n.*204815\n.*Exit status: 0\n"
                       "\n== Trace ==\n.*read version.*The log is decoded\\.\n"),
        QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(form.match(QString::fromUtf8(report)).hasMatch(), report.constData());
    ProgramRun again(SimulatorProgram, SimulatedVesmar((arguments + " --json").constData()));
    QCOMPARE(again.Finish(), 1);
    VERIFY_CONTAINS(again.Errors(), "is there already; name another file, or add --overwrite");
    QCOMPARE(ContentOf(path), report);
}

void TestPrograms::ReportLeavesAFunctionThatNobodyAttends()
{
    ProgramRun run(SimulatorProgram, SimulatedVesmar("report -", AtOnce("function 9")));
    QCOMPARE(run.Finish(), 0);
    VERIFY_ENDS(run.Output(), "\n== Instrument ==\nNot there: a function runs that no program attends, and "
                              "connecting would stop it.\n\n== Trace ==\nnothing\n");
}

void TestPrograms::ReportWithoutAnInstrument()
{
    if (QFileInfo::exists(QLatin1String(SerialDevice))) {
        QSKIP("This machine has such a serial device.");
    }
    ProgramRun run(VesmarProgram, Words(QStringLiteral("report - --log /no/log")));
    QCOMPARE(run.Finish(), 0);
    VERIFY_CONTAINS(run.Output(), "The serial device /dev/ttycommunication does not exist.");
    VERIFY_ENDS(run.Output(), "\n== Trace ==\nNot there: cannot read /no/log: No such file or directory\n");
}

void TestPrograms::DeviceMissing_data()
{
    QTest::addColumn<QString>("verb");
    QTest::newRow("info") << QStringLiteral("info");
    QTest::newRow("monitor") << QStringLiteral("monitor");
}

void TestPrograms::DeviceMissing()
{
    QFETCH(QString, verb);
    if (QFileInfo::exists(QLatin1String(SerialDevice))) {
        QSKIP("This machine has such a serial device.");
    }
    ProgramRun run(VesmarProgram, {verb});
    QCOMPARE(run.Finish(), 2);
    VERIFY_CONTAINS(run.Errors(), "The serial device /dev/ttycommunication does not exist.");
    QCOMPARE(run.Errors().count('\n'), 1);

    ProgramRun jsonRun(VesmarProgram, {verb, QStringLiteral("--json")});
    QCOMPARE(jsonRun.Finish(), 2);
    const QJsonObject failure = ObjectOf(jsonRun.Lines().last());
    QCOMPARE(TextOf(failure, "reason"), QByteArray("device-missing"));
    QCOMPARE(NumberOf(failure, "status"), 2);
    const QByteArray message = TextOf(failure, "message");
    QCOMPARE(jsonRun.Errors(), "vesmar: " + message + '\n');
}

void TestPrograms::LinkThatDoesNotComeUp_data()
{
    QTest::addColumn<QString>("scenario");
    QTest::addColumn<QByteArray>("sentence");
    QTest::newRow("silence") << QStringLiteral("silent") << QByteArray("did not answer within 1.5 s");
    QTest::newRow("damage") << QStringLiteral("bad-crc") << QByteArray("no proper answer within 1.5 s");
    QTest::newRow("refusal") << QStringLiteral("refuse") << QByteArray("no proper answer within 1.5 s");
    QTest::newRow("line hung up") << QStringLiteral("hang-up") << QByteArray("does not exist");
    QTest::newRow("half an answer") << QStringLiteral("truncated") << QByteArray("no proper answer");
}

void TestPrograms::LinkThatDoesNotComeUp()
{
    QFETCH(QString, scenario);
    QFETCH(QByteArray, sentence);
    for (const char* verb : {"info --timeout 1.5", "monitor --timeout 1.5"}) {
        ProgramRun run(SimulatorIn(Time::Virtual),
                       SimulatedVesmar(verb, {QStringLiteral("--scenario"), scenario}));
        QCOMPARE(run.Finish(), 2);
        VERIFY_CONTAINS(run.Errors(), sentence);
        QCOMPARE(run.Errors().count('\n'), 1);
    }
}

void TestPrograms::ExitStatusIsPassedOn_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::newRow("done") << QStringLiteral("--version") << 0;
    QTest::newRow("bad use") << QStringLiteral("--loud") << 1;
    QTest::newRow("no verb") << QString() << 1;
}

void TestPrograms::ExitStatusIsPassedOn()
{
    QFETCH(QString, arguments);
    QFETCH(int, status);
    ProgramRun run(SimulatorProgram, SimulatedVesmar(arguments.toLatin1().constData()));
    QCOMPARE(run.Finish(), status);
}

void TestPrograms::TwoSideBySide()
{
    ProgramRun first(SimulatorProgram, SimulatedVesmar("info --json", AtOnce("error 4")));
    ProgramRun second(SimulatorProgram, SimulatedVesmar("info --json", AtOnce("error 7")));
    QCOMPARE(first.Finish(), 0);
    QCOMPARE(second.Finish(), 0);
    QCOMPARE(At(ObjectOf(first.Lines().first()), "ErrorCode", "number").toInt(), 4);
    QCOMPARE(At(ObjectOf(second.Lines().first()), "ErrorCode", "number").toInt(), 7);
}

void TestPrograms::BadUse_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    for (const char* arguments : {"", "walk", "--loud", "info --loud", "info monitor", "info --timeout",
                                  "info --timeout 0", "info --timeout nan", "info --for 1",
                                  "monitor --for -1", "monitor --for soon", "monitor --for 1e99"}) {
        QTest::addRow("vesmar %s", arguments) << VesmarProgram << Words(QLatin1String(arguments));
    }
    for (const char* arguments :
         {"", "--loud", "run", "run --", "--link", "run --scenario loud -- true", "run --at 1 -- true",
          "run --seed many -- true", "run --restart-time -1 -- true"}) {
        QTest::addRow("vesmar-simulator %s", arguments)
            << SimulatorProgram << Words(QLatin1String(arguments));
    }
}

void TestPrograms::BadUse()
{
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    ProgramRun run(program, arguments);
    QCOMPARE(run.Finish(), 1);
    QCOMPARE(run.Output(), QByteArray());
    const QByteArrayList lines = run.Errors().split('\n');
    const QByteArray name = QFileInfo(program).fileName().toLatin1();
    QVERIFY2(lines.value(0).startsWith(name + ": "), run.Errors().constData());
    QVERIFY2(lines.value(1).startsWith("Usage: " + name), run.Errors().constData());
}

void TestPrograms::BadUseOfAVerb_data()
{
    QTest::addColumn<QByteArray>("complaint");
    const std::pair<const char*, const char*> uses[]{
        {"clock set soon",
         "\"soon\" is not a date and time from 2001-01-01T00:00:00 to 2099-12-31T23:59:59, nor now"},
        {"clock set 2000-12-31T23:59:59", "\"2000-12-31T23:59:59\" is not a date and time"},
        {"clock show", "not expected: show"},
        {"calibration set", "DATE is required"},
        {"calibration set 2026-02-29", "\"2026-02-29\" is not a date from 2001-01-01 to 2099-12-31"},
        {"calibration set now", "\"now\" is not a date"},
        {"restart --confirm-timeout never",
         "\"never\" is not a time from 0.1 to 86400 seconds, such as 90, 1.5min or 500ms"},
        {"measure",
         "no function given; it is one of rln, iec, rpe, riso, isub, ipe, idelta, it, power, hv, rcd, "
         "rcd-iec"},
        {"measure rcbo",
         "no function: \"rcbo\"; it is one of rln, iec, rpe, riso, isub, ipe, idelta, it, power, hv, "
         "rcd, rcd-iec"},
        {"measure rpe --current 4", "--current: \"4\" is not allowed. It is one of 0, 1, 2, 3."},
        {"measure rpe --method x", "--method: \"x\" is not allowed. It is one of 0, 1, 2, 3."},
        {"measure riso --voltage -1", "--voltage: \"-1\" is not allowed. It is one of 0, 1, 2, 3."},
        {"measure riso --mode 3", "--mode: \"3\" is not allowed. It is one of 1, 2, 4."},
        {"measure ipe --mode 0", "--mode: \"0\" is not allowed. It is one of 1, 2."},
        {"measure ipe --configuration 3", "--configuration: \"3\" is not allowed. It is one of 1, 2."},
        {"measure idelta --mode 3", "--mode: \"3\" is not allowed. It is one of 1, 2."},
        {"measure idelta --configuration 0", "--configuration: \"0\" is not allowed. It is one of 1, 2."},
        {"measure it --configuration 3", "--configuration: \"3\" is not allowed. It is one of 1, 2."},
        {"measure power --mode 3", "--mode: \"3\" is not allowed. It is one of 1, 2."},
        {"measure hv --mode 0", "--mode: \"0\" is not allowed. It is one of 1, 2."},
        {"measure hv --time-offset 601",
         "--time-offset: \"601\" is not allowed. It is a number from 0 to 600 s."},
        {"measure hv --time 0",
         "--time: \"0\" is not allowed. It is a whole number from 1 to 86400 s, or \"unlimited\"."},
        {"measure isub --time 86401",
         "--time: \"86401\" is not allowed. It is a whole number from 1 to 86400 s"},
        {"measure rln --time 5", "--time"},
        {"measure iec --csv readings", "iec gives a single result"},
        {"measure rpe --stop-timeout 0",
         "--stop-timeout: \"0\" is not a time from 0.1 to 86400 seconds, such as 90, 1.5min or 500ms"},
        {"measure rcd", "--mode: It has to be given. It is one of ub-re, ia-ta-1, ia-ta-2"},
        {"measure rcd --mode clean-up",
         "--mode: \"clean-up\" is not allowed. It is one of ub-re, ia-ta-1, ia-ta-2."},
        {"measure rcd --mode ub-re --re 5",
         "--re: \"5\" is not allowed. The test ub-re measures Re itself; leave this option out"},
        {"measure rcd --mode ia-ta-1 --re -1",
         "--re: \"-1\" is not allowed. It is a number from 0 to 1000000."},
        {"measure rcd --mode ia-ta-1 --phase 4", "--phase: \"4\" is not allowed. It is one of 0, 1, 2, 3."},
        {"measure rcd --mode ub-re --time 5", "there is no option --time"},
        {"measure rcd-iec --swap-ln", "--mode: It has to be given. It is one of ia-ta-1, ia-ta-2, clean-up"},
        {"measure rcd-iec --mode ia-ta-1 --csv readings", "--csv: rcd-iec gives a single result"},
        {"measure rcd-iec --mode clean-up --clean-up-time 0",
         "--clean-up-time: \"0\" is not allowed. It is a number from 0.1 to 86400 s."},
    };
    for (const auto& [arguments, complaint] : uses) {
        QTest::addRow("%s", arguments) << QByteArray(complaint);
    }
}

void TestPrograms::BadUseOfAVerb()
{
    QFETCH(const QByteArray, complaint);
    const QByteArray arguments = QTest::currentDataTag();
    VesmarRun run(QString::fromLatin1(arguments));
    QCOMPARE(run->Finish(), 1);
    QCOMPARE(run->Output(), QByteArray());
    const QByteArrayList lines = run->Errors().split('\n');
    QVERIFY2(lines.value(0).startsWith("vesmar: ") && lines.value(0).contains(complaint),
             run->Errors().constData());
    QVERIFY2(lines.value(1).startsWith("Usage: vesmar " + arguments.split(' ').first()),
             run->Errors().constData());
    QCOMPARE(run.Log(), QByteArrayList()); // Nothing was sent.
}

void TestPrograms::LineIsSetUpAsTheInstrumentNeedsIt()
{
    const QTemporaryDir folder;
    QFile log(folder.filePath(QStringLiteral("settings")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VESMAR_SIMULATOR_LINE_LOG"), log.fileName());
    ProgramRun run(SimulatorProgram, SimulatedVesmar("info"), environment);
    QCOMPARE(run.Finish(), 0);
    QVERIFY(log.open(QIODevice::ReadOnly));
    QCOMPARE(log.readAll(), QByteArray("iflag=0 oflag=0 cflag=19b2 lflag=0 vmin=0 vtime=0\n"));
}

void TestPrograms::SignalEndsTheReadingOfALog_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestPrograms::SignalEndsTheReadingOfALog()
{
    QFETCH(const int, signalNumber);
    const QTemporaryDir folder;
    ProgramRun run(QStringLiteral(VESMAR_PROGRAM),
                   {QStringLiteral("decode"), QStringLiteral("-"), QStringLiteral("--scenario"),
                    folder.filePath(QStringLiteral("recording"))});
    run.WriteLine("20:51:40.316  73f44e 00fed10e[4b]");
    run.WriteLine("20:51:40.416  73f44e 00fed10e[4b]");
    AWAIT(run.Output().count("read status") == 2);
    QVERIFY(run.Signal(signalNumber));
    run.VerifySuccess();
    VERIFY_CONTAINS(run.Output(), "\nSummary\n  exchanges          2\n");
    VERIFY_ENDS(run.Output(), "The log is decoded as far as it was read, and 2 entries are recorded.\n");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("recording")});
}

void TestPrograms::SignalEndsTheReadingBeforeAnExchange()
{
    const QTemporaryDir folder;
    const QString recording = folder.filePath(QStringLiteral("recording"));
    ProgramRun run(QStringLiteral(VESMAR_PROGRAM),
                   {QStringLiteral("decode"), QStringLiteral("-"), QStringLiteral("--scenario"), recording});
    run.WriteLine("20:51:40.212 Transciever::Open");
    AWAIT(run.Output().contains("Transciever::Open"));
    QVERIFY(run.Signal(SIGINT));
    QCOMPARE(run.Finish(), 1);
    QCOMPARE(run.Errors(), QByteArray("vesmar: the standard input: the reading was ended before an exchange "
                                      "with an instrument\n"));
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestPrograms::LanguageIsTheReaders_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("German") << "de"
                            << "explain 100" << QByteArray("Das Gerät antwortet nicht");
    QTest::newRow("of Austria") << "de_AT"
                                << "info --help" << QByteArray("Aufruf: vesmar info");
    QTest::newRow("of the decoder") << "de"
                                    << "decode LOG" << QByteArray("Status lesen");
    QTest::newRow("option without a value") << "de"
                                            << "info --timeout" << QByteArray("--timeout: ZEIT fehlt");
    QTest::newRow("positional") << "de"
                                << "decode" << QByteArray("DATEI ist erforderlich");
    QTest::newRow("positional in the help") << "de"
                                            << "clock set --help" << QByteArray("  ZEITPUNKT ");
    QTest::newRow("default in the help") << "de"
                                         << "measure rpe --help" << QByteArray("(sonst 5)");
    QTest::newRow("option given twice")
        << "de"
        << "info --timeout 1 --timeout 2" << QByteArray("--timeout ist mehrfach angegeben");
    QTest::newRow("English before German") << "en:de"
                                           << "explain 100" << QByteArray("does not answer");
    QTest::newRow("unknown") << "tlh"
                             << "explain 100" << QByteArray("does not answer");
}

void TestPrograms::LanguageIsTheReaders()
{
    QFETCH(const QString, arguments);
    QFETCH(const QByteArray, text);
    QFETCH(const QString, language);
    const QTemporaryDir folder;
    const auto run = RunInLanguage(language, arguments, folder);
    QVERIFY(run->Finish() >= 0);
    VERIFY_CONTAINS(run->Output() + run->Errors(), text);
}

void TestPrograms::JsonIsTheSameInEveryLanguage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::newRow("explain") << "explain --json";
    QTest::newRow("decode") << "--json decode LOG";
    QTest::newRow("doctor without a device") << "doctor --json";
}

void TestPrograms::JsonIsTheSameInEveryLanguage()
{
    QFETCH(const QString, arguments);
    const QTemporaryDir folder;
    QByteArrayList outputs;
    for (const char* const language : {"en", "de"}) {
        const auto run = RunInLanguage(QLatin1String(language), arguments, folder);
        QVERIFY(run->Finish() >= 0);
        static const QRegularExpression time(QStringLiteral("\"time\":\"[^\"]*\""));
        outputs.append(QString::fromUtf8(run->Output()).remove(time).toUtf8() + run->Errors());
    }
    QVERIFY(outputs.first().contains("\"event\":\"result\""));
    QCOMPARE(outputs.last(), outputs.first());
}

void TestPrograms::MonitorShowsTheLossAndTheReturn()
{
    VesmarRun run(QStringLiteral("monitor --json --for 60"),
                  Words(QStringLiteral("--at 3:unplug --at 36:plug")));
    run->VerifySuccess();
    const QByteArrayList story = Story(run->Lines());
    const int lost = story.indexOf("100");
    QVERIFY(story.indexOf("103") < lost);
    QVERIFY(HasPicture(story.mid(0, story.indexOf("103"))));
    QVERIFY(HasPicture(story.mid(lost)));
    QCOMPARE(story.at(lost + 1), QByteArray("15"));
    QCOMPARE(story.count("103"), 1);
    QCOMPARE(story.count("DeviceInformation"), 2);
}

/// The measurement is under way once it has printed something, and until it is told to end.
void TestPrograms::ProgramBesideAMeasurementIsRefused()
{
    const QString script = QStringLiteral(
        R"({ "$0" measure it --time unlimited & echo $!; wait; } | )"
        R"({ read -r measure; read -r line; "$0" info; echo "info: $?"; kill "$measure"; cat; })");
    ProgramRun run(QStringLiteral(SIMULATOR_PROGRAM),
                   {QStringLiteral("run"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                    script, QStringLiteral(VESMAR_PROGRAM)});
    QCOMPARE(run.Finish(), 0);
    VERIFY_CONTAINS(run.Output(), "info: 2\n");
    VERIFY_CONTAINS(run.Errors(), "The serial device /dev/ttycommunication is held by vesmar (process ");
    VERIFY_CONTAINS(run.Errors(), "The instrument is confirmed to have stopped.\n");
}

QTEST_GUILESS_MAIN(TestPrograms)
#include "tst_programs.moc"
