#include "client/line/device.h"

#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>

#include "client/line/diagnosis.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using VesmarClient::Device;
using VesmarClient::DeviceFindings;

class TestClientDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Missing();
    void LinkThatLeadsNowhere();
    void LinkToATerminal();
    void ChangesNothing();
    void CharacterDeviceThatIsNoTerminal();
    void RegularFile();
    void WithoutPermission();
    void OpeningTellsTheErrorNumber_data();
    void OpeningTellsTheErrorNumber();
    void OpeningADeviceThatIsThere();
    void LinkErrors();
};

void TestClientDevice::Missing()
{
    const Device device("/dev/null/nothing/here");
    QVERIFY(!device.Findings().IsThere());
    QVERIFY(!device.Findings().IsCharacterDevice());
    QCOMPARE(device.Findings().pathError, ENOTDIR);
    QCOMPARE(device.Findings().target, QString());
    QCOMPARE(device.Descriptor(), -1);
}

void TestClientDevice::LinkThatLeadsNowhere()
{
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("line"));
    const QString target = folder.filePath(QStringLiteral("nowhere"));
    QVERIFY(QFile::link(target, link));
    const Device device(QFile::encodeName(link).constData());
    QCOMPARE(device.Findings().pathError, ENOENT);
    QCOMPARE(device.Findings().target, target);
}

void TestClientDevice::LinkToATerminal()
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

void TestClientDevice::ChangesNothing()
{
    const ScriptedPeer peer;
    const Device device(peer.DevicePath().constData());
    QVERIFY(device.Descriptor() >= 0);
    QCOMPARE(RecordedSerialDevice().configurations, 0);
    QVERIFY(peer.Requests().isEmpty());
}

void TestClientDevice::CharacterDeviceThatIsNoTerminal()
{
    const Device device("/dev/null");
    QVERIFY(device.Findings().IsCharacterDevice());
    QVERIFY(!device.Findings().isTerminal);
    QCOMPARE(device.Findings().target, QStringLiteral("/dev/null"));
}

void TestClientDevice::RegularFile()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const Device device(QFile::encodeName(file.fileName()).constData());
    QVERIFY(device.Findings().IsThere());
    QVERIFY(!device.Findings().IsCharacterDevice());
    QCOMPARE(device.Descriptor(), -1);
    QCOMPARE(device.Findings().identity.st_mode & 0777U, 0600U);
}

void TestClientDevice::WithoutPermission()
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

void TestClientDevice::OpeningTellsTheErrorNumber_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << ENOENT;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("busy") << EBUSY;
}

void TestClientDevice::OpeningTellsTheErrorNumber()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    QCOMPARE(VesmarClient::TryToOpenSerialDevice(), error);
    RedirectSerialDevice(QByteArray());
}

void TestClientDevice::OpeningADeviceThatIsThere()
{
    const ScriptedPeer peer;
    QCOMPARE(VesmarClient::TryToOpenSerialDevice(), 0);
    QCOMPARE(RecordedSerialDevice().configurations, 0);
}

void TestClientDevice::LinkErrors()
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

QTEST_GUILESS_MAIN(TestClientDevice)
#include "tst_clientdevice.moc"
