#include <CLI/CLI.hpp>

#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <limits>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rlnresults.h>

#include "cli/measure/measurementformat.h"
#include "cli/measure/measurementview.h"
#include "cli/measure/readingsfile.h"
#include "support/eventschema.h"
#include "support/redirection.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using VesmarClient::DriverReading;
using VesmarClient::MeasurementPicture;
using VesmarClient::MeasurementSession;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(Cli::Ending)

namespace
{

const QVector<DriverReading> Readings{{"current", 0.25F}, {"voltage", 3.4028235e38F}};

const MeasurementPicture Idle{Error::NoErrors,
                              MeasurementState::Idle,
                              FunctionState::Unknown,
                              MeasurementType::Monitoring,
                              0,
                              false,
                              false};

QDateTime Noon()
{
    return {QDate(2024, 5, 6), QTime(12, 0, 0, 7), Qt::OffsetFromUTC, 7200};
}

QByteArray Written(const QVector<DriverReading>& readings)
{
    return Cli::ReadingLine(0ms, readings).mid(10);
}

/// The session when the instrument is confirmed to have stopped, or when the confirmation does not come in
/// time.
MeasurementSession Left(MeasurementSession session, bool isConfirmed)
{
    if (isConfirmed) {
        session.IdentityRead(Idle);
    } else {
        session.TimeOver();
    }
    return session;
}

MeasurementPicture At(MeasurementState status, MeasurementType function = MeasurementType::IT)
{
    return {Error::NoErrors, status, FunctionState::Prepared, function, 0, false, true};
}

/// A session that is being prepared, or started.
MeasurementSession Begun(MeasurementState status)
{
    MeasurementSession session(MeasurementType::IT, false, 5);
    session.Begin(Idle);
    if (status == MeasurementState::Starting) {
        session.Observe(At(MeasurementState::Prepared));
    }
    return session;
}

MeasurementSession Aborted(bool isConfirmed)
{
    MeasurementSession session = Begun(MeasurementState::Preparing);
    session.Abort();
    return Left(session, isConfirmed);
}

MeasurementSession Failed()
{
    MeasurementSession session = Begun(MeasurementState::Preparing);
    MeasurementPicture picture = At(MeasurementState::Idle);
    picture.error = Error::PrepareFailed;
    session.Observe(picture);
    return Left(session, true);
}

/// A session whose link was lost, and may be back.
MeasurementSession LinkLost(MeasurementState status, bool isBack)
{
    MeasurementSession session = Begun(status);
    session.Observe(Idle);
    return Left(session, isBack);
}

/// A session that is not prepared, or not started, in time.
MeasurementSession TooSlow(MeasurementState status)
{
    MeasurementSession session = Begun(status);
    session.TimeOver();
    return Left(session, true);
}

/// A single measurement that has run, with its result or without.
MeasurementSession Run(bool hasResult, bool isConfirmed)
{
    MeasurementSession session(MeasurementType::RLN, true, std::nullopt);
    session.Begin(Idle);
    session.Observe(At(MeasurementState::Prepared, MeasurementType::RLN));
    session.Observe(At(MeasurementState::Running, MeasurementType::RLN));
    MeasurementPicture stopped = At(MeasurementState::Stopped, MeasurementType::Monitoring);
    stopped.hasResult = hasResult;
    session.Observe(stopped);
    return Left(session, isConfirmed);
}

/// A session whose function the instrument gave up for another one.
MeasurementSession GivenUp()
{
    MeasurementSession session = Begun(MeasurementState::Starting);
    session.Observe(At(MeasurementState::Measuring, MeasurementType::RPE));
    return Left(session, true);
}

/// A session that waits in vain for another function to end.
MeasurementSession Busy()
{
    MeasurementSession session(MeasurementType::IT, false, 5);
    MeasurementPicture picture = Idle;
    picture.function = MeasurementType::RISO;
    session.Begin(picture);
    session.TimeOver();
    return session;
}

const QString Function = QStringLiteral("it");

Cli::Ending EndOf(const MeasurementSession& session, Error presentError = Error::NoErrors)
{
    return Cli::EndingOf(Function, session, presentError);
}

QByteArray ResultOf(const MeasurementSession& session, const QVector<DriverReading>& readings)
{
    const QByteArray line = Cli::ResultLine(Noon(), EndOf(session),
                                            Cli::ResultFields(Function, session.IsStopConfirmed(), readings));
    CheckRun(line, EndOf(session).status);
    return line;
}

} // namespace

class TestCliMeasurement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NamedReadings();
    void EveryFunctionNamesItsReadings();
    void Live();
    void LiveWithoutATime();
    void LiveIsCutToTheWidth();
    void LiveWithAPhase();
    void PhasesHaveNames();
    void ReadingAsJson();
    void Csv();
    void Table();
    void Ends_data();
    void Ends();
    void ErrorOfALostLink();
    void ResultAsJson();
    void FileIsOverwritten();
    void FileThatCannotBeWritten_data();
    void FileThatCannotBeWritten();
    void ResultIsTheLastLine();
};

void TestCliMeasurement::NamedReadings()
{
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::RLNResults(1, 2, 3, 4, 5))),
             QByteArray("resistance 1, voltage 2, current 3, ISUB voltage 4, ISUB current 5\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::IECResults(2.9F, 2, 3, 4, 250))),
             QByteArray("result 2, voltage 2, ULN 3, step 4, delay 0.25\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::HVTestResults(1, 2, 3, 4, 5, 50))),
             QByteArray("maximum voltage 1, voltage 2, current 3, ULN 4, primary voltage 5, PWM 0.5\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::POWERResults(1, 2, 3, 4, 5, 6))),
             QByteArray("energy 1, power 2, current 3, voltage 4, power factor 5, apparent power 6\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::ITResults(0.5F))), QByteArray("current 0.5\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::RCDResults(12.5F, 0.25F, 3.4028235e38F))),
             QByteArray("Re 12.5, Ia 0.25, Ta -\n"));
    QCOMPARE(Written(VesmarClient::ReadingsOf(Vesmar::RCDIECResults(0.25F, 0.5F))),
             QByteArray("Ia 0.25, Ta 0.5\n"));
}

void TestCliMeasurement::EveryFunctionNamesItsReadings()
{
    for (int function = 1; function <= 11; ++function) {
        QVERIFY2(!VesmarClient::ReadingNames(static_cast<MeasurementType>(function)).isEmpty(),
                 qPrintable(QString::number(function)));
    }
    QVERIFY(VesmarClient::ReadingNames(MeasurementType::None).isEmpty());
}

void TestCliMeasurement::Live()
{
    QCOMPARE(Cli::LiveLine({1300ms, 5000ms}, Readings, 200),
             QStringLiteral("   1.3 s of 5 s [=====               ]  current 0.25, voltage -"));
    QCOMPARE(Cli::LiveLine({9000ms, 8500ms}, {}, 200),
             QStringLiteral("   9.0 s of 8.5 s [====================]  "));
}

void TestCliMeasurement::LiveWithoutATime()
{
    QCOMPARE(Cli::LiveLine({61000ms, std::nullopt}, Readings, 200),
             QStringLiteral("  61.0 s  current 0.25, voltage -"));
}

void TestCliMeasurement::LiveIsCutToTheWidth()
{
    QCOMPARE(Cli::LiveLine({61000ms, std::nullopt}, Readings, 17), QStringLiteral("  61.0 s  current"));
}

void TestCliMeasurement::LiveWithAPhase()
{
    QCOMPARE(Cli::PhaseLine(61000ms, QStringLiteral("running")), QStringLiteral("  61.0 s  running"));
}

void TestCliMeasurement::PhasesHaveNames()
{
    using Phase = MeasurementSession::Phase;
    QCOMPARE(Cli::PhaseName(Phase::AwaitingMains), QStringLiteral("waiting for a suitable mains voltage"));
    QCOMPARE(Cli::PhaseName(Phase::Leaving), QStringLiteral("waiting until the instrument has stopped"));
    QCOMPARE(Cli::PhaseName(Phase::Ended), QString());
}

void TestCliMeasurement::ReadingAsJson()
{
    QCOMPARE(Cli::ReadingJson(Noon(), 1500ms, Readings),
             QByteArray(R"({"elapsed":1.5,"event":"reading","readings":{"current":0.25,"voltage":null},)"
                        R"("time":"2024-05-06T10:00:00.007Z"})"
                        "\n"));
}

void TestCliMeasurement::Csv()
{
    QCOMPARE(Cli::CsvHeader(MeasurementType::ISUB), QByteArray("time,elapsed,current,voltage\n"));
    QCOMPARE(Cli::CsvRow(Noon(), 1500ms, Readings), QByteArray("2024-05-06T10:00:00.007Z,1.500,0.25,\n"));
}

void TestCliMeasurement::Table()
{
    QCOMPARE(Cli::ResultText(Readings), QByteArray("  current           0.25\n  voltage           -\n"));
}

void TestCliMeasurement::Ends_data()
{
    using Outcome = Cli::Ending::Outcome;
    QTest::addColumn<Cli::Ending>("ending");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* name, const MeasurementSession& session, int status, Outcome outcome,
                        const char* reason, const char* message) {
        QTest::newRow(name) << EndOf(session) << status << static_cast<int>(outcome)
                            << QString::fromLatin1(reason) << QString::fromLatin1(message);
    };
    row("done", Run(true, true), 0, Outcome::Done, "",
        "Measurement it done. The instrument is confirmed to have stopped.");
    row("done, stop not confirmed", Run(true, false), 6, Outcome::Failed, "stop-not-confirmed",
        "Measurement it done. STOP NOT CONFIRMED: the instrument may still be running, and high voltage may "
        "be on. "
        "Switch it off at the instrument.");
    row("aborted", Aborted(true), 5, Outcome::Aborted, "",
        "Measurement it aborted. The instrument is confirmed to have stopped.");
    row("aborted, stop not confirmed", Aborted(false), 6, Outcome::Aborted, "stop-not-confirmed",
        "Measurement it aborted. STOP NOT CONFIRMED: the instrument may still be running, and high voltage "
        "may be "
        "on. Switch it off at the instrument.");
    row("failed", Failed(), 4, Outcome::Failed, "",
        "Measurement it failed: PrepareFailed (200): the instrument could not prepare the measurement. The "
        "instrument is confirmed to have stopped.");
    row("not prepared", TooSlow(MeasurementState::Preparing), 4, Outcome::Failed, "not-prepared",
        "Measurement it failed: the instrument did not prepare it in time. The instrument is confirmed to "
        "have "
        "stopped.");
    row("not started", TooSlow(MeasurementState::Starting), 4, Outcome::Failed, "not-started",
        "Measurement it failed: the instrument did not start it in time. The instrument is confirmed to have "
        "stopped.");
    row("no result", Run(false, true), 4, Outcome::Failed, "no-result",
        "Measurement it failed: it ended early or without a reading, and no error was seen. The instrument "
        "is "
        "confirmed to have stopped.");
    row("given up", GivenUp(), 4, Outcome::Failed, "function-lost",
        "Measurement it failed: the instrument gave it up in the middle, for another function or for a "
        "restart; "
        "measure again. The instrument is confirmed to have stopped.");
    row("busy", Busy(), 6, Outcome::Failed, "other-function",
        "Measurement it failed: the instrument is busy with a function that was not started here, and does "
        "not "
        "stop it. STOP NOT CONFIRMED: the instrument may still be running, and high voltage may be on. "
        "Switch it "
        "off at the instrument.");
    row("link lost while preparing", LinkLost(MeasurementState::Preparing, true), 7, Outcome::LinkLost,
        "link-lost",
        "Link lost, or the measurement refused by the instrument, while preparing. It is back, and the "
        "instrument "
        "is confirmed to have stopped.");
    row("link lost in the middle", LinkLost(MeasurementState::Starting, true), 7, Outcome::LinkLost,
        "link-lost",
        "Link lost in the middle of the measurement. It is back, and the instrument is confirmed to have "
        "stopped.");
    row("link lost for good", LinkLost(MeasurementState::Starting, false), 7, Outcome::LinkLost, "link-lost",
        "Link lost, the state of the instrument is unknown: it may still be running, and high voltage may be "
        "on. "
        "Switch it off at the instrument.");
}

void TestCliMeasurement::Ends()
{
    QFETCH(const Cli::Ending, ending);
    QTEST(ending.status, "status");
    QTEST(static_cast<int>(ending.outcome), "outcome");
    QTEST(ending.reason, "reason");
    QTEST(ending.message, "message");
}

/// The result has the library's final error of the link, once there is one.
void TestCliMeasurement::ErrorOfALostLink()
{
    const MeasurementSession lost = LinkLost(MeasurementState::Starting, false);
    QVERIFY(EndOf(lost, Error::NoResponse).error == Error::NoResponse);
    QVERIFY(EndOf(lost, Error::InvalidResponse).error == Error::InvalidResponse);
    QVERIFY(EndOf(lost, Error::CommunicationRecovery).error == Error::NoErrors);
    QVERIFY(EndOf(lost, Error::DeviceError3).error == Error::NoErrors);
    QVERIFY(EndOf(Aborted(true), Error::NoResponse).error == Error::NoErrors);
    QVERIFY(EndOf(Failed(), Error::NoResponse).error == Error::PrepareFailed);
}

void TestCliMeasurement::ResultAsJson()
{
    QCOMPARE(
        ResultOf(Failed(), {{"current", 0.25F}}),
        QByteArray(R"({"error":{"causes":["the settings do not suit the instrument or what is connected",)"
                   R"("the instrument found a fault while it prepared, such as a missing protective )"
                   R"(conductor"],"meaning":"the instrument could not prepare the measurement",)"
                   R"("name":"PrepareFailed","nextStep":"Check the settings and the connection of the )"
                   R"(appliance, then prepare again.","number":200},"event":"result","function":"it",)"
                   R"("message":"Measurement it failed: PrepareFailed (200): the instrument could not )"
                   R"(prepare the measurement. The instrument is confirmed to have stopped.",)"
                   R"("outcome":"failed","readings":{"current":0.25},"reason":null,"status":4,)"
                   R"("stopped":true,"time":"2024-05-06T10:00:00.007Z"})"
                   "\n"));
    QCOMPARE(ResultOf(Aborted(true), {}),
             QByteArray(R"({"error":null,"event":"result","function":"it",)"
                        R"("message":"Measurement it aborted. The instrument is confirmed to have stopped.",)"
                        R"("outcome":"aborted","readings":null,"reason":null,"status":5,"stopped":true,)"
                        R"("time":"2024-05-06T10:00:00.007Z"})"
                        "\n"));
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

void TestCliMeasurement::FileThatCannotBeWritten()
{
    QFETCH(QString, path);
    QFETCH(QString, problem);
    const Cli::ReadingsFile file(path, "a\n");
    QVERIFY2(file.Problem().contains(problem), qPrintable(file.Problem()));
}

/// A change that was on its way when the measurement ended may still arrive.
void TestCliMeasurement::ResultIsTheLastLine()
{
    CLI::App app;
    const Cli::MeasureFunctions functions(app);
    app.parse("it");
    const MeasurementSession session(Vesmar::MeasurementType::IT, false,
                                     5); // its stop is not confirmed
    QTemporaryFile file;
    QTemporaryFile errors;
    QVERIFY(file.open() && errors.open());
    {
        const Redirection output(STDOUT_FILENO, file.handle());
        const Redirection errorOutput(STDERR_FILENO, errors.handle());
        Cli::MeasurementView view(*functions.Chosen(), true, nullptr);
        const auto showAll = [&view] {
            view.ShowStatus(Vesmar::MeasurementState::Stopped);
            view.ShowError(Vesmar::Error::NoErrors);
            view.ShowResults(Vesmar::ITResults(0.25F));
        };
        showAll();
        QCOMPARE(view.ShowEnd(session, Vesmar::Error::NoErrors), 6);
        showAll();
        view.Finish();
    }
    file.seek(0);
    const QByteArray shown = file.readAll();
    QCOMPARE(shown.count('\n'), 4);
    QCOMPARE(ProblemOfRun(shown, 6), QString());
}

QTEST_GUILESS_MAIN(TestCliMeasurement)
#include "tst_climeasurement.moc"
