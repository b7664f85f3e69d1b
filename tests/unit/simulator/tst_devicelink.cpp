#include <memory>
#include <stdexcept>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include "simulator/program/devicelink.h"

using Simulator::DeviceLink;

class TestDeviceLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void LeadsToTheDeviceAndGoes();
    void FollowsANewDevice();
    void GoesWhileThereIsNoDevice();
    void ReplacesALinkThatLeadsNowhere();
    void ReplacesALinkThatLeadsToItsOwnDevice();
    void LeavesOtherFilesAlone();
    void LeavesAReplacedLinkAlone();
    void MissingFolder();

private:
    QString Path(const char* name) const { return _folder->filePath(QLatin1String(name)); }
    static void MakeFile(const QString& path);

    std::unique_ptr<QTemporaryDir> _folder;
};

void TestDeviceLink::init()
{
    _folder = std::make_unique<QTemporaryDir>();
    MakeFile(Path("device"));
    MakeFile(Path("other"));
}

void TestDeviceLink::MakeFile(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void TestDeviceLink::LeadsToTheDeviceAndGoes()
{
    {
        const DeviceLink link(Path("link"), Path("device"));
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
    }
    QVERIFY(!QFileInfo(Path("link")).isSymLink());
    QVERIFY(QFile::exists(Path("device")));
}

void TestDeviceLink::FollowsANewDevice()
{
    DeviceLink link(Path("link"), Path("device"));
    link.PointTo(Path("other"));
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
}

void TestDeviceLink::GoesWhileThereIsNoDevice()
{
    DeviceLink link(Path("link"), Path("device"));
    link.PointTo(QString());
    QVERIFY(!QFileInfo(Path("link")).isSymLink());
    link.PointTo(Path("other"));
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
}

void TestDeviceLink::ReplacesALinkThatLeadsNowhere()
{
    QVERIFY(QFile::link(Path("gone"), Path("link")));
    const DeviceLink link(Path("link"), Path("device"));
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
}

void TestDeviceLink::ReplacesALinkThatLeadsToItsOwnDevice()
{
    QVERIFY(QFile::link(Path("device"), Path("link")));
    const DeviceLink link(Path("link"), Path("device"));
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
}

void TestDeviceLink::LeavesOtherFilesAlone()
{
    QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("other"), Path("device")), std::runtime_error);
    QVERIFY(QFileInfo(Path("other")).isFile());

    QVERIFY(QFile::link(Path("other"), Path("link")));
    QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("link"), Path("device")), std::runtime_error);
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
}

void TestDeviceLink::LeavesAReplacedLinkAlone()
{
    {
        const DeviceLink link(Path("link"), Path("device"));
        QVERIFY(QFile::remove(Path("link")));
        QVERIFY(QFile::link(Path("other"), Path("link")));
    }
    QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
}

void TestDeviceLink::MissingFolder()
{
    QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("missing/link"), Path("device")), std::runtime_error);
}

QTEST_APPLESS_MAIN(TestDeviceLink)
#include "tst_devicelink.moc"
