#include <memory>

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include "integration/patience.h"
#include "integration/programrun.h"
#include "integration/watchedtester.h"
#include "support/serialdevice.h"

namespace
{

bool IsThere(const QString& path)
{
    return QFileInfo(path).isSymLink();
}

} // namespace

/// The simulator as a program of its own, at a path, and the library at that path.
class TestSimulatorLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void LibraryFindsTheInstrumentAtTheLink();
    void CommandsChangeTheInstrument();
    void LinkLeadsToTheNewLineAfterAHangUp();
    void LinkIsGoneAtTheEnd_data();
    void LinkIsGoneAtTheEnd();

private:
    std::unique_ptr<QTemporaryDir> _folder;
    std::unique_ptr<ProgramRun> _simulator;
    QString _path;
};

void TestSimulatorLink::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    _path = _folder->filePath(QStringLiteral("line"));
    _simulator = std::make_unique<ProgramRun>(QStringLiteral(SIMULATOR_PROGRAM),
                                              QStringList{QStringLiteral("--link"), _path});
    AWAIT_EQUAL(_simulator->Lines().size(), 1);
    VERIFY_CONTAINS(_simulator->Output(), QFile::encodeName(_path));
    RedirectSerialDevice(QFile::encodeName(_path));
}

void TestSimulatorLink::cleanup()
{
    RedirectSerialDevice({});
    _simulator.reset();
    QVERIFY(!IsThere(_path));
}

void TestSimulatorLink::LibraryFindsTheInstrumentAtTheLink()
{
    WatchedTester tester;
    tester->Enable();
    AWAIT(tester.Signalled("TestResults").size() >= 2);
    QCOMPARE(tester.Signalled("DeviceInformation"), QByteArrayList{"PAT 410 204815 1.05 03 02 2016"});
}

void TestSimulatorLink::CommandsChangeTheInstrument()
{
    WatchedTester tester;
    tester->Enable();
    AWAIT(!tester.Signalled("TestResults").isEmpty());
    _simulator->WriteLine("error 6");
    AWAIT_EQUAL(tester.Errors(), QByteArrayList{"6"});
    _simulator->WriteLine("function 2");
    AWAIT_EQUAL(tester.Signalled("CurrentMeasurementType").size(), 3);
    QCOMPARE(tester.LastSignalled("CurrentMeasurementType"),
             QByteArray("0")); // The library stops it at once.
    _simulator->WriteLine("fault refuse");
    AWAIT_EQUAL(tester.Errors(), (QByteArrayList{"6", "103"}));
    _simulator->WriteLine("plug");
    _simulator->CloseInput(); // This is no reason to end.
    AWAIT_EQUAL(tester.Signalled("DeviceInformation").size(), 2);
    QCOMPARE(tester.Errors(), (QByteArrayList{"6", "103", "6"}));
    QVERIFY(_simulator->IsRunning());
}

void TestSimulatorLink::LinkLeadsToTheNewLineAfterAHangUp()
{
    WatchedTester tester;
    tester->Enable();
    AWAIT(!tester.Signalled("TestResults").isEmpty());
    tester->Disable();
    // The path of the old line may be somebody else's by now, so the complaint tells that the new one is
    // there.
    _simulator->WriteLine("fault hang-up");
    _simulator->WriteLine("plug");
    _simulator->WriteLine("jump");
    AWAIT(_simulator->Errors().contains("no command \"jump\""));
    QVERIFY(IsThere(_path));
    tester->Enable();
    AWAIT_EQUAL(tester.Signalled("DeviceInformation").size(), 2);
}

void TestSimulatorLink::LinkIsGoneAtTheEnd_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("quit") << 0;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestSimulatorLink::LinkIsGoneAtTheEnd()
{
    QFETCH(int, signalNumber);
    QVERIFY(IsThere(_path));
    if (signalNumber == 0) {
        _simulator->WriteLine("quit");
    } else {
        QVERIFY(_simulator->Signal(signalNumber));
    }
    QCOMPARE(_simulator->Finish(), 0);
    QVERIFY(!IsThere(_path));
    QCOMPARE(_simulator->Errors(), QByteArray());
}

QTEST_GUILESS_MAIN(TestSimulatorLink)
#include "tst_simulatorlink.moc"
