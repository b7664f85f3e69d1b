#include <QProcess>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include <VesmarClient/serialdevice.h>

#include "client/line/device.h"
#include "client/line/deviceholders.h"
#include "client/line/diagnosis.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using VesmarClient::Device;
using VesmarClient::DeviceFindings;
using VesmarClient::DeviceHolders;
using VesmarClient::FindHolders;

namespace
{

constexpr int Patience = 90000;

/// A pseudo-terminal with both ends open in this process. Without `O_CLOEXEC`, programs that this process
/// starts inherit its far end.
class Line
{
public:
    explicit Line(int inheritance = O_CLOEXEC) : _master(::posix_openpt(O_RDWR | O_NOCTTY | inheritance))
    {
        ::grantpt(_master);
        ::unlockpt(_master);
        _path = ::ptsname(_master);
        _slave = ::open(_path.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~Line()
    {
        ::close(_slave);
        ::close(_master);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    QString Path() const { return QString::fromLatin1(_path); }

    struct stat Identity() const
    {
        struct stat identity = {};
        ::fstat(_slave, &identity);
        return identity;
    }

private:
    int _master;
    int _slave = -1;
    QByteArray _path;
};

/// Another program that has the path open once it has started.
class Holder
{
public:
    explicit Holder(const QString& path)
    {
        const QString script = QStringLiteral("exec 0<>\"$0\"; echo open; exec sleep 600");
        _process.start(QStringLiteral("sh"), {QStringLiteral("-c"), script, path});
    }
    ~Holder()
    {
        _process.kill();
        _process.waitForFinished(Patience);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    /// Waits, too, until the program has its last name.
    bool WaitUntilItHolds()
    {
        while (!_process.canReadLine()) {
            if (!_process.waitForReadyRead(Patience)) {
                return false;
            }
        }
        QFile name(QStringLiteral("/proc/%1/comm").arg(_process.processId()));
        return QTest::qWaitFor(
            [&name] {
                QFile file(name.fileName());
                return file.open(QIODevice::ReadOnly) && file.readAll() == "sleep\n";
            },
            Patience);
    }
    pid_t Process() const { return static_cast<pid_t>(_process.processId()); }

private:
    QProcess _process;
};

} // namespace

class TestClientLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DeviceThatIsMissing();
    void LinkThatLeadsNowhere();
    void LinkToATerminal();
    void ChangesNothing();
    void CharacterDeviceThatIsNoTerminal();
    void RegularFile();
    void DeviceWithoutPermission();
    void DeviceThatCannotBeOpened_data();
    void DeviceThatCannotBeOpened();
    void OpeningADeviceThatIsThere();
    void LinkErrors();
    void HeldByThisProgramOnly();
    void HeldByAnotherProgram();
    void AnotherLineIsHeld();
    void HeldByTheOtherEnd();
};

void TestClientLine::DeviceThatIsMissing()
{
    const Device device("/dev/null/nothing/here");
    QVERIFY(!device.Findings().IsThere());
    QVERIFY(!device.Findings().IsCharacterDevice());
    QCOMPARE(device.Findings().pathError, ENOTDIR);
    QCOMPARE(device.Findings().target, QString());
    QCOMPARE(device.Descriptor(), -1);
}

void TestClientLine::LinkThatLeadsNowhere()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("line"));
    const QString target = folder.filePath(QStringLiteral("nowhere"));
    QVERIFY(QFile::link(target, link));
    const Device device(QFile::encodeName(link).constData());
    QCOMPARE(device.Findings().pathError, ENOENT);
    QCOMPARE(device.Findings().target, target);
}

void TestClientLine::LinkToATerminal()
{
    const ScriptedPeer peer;
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("line"));
    QVERIFY(QFile::link(QFile::decodeName(peer.DevicePath()), link));
    const Device device(QFile::encodeName(link).constData());
    const DeviceFindings& findings = device.Findings();
    QVERIFY(findings.IsThere() && findings.IsCharacterDevice() && findings.isTerminal);
    QCOMPARE(findings.target, QFile::decodeName(peer.DevicePath()));
    QVERIFY(findings.isReadable && findings.isWritable);
    QCOMPARE(findings.owner, QString::fromLocal8Bit(::getpwuid(findings.identity.st_uid)->pw_name));
    QCOMPARE(findings.group, QString::fromLocal8Bit(::getgrgid(findings.identity.st_gid)->gr_name));
    QCOMPARE(findings.openError, 0);
    QVERIFY(device.Descriptor() >= 0);
    QCOMPARE(::fcntl(device.Descriptor(), F_GETFL) & (O_ACCMODE | O_NONBLOCK), O_RDWR | O_NONBLOCK);
}

void TestClientLine::ChangesNothing()
{
    const ScriptedPeer peer;
    const Device device(peer.DevicePath().constData());
    QVERIFY(device.Descriptor() >= 0);
    QCOMPARE(RecordedSerialDevice().configurations, 0);
    QVERIFY(peer.Requests().isEmpty());
}

void TestClientLine::CharacterDeviceThatIsNoTerminal()
{
    const Device device("/dev/null");
    QVERIFY(device.Findings().IsCharacterDevice());
    QVERIFY(!device.Findings().isTerminal);
    QCOMPARE(device.Findings().target, QStringLiteral("/dev/null"));
}

void TestClientLine::RegularFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const Device device(QFile::encodeName(file.fileName()).constData());
    QVERIFY(device.Findings().IsThere());
    QVERIFY(!device.Findings().IsCharacterDevice());
    QCOMPARE(device.Descriptor(), -1);
    QCOMPARE(device.Findings().identity.st_mode & 0777U, 0600U);
}

void TestClientLine::DeviceWithoutPermission()
{
    if (::geteuid() == 0) {
        QSKIP("Nothing is forbidden to root.");
    }
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(file.setPermissions(QFileDevice::ReadOwner));
    const Device device(QFile::encodeName(file.fileName()).constData());
    QVERIFY(device.Findings().isReadable);
    QVERIFY(!device.Findings().isWritable);
}

void TestClientLine::DeviceThatCannotBeOpened_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << ENOENT << "device-missing";
    QTest::newRow("no permission") << EACCES << "no-permission";
    QTest::newRow("busy") << EBUSY << "device-unusable";
}

void TestClientLine::DeviceThatCannotBeOpened()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    QTEST(VesmarClient::SerialDevice::problem().name, "name");
    RedirectSerialDevice(QByteArray());
}

void TestClientLine::OpeningADeviceThatIsThere()
{
    const ScriptedPeer peer;
    QVERIFY(!VesmarClient::SerialDevice::problem().isFailure());
    QCOMPARE(RecordedSerialDevice().configurations, 0);
}

void TestClientLine::LinkErrors()
{
    for (const int error : {100, 101, 102, 103}) {
        QVERIFY2(VesmarClient::IsLinkError(static_cast<Vesmar::Error>(error)),
                 qPrintable(QString::number(error)));
    }
    for (const int error : {0, 15, 99, 104, 200, 303}) {
        QVERIFY2(!VesmarClient::IsLinkError(static_cast<Vesmar::Error>(error)),
                 qPrintable(QString::number(error)));
    }
}

void TestClientLine::HeldByThisProgramOnly()
{
    const Line line;
    const DeviceHolders holders = FindHolders(line.Identity());
    QVERIFY(holders.programs.isEmpty());
    QVERIFY(::geteuid() == 0 || !holders.isComplete);
}

void TestClientLine::HeldByAnotherProgram()
{
    const Line line;
    Holder holder(line.Path());
    QVERIFY(holder.WaitUntilItHolds());
    const DeviceHolders holders = FindHolders(line.Identity());
    QCOMPARE(holders.programs.size(), 1);
    QCOMPARE(holders.programs.first().process, holder.Process());
    QCOMPARE(holders.programs.first().program, QStringLiteral("sleep"));
}

void TestClientLine::AnotherLineIsHeld()
{
    const Line line;
    const Line other;
    Holder holder(other.Path());
    QVERIFY(holder.WaitUntilItHolds());
    QVERIFY(FindHolders(line.Identity()).programs.isEmpty());
}

void TestClientLine::HeldByTheOtherEnd()
{
    const Line line(0);
    Holder holder(line.Path());
    QVERIFY(holder.WaitUntilItHolds());
    QVERIFY(FindHolders(line.Identity()).programs.isEmpty());
}

QTEST_GUILESS_MAIN(TestClientLine)
#include "tst_clientline.moc"
