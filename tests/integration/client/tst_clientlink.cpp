#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QProcess>
#include <QSignalSpy>

#include <VesmarClient/tracerouter.h>

#include "integration/client/clientbench.h"
#include "support/serialdevice.h"
#include "support/wire.h"

using VesmarClient::Failure;
using VesmarClient::Function;
using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Mode;
using VesmarClient::Outcome;
using VesmarClient::Phase;

namespace
{

using LinkStates = QVector<LinkState>;

/// What the line has done, from the moment that this is created.
class LinkRecord
{
public:
    explicit LinkRecord(const Instrument& client)
    {
        QObject::connect(&client, &Instrument::linkStateChanged, &_context,
                         [this](LinkState state) { states.append(state); });
    }

    LinkStates states;

private:
    QObject _context;
};

/// Opens the line, which fails, and returns how.
Failure FailToOpen(Instrument& client)
{
    QSignalSpy failed(&client, &Instrument::openFailed);
    client.open();
    [&failed] { AWAIT_EQUAL(failed.size(), 1); }();
    return failed.isEmpty() ? Failure() : failed.first().first().value<Failure>();
}

} // namespace

/// The line of the client, and what it tells of the instrument.
class TestClientLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LineIsOpenedAndClosed();
    void InstrumentIsKnownOnceTheLinkIsUp();
    void DeviceThatCannotBeTakenIsTold_data();
    void DeviceThatCannotBeTakenIsTold();
    void LineOfAnotherProgramIsLeftAlone();
    void ProgramsThatAreStartedDoNotHoldTheLine();
    void SecondInstrumentIsRefused();
    void SlowInstrumentIsFoundAgain();
    void LossIsToldAndHeals();
    void ReplacedDeviceIsOpenedAnew();
    void InstrumentInUpdateModeIsFound();
    void FunctionThatNobodyStartedIsUnattended();
    void LineIsCountedWhileThereIsARouter();
    void ClosingStopsAMeasurement();
    void DestructionStopsAMeasurement();
};

void TestClientLink::LineIsOpenedAndClosed()
{
    ClientBench bench;
    const LinkRecord link(bench.client);
    QCOMPARE(bench.client.linkState(), LinkState::Closed);
    bench.Connect();
    bench.client.close();
    bench.client.open(); // Once it is closed.
    AWAIT_EQUAL(link.states.count(LinkState::Up), 2);
    bench.client.close();
    bench.client.close();
    AWAIT_EQUAL(link.states, (LinkStates{LinkState::Opening, LinkState::Up, LinkState::Closed,
                                         LinkState::Opening, LinkState::Up, LinkState::Closed}));
}

void TestClientLink::InstrumentIsKnownOnceTheLinkIsUp()
{
    const QDateTime clock(QDate(2026, 3, 29), QTime(2, 30), Qt::UTC); // An hour that some places do not have.
    ClientBench bench(WithClock(clock));
    QVERIFY(!bench.client.clock().isValid());
    bench.Connect();
    QCOMPARE(bench.client.identity().deviceName, QStringLiteral("PAT"));
    QVERIFY(clock.secsTo(bench.client.clock()) < 60);
    QCOMPARE(bench.client.calibrationDate(), QDateTime(QDate(2024, 2, 15), QTime(0, 0), Qt::UTC));
    QCOMPARE(bench.client.activeFunction(), Function::Monitoring);
    QVERIFY(!bench.client.isUnattended());
    QVERIFY(!bench.client.isBusy());
    AWAIT(bench.client.mains().reading(QStringLiteral("frequency")).isPresent);
}

void TestClientLink::DeviceThatCannotBeTakenIsTold_data()
{
    QTest::addColumn<int>("openError");
    QTest::addColumn<QString>("failure");
    QTest::newRow("no device") << ENOENT << QStringLiteral("device-missing");
    QTest::newRow("no permission") << EACCES << QStringLiteral("no-permission");
    QTest::newRow("no such line") << EIO << QStringLiteral("device-unusable");
}

void TestClientLink::DeviceThatCannotBeTakenIsTold()
{
    QFETCH(int, openError);
    ClientBench bench;
    const LinkRecord link(bench.client);
    FailSerialDeviceOpen(openError);
    QTEST(FailToOpen(bench.client).name, "failure");
    QCOMPARE(link.states, LinkStates());
    bench.simulator.Attach();
    bench.Connect();
}

void TestClientLink::LineOfAnotherProgramIsLeftAlone()
{
    ClientBench bench;
    const int other = ::open(qPrintable(bench.simulator.DevicePath()), O_RDWR | O_NOCTTY);
    QCOMPARE(::flock(other, LOCK_EX | LOCK_NB), 0);
    QCOMPARE(FailToOpen(bench.client).name, QStringLiteral("device-held"));
    QCOMPARE(bench.simulator.Sent(), QByteArrayList());
    ::close(other);
    bench.Connect();
}

/// Such as the viewer of a report, which goes on when the line is closed.
void TestClientLink::ProgramsThatAreStartedDoNotHoldTheLine()
{
    ClientBench bench;
    bench.Connect();
    QProcess program;
    program.start(QStringLiteral("cat"), QStringList());
    QVERIFY(program.waitForStarted(-1)); // In real time, as everything of another program.
    QVERIFY(program.waitForStarted());
    bench.client.close();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Closed);
    bench.Connect();
    program.closeWriteChannel();
    QVERIFY(program.waitForFinished(-1));
}

void TestClientLink::SecondInstrumentIsRefused()
{
    ClientBench bench;
    bench.Connect();
    Instrument second;
    QCOMPARE(FailToOpen(second).name, QStringLiteral("in-use"));
    bench.client.close();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Closed);
    second.open();
    AWAIT_EQUAL(second.linkState(), LinkState::Up);
}

/// The answer that the closing has cut off must not count as one to the first request.
void TestClientLink::SlowInstrumentIsFoundAgain()
{
    ClientBench bench;
    bench.simulator.SetFault(Simulator::Fault::Slow, std::chrono::milliseconds(600));
    bench.Connect();
    AWAIT(!bench.client.mains().isEmpty());
    QTest::qWait(300); // The next request is on its way.
    const LinkRecord link(bench.client);
    bench.client.close();
    bench.client.open();
    AWAIT_EQUAL(link.states, (LinkStates{LinkState::Closed, LinkState::Opening, LinkState::Up}));
}

void TestClientLink::LossIsToldAndHeals()
{
    ClientBench bench;
    bench.Connect();
    const LinkRecord link(bench.client);
    bench.simulator.Unplug();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Lost);
    QCOMPARE(bench.client.error(), VesmarClient::Error::NoResponse);
    const Measured measured(bench, "rpe");
    measured.AwaitEnd();
    QCOMPARE(measured->failure().name, QStringLiteral("not-connected"));
    bench.simulator.Plug();
    AWAIT_EQUAL(link.states, (LinkStates{LinkState::Interrupted, LinkState::Lost, LinkState::Up}));
}

/// As with an adapter that is pulled out and plugged in again.
void TestClientLink::ReplacedDeviceIsOpenedAnew()
{
    ClientBench bench;
    bench.Connect();
    bench.Execute("fault hang-up");
    RedirectSerialDevice({});
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Lost);
    bench.Plug();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Up);
}

void TestClientLink::InstrumentInUpdateModeIsFound()
{
    ClientBench bench;
    bench.Execute("mode 3");
    const LinkRecord link(bench.client);
    bench.client.open();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::UpdateMode);
    QCOMPARE(bench.client.mode(), Mode::Update);
    const Measured measured(bench, "rpe");
    measured.AwaitEnd();
    QCOMPARE(measured->failure().name, QStringLiteral("update-mode"));
    QVERIFY(!bench.HasPrepared());
    bench.Execute("mode 0");
    AWAIT_EQUAL(link.states,
                (LinkStates{LinkState::Opening, LinkState::UpdateMode, LinkState::Opening, LinkState::Up}));
}

void TestClientLink::FunctionThatNobodyStartedIsUnattended()
{
    ClientBench bench;
    bench.Connect();
    QVector<Function> unattended;
    connect(&bench.client, &Instrument::isUnattendedChanged, this,
            [&] { unattended.append(bench.client.activeFunction()); });
    bench.Execute("function 9");
    AWAIT_EQUAL(unattended, (QVector<Function>{Function::HVTest, Function::Monitoring}));
    QVERIFY(bench.IsOff()); // The driver stops what it finds.

    const Measured measured(bench, "rpe --time 1");
    measured.VerifyEnd(Outcome::Completed, "");
    QCOMPARE(unattended.size(), 2);
}

void TestClientLink::LineIsCountedWhileThereIsARouter()
{
    ClientBench bench;
    const VesmarClient::TraceRouter router;
    bench.Connect();
    AWAIT(bench.client.statistics().exchanges > 0);
    bench.simulator.Unplug();
    AWAIT(bench.client.statistics().silent > 0);
}

void TestClientLink::ClosingStopsAMeasurement()
{
    ClientBench bench;
    bench.Connect();
    const Measured measured(bench, "hv --time-offset 0");
    measured.AwaitPhase(Phase::Running);
    bench.client.close();
    AWAIT_EQUAL(bench.client.linkState(), LinkState::Closed);
    measured.VerifyAbort();
}

void TestClientLink::DestructionStopsAMeasurement()
{
    LineInstrument simulator;
    {
        Instrument client;
        client.setGuardPolicy(VesmarClient::GuardPolicy::Off);
        client.open();
        AWAIT_EQUAL(client.linkState(), LinkState::Up);
        client.measure(SettingsOf(QStringLiteral("hv --time-offset 0")));
        AWAIT_EQUAL(client.activeFunction(), Function::HVTest);
    }
    QCOMPARE(simulator.Status().function, 0);
}

QTEST_GUILESS_MAIN(TestClientLink)
#include "tst_clientlink.moc"
