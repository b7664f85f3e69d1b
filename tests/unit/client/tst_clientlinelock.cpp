#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

#include "client/line/linelock.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using VesmarClient::Failure;
using VesmarClient::LineLock;

namespace
{

constexpr int Patience = 90000;

/// A shell that runs the script with the line's path as $0, and has said "ready". It is killed at the end.
class Program
{
public:
    Program(const ScriptedPeer& peer, const char* script)
    {
        _process.start(QStringLiteral("sh"), {QStringLiteral("-c"), QString::fromLatin1(script),
                                              QFile::decodeName(peer.DevicePath())});
    }
    ~Program() { Kill(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    bool IsReady()
    {
        while (!_process.canReadLine()) {
            if (!_process.waitForReadyRead(Patience)) {
                return false;
            }
        }
        return _process.readLine() == "ready\n";
    }

    void Kill()
    {
        _process.kill();
        _process.waitForFinished(Patience);
    }

    /// "sh (process 4711)".
    QString Shown() const { return QStringLiteral("sh (process %1)").arg(_process.processId()); }

private:
    QProcess _process;
};

constexpr char WithLock[] = R"(exec 9<>"$0" && flock -n 9 && echo ready && read line)";
constexpr char WithoutLock[] = R"(exec 9<>"$0" && echo ready && read line)";

/// Whether another program can have the lock.
bool CanOthersLock(const ScriptedPeer& peer)
{
    return QProcess::execute(
               QStringLiteral("flock"),
               {QStringLiteral("-n"), QFile::decodeName(peer.DevicePath()), QStringLiteral("true")}) == 0;
}

} // namespace

class TestClientLineLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KeepsTheLockUntilItGoes();
    void ChangesNothing();
    void LockingTwiceIsLockingOnce();
    void HeldByAProgram_data();
    void HeldByAProgram();
    void HeldByAnotherLockOfThisProgram();
    void TheLockOfADeadProgramIsGone();
    void ProgramsThatAreStartedDoNotInheritIt();
    void ExclusiveUseIsRespected();
    void ALineThatHangsUpIsGivenBack();
    void CannotBeOpened_data();
    void CannotBeOpened();
    void IsNoSerialLine();
    void MessageNamesTheHolders();
};

void TestClientLineLock::KeepsTheLockUntilItGoes()
{
    const ScriptedPeer peer;
    {
        LineLock lock;
        QVERIFY(!lock.IsLocked());
        QCOMPARE(lock.Lock().name, QString());
        QVERIFY(lock.IsLocked());
        QVERIFY(!CanOthersLock(peer));
    }
    QVERIFY(CanOthersLock(peer));
}

void TestClientLineLock::ChangesNothing()
{
    const ScriptedPeer peer;
    LineLock lock;
    QVERIFY(!lock.Lock().isFailure());
    QCOMPARE(RecordedSerialDevice().configurations, 0);
    QCOMPARE(RecordedSerialDevice().openFlags, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(peer.Requests().isEmpty());
}

void TestClientLineLock::LockingTwiceIsLockingOnce()
{
    const ScriptedPeer peer;
    LineLock lock;
    QVERIFY(!lock.Lock().isFailure());
    QVERIFY(!lock.Lock().isFailure());
    lock.Release();
    QVERIFY(!lock.IsLocked());
    QVERIFY(CanOthersLock(peer));
}

void TestClientLineLock::HeldByAProgram_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("with a lock that another program has taken for it") << QByteArray(WithLock);
    QTest::newRow("without the lock") << QByteArray(WithoutLock);
}

void TestClientLineLock::HeldByAProgram()
{
    QFETCH(QByteArray, script);
    const ScriptedPeer peer;
    Program program(peer, script.constData());
    QVERIFY(program.IsReady());
    LineLock lock;
    const Failure failure = lock.Lock();
    QCOMPARE(failure.name, QStringLiteral("device-held"));
    QCOMPARE(failure.whatHappened,
             QStringLiteral("The serial device /dev/ttycommunication is held by %1.").arg(program.Shown()));
    QVERIFY(!failure.nextStep.isEmpty());
    QVERIFY(!lock.IsLocked());
}

void TestClientLineLock::HeldByAnotherLockOfThisProgram()
{
    const ScriptedPeer peer;
    LineLock first;
    QVERIFY(!first.Lock().isFailure());
    LineLock second;
    const Failure failure = second.Lock();
    QCOMPARE(failure.name, QStringLiteral("device-held"));
    QVERIFY2(failure.whatHappened.contains(QStringLiteral("(process %1)").arg(::getpid())),
             qPrintable(failure.whatHappened));
}

void TestClientLineLock::TheLockOfADeadProgramIsGone()
{
    const ScriptedPeer peer;
    Program program(peer, WithLock);
    QVERIFY(program.IsReady());
    program.Kill();
    LineLock lock;
    QCOMPARE(lock.Lock().whatHappened, QString());
}

void TestClientLineLock::ProgramsThatAreStartedDoNotInheritIt()
{
    const ScriptedPeer peer;
    LineLock lock;
    QVERIFY(!lock.Lock().isFailure());
    Program program(peer, "echo ready && read line");
    QVERIFY(program.IsReady());
    lock.Release();
    QVERIFY(CanOthersLock(peer));
}

/// Only root gets so far as to open a device that is in exclusive use.
void TestClientLineLock::ExclusiveUseIsRespected()
{
    const ScriptedPeer peer;
    const int descriptor = ::open(peer.DevicePath().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    QCOMPARE(::ioctl(descriptor, TIOCEXCL), 0);
    LineLock lock;
    QCOMPARE(lock.Lock().name,
             ::geteuid() == 0 ? QStringLiteral("device-held") : QStringLiteral("device-unusable"));
    QCOMPARE(::ioctl(descriptor, TIOCNXCL), 0);
    QVERIFY(!lock.Lock().isFailure());
    ::close(descriptor);
}

void TestClientLineLock::ALineThatHangsUpIsGivenBack()
{
    LineLock lock;
    {
        ScriptedPeer peer;
        QVERIFY(!lock.Lock().isFailure());
        peer.HangUp();
        QVERIFY(lock.IsLocked());
    }
    const ScriptedPeer next;
    lock.Release();
    QVERIFY(!lock.Lock().isFailure());
    QVERIFY(!CanOthersLock(next));
}

void TestClientLineLock::CannotBeOpened_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << ENOENT << QStringLiteral("device-missing");
    QTest::newRow("no permission") << EACCES << QStringLiteral("no-permission");
    QTest::newRow("not permitted") << EPERM << QStringLiteral("no-permission");
    QTest::newRow("broken") << EIO << QStringLiteral("device-unusable");
}

void TestClientLineLock::CannotBeOpened()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    LineLock lock;
    const Failure failure = lock.Lock();
    RedirectSerialDevice(QByteArray());
    QTEST(failure.name, "name");
    QVERIFY(!failure.whatHappened.isEmpty() && !failure.nextStep.isEmpty());
    QVERIFY(!lock.IsLocked());
}

void TestClientLineLock::IsNoSerialLine()
{
    RedirectSerialDevice("/dev/null");
    LineLock lock;
    QCOMPARE(lock.Lock().whatHappened, QStringLiteral("/dev/ttycommunication is no serial line."));
    RedirectSerialDevice(QByteArray());
}

void TestClientLineLock::MessageNamesTheHolders()
{
    const Failure one = VesmarClient::HeldBy({{7, QStringLiteral("a\x1b[2J")}});
    QVERIFY2(one.whatHappened.endsWith(QStringLiteral("is held by a\\x1b[2J (process 7).")),
             qPrintable(one.whatHappened));
    const Failure none = VesmarClient::HeldBy({});
    QVERIFY(none.whatHappened.endsWith(QStringLiteral("is held by a program that cannot be seen.")));
}

QTEST_GUILESS_MAIN(TestClientLineLock)
#include "tst_clientlinelock.moc"
