#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include "integration/client/clientbench.h"
#include "integration/rcdtrouble.h"
#include "simulator/faults/faultfile.h"
#include "support/wire.h"

using Simulator::Fault;
using VesmarClient::Error;
using VesmarClient::Outcome;
using VesmarClient::Phase;

Q_DECLARE_METATYPE(Simulator::Fault)

namespace
{

void AddTrouble(const std::vector<RcdTrouble>& rows)
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("isLate");
    for (const RcdTrouble& row : rows) {
        QTest::addRow("%s, %s", row.words, row.command)
            << QByteArray(row.words) << QByteArray(row.command) << row.error << row.isLate;
    }
}

QByteArray NameOf(int error, bool isLate)
{
    if (error != NoRcdError) {
        return VesmarClient::Failure::ofError(static_cast<Error>(error)).name.toLatin1();
    }
    return isLate ? "not-prepared" : "no-result";
}

/// The measurement of the present row fails, and the output is off at its end.
void VerifyFailure()
{
    QFETCH(const QByteArray, words);
    QFETCH(const QByteArray, command);
    QFETCH(const int, error);
    QFETCH(const bool, isLate);
    ClientBench bench;
    bench.Execute(command);
    bench.Connect();
    const Measured measured(bench, words);
    measured.VerifyEnd(Outcome::Failed, NameOf(error, isLate));
}

void AddFaults()
{
    QTest::addColumn<Fault>("fault");
    for (const Simulator::NamedFault& fault : Simulator::Faults) {
        const bool isALoss = fault.fault != Fault::None && fault.fault != Fault::Slow;
        if (isALoss) {
            QTest::newRow(fault.name) << fault.fault;
        }
    }
}

} // namespace

/// What the command line survives, survived by the client: after every end the output is off.
class TestClientFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FunctionFails_data();
    void FunctionFails() { VerifyFailure(); }
    void ObjectUnderTestFails_data() { AddTrouble(RcdCheckFailures()); }
    void ObjectUnderTestFails() { VerifyFailure(); }
    void PreparationFails_data() { AddTrouble(RcdPreparationFailures()); }
    void PreparationFails() { VerifyFailure(); }
    void RunFails_data() { AddTrouble(RcdRunFailures()); }
    void RunFails() { VerifyFailure(); }
    void TroubleThatEndsIsOvercome_data() { AddTrouble(RcdTroubleThatEnds()); }
    void TroubleThatEndsIsOvercome();
    void TestIsAborted_data();
    void TestIsAborted();
    void FunctionIsGivenUp_data();
    void FunctionIsGivenUp();
    void EveryScenarioFileIsSurvived_data();
    void EveryScenarioFileIsSurvived();
    void LinkIsLostAndBack_data() { AddFaults(); }
    void LinkIsLostAndBack();
    void LinkIsLostForGood_data() { AddFaults(); }
    void LinkIsLostForGood();
    void StopThatDoesNotStopIsTold();
    void ErrorLeftBehindByAGoodTestIsNoFailure();
};

void TestClientFaults::FunctionFails_data()
{
    AddTrouble({{"rpe", "scenario prepare-error", 200},
                {"rpe", "scenario never-prepared", NoRcdError, true},
                {"power", "scenario start-error", 201},
                {"hv", "scenario falls-back", 202},
                {"rln", "scenario ends-without-result", 202},
                {"hv", "error 6", 6}});
}

void TestClientFaults::TroubleThatEndsIsOvercome()
{
    QFETCH(const QByteArray, words);
    QFETCH(const QByteArray, command);
    ClientBench bench;
    bench.Execute(command);
    bench.Connect();
    const Measured measured(bench, words);
    measured.VerifyEnd(Outcome::Completed, "");
}

void TestClientFaults::TestIsAborted_data()
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("moment");
    for (const RcdInterruption& row : RcdInterruptions()) {
        QTest::addRow("%s, %s, %s", row.words, row.command, row.moment)
            << QByteArray(row.words) << QByteArray(row.command) << QByteArray(row.moment);
    }
}

void TestClientFaults::TestIsAborted()
{
    QFETCH(const QByteArray, words);
    QFETCH(const QByteArray, command);
    QFETCH(const QByteArray, moment);
    ClientBench bench;
    bench.Execute(command);
    bench.Connect();
    const Measured measured(bench, words);
    AWAIT(bench.simulator.Log().contains(moment));
    measured->abort();
    measured.VerifyAbort();
}

void TestClientFaults::FunctionIsGivenUp_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("restart") << QByteArray("restart 0");
    QTest::newRow("another function") << QByteArray("function 3");
}

/// What is read afterwards, such as the mains, must not look like readings of the function. The one reading
/// that was asked for before can come afterwards.
void TestClientFaults::FunctionIsGivenUp()
{
    QFETCH(const QByteArray, command);
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "rpe --time 600");
    AWAIT(measured.results.size() > 2);
    bench.Execute(command);
    measured.VerifyEnd(Outcome::Failed, "function-lost");
    QVERIFY(measured->latest().isEmpty());
    constexpr double MostOhm = 1; // and the mains have 230 V
    int othersCount = 0;
    for (const VesmarClient::Result& result : measured.results) {
        othersCount += result.reading(QStringLiteral("resistance")).value > MostOhm ? 1 : 0;
    }
    QVERIFY(othersCount <= 1);
}

void TestClientFaults::EveryScenarioFileIsSurvived_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(SCENARIO_FOLDER));
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
    }
}

/// The comment of a file names the measurement that it is for. The others disturb any.
void TestClientFaults::EveryScenarioFileIsSurvived()
{
    QFETCH(const QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    const QString comment =
        QJsonDocument::fromJson(content).object().value(QLatin1String("comment")).toString();
    const int words = comment.indexOf(QLatin1String("vesmar measure "));
    const bool isForAll = words < 0;
    ClientBench bench;
    bench.simulator.AddFaults(Simulator::ParseFaults(content));
    bench.Connect();
    const Measured measured(bench, isForAll ? "rpe --time 3" : comment.mid(words + 15).toLatin1());
    measured.AwaitEnd();
    QCOMPARE(measured->failure().name == QStringLiteral("stop-not-confirmed"), !measured->isStopConfirmed());
    QVERIFY(measured->isStopConfirmed() ? measured.wasOff : measured->outcome() == Outcome::LinkLost);
    const int error = QFileInfo(path).fileName().left(3).toInt();
    QVERIFY(isForAll || static_cast<int>(measured->failure().code) == error);
    bench.simulator.ClearFaults();
    AWAIT(bench.IsOff());
}

void TestClientFaults::LinkIsLostAndBack()
{
    QFETCH(const Fault, fault);
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time 600");
    AWAIT(measured.results.size() > 2);
    bench.simulator.SetFault(fault);
    measured.AwaitPhase(Phase::Confirming);
    bench.Plug();
    measured.VerifyEnd(Outcome::LinkLost, "link-lost");
    QCOMPARE(measured->gaps().size(), 1);
}

void TestClientFaults::LinkIsLostForGood()
{
    QFETCH(const Fault, fault);
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time 600");
    AWAIT(measured.results.size() > 2);
    bench.simulator.SetFault(fault);
    measured.AwaitEnd();
    QCOMPARE(measured->outcome(), Outcome::LinkLost);
    QCOMPARE(measured->failure().name, QStringLiteral("stop-not-confirmed"));
    QVERIFY(!measured->isStopConfirmed());
    bench.Plug();
    AWAIT(bench.IsOff());
}

void TestClientFaults::StopThatDoesNotStopIsTold()
{
    Simulator::InstrumentOptions options;
    options.model.functionTimings.runOn = std::chrono::minutes(1);
    ClientBench bench(options);
    bench.Execute("scenario runs-on-after-stop");
    bench.Connect();
    const Measured measured(bench, "hv --time 1 --time-offset 0");
    measured.AwaitEnd();
    QCOMPARE(measured->outcome(), Outcome::Completed);
    QCOMPARE(measured->failure().name, QStringLiteral("stop-not-confirmed"));
    QVERIFY(!measured->isStopConfirmed());
    QVERIFY(!measured.wasOff);
    AWAIT(bench.IsOff());
}

/// The mains come to suit the test, and the library leaves its error in place until the next ordinary status.
void TestClientFaults::ErrorLeftBehindByAGoodTestIsNoFailure()
{
    ClientBench bench;
    bench.Execute("scenario rcd-check 10");
    bench.Connect();
    const Measured measured(bench, "rcd-iec --mode ia-ta-1");
    measured.AwaitPhase(Phase::AwaitingMains);
    const auto checks = bench.simulator.Sent().count(Wire::ReadMeasurement);
    AWAIT(bench.simulator.Sent().count(Wire::ReadMeasurement) > checks);
    bench.simulator.AnswerNextWith(WithChecksum(Wire::Bytes("0bf4")));
    bench.simulator.AnswerNextWith(Wire::Acknowledge);
    AWAIT(bench.simulator.Sent().contains(Wire::StartMeasurement));
    bench.simulator.Send(Wire::SixReadings);
    measured.VerifyEnd(Outcome::Completed, "");
    QCOMPARE(measured.results.size(), 1);
}

QTEST_GUILESS_MAIN(TestClientFaults)
#include "tst_clientfaults.moc"
