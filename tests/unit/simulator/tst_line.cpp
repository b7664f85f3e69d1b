#include <memory>
#include <stdexcept>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include "lineclient.h"
#include "simulator/line/ptyline.h"
#include "simulator/program/devicelink.h"

using Simulator::DeviceLink;
using Simulator::PtyLine;

namespace
{

QByteArray AllBytes()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value) {
        bytes.append(static_cast<char>(value));
    }
    return bytes;
}

} // namespace

class TestLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryByteArrivesUnchanged()
    {
        PtyLine line;
        LineClient client(line.DevicePath());
        QVERIFY(client.IsOpen());

        line.Write(AllBytes());
        QCOMPARE(client.Read(256), AllBytes());

        QVERIFY(client.Write(AllBytes()));
        QByteArray received;
        QTRY_COMPARE((received += line.Read()).size(), 256);
        QCOMPARE(received, AllBytes());
    }

    void ReadWithNothingThereReturnsAtOnce()
    {
        PtyLine line;
        QCOMPARE(line.Read(), QByteArray());
    }

    void StaysUpBetweenPrograms()
    {
        PtyLine line;
        for (const char* text : {"first", "second"}) {
            LineClient client(line.DevicePath());
            QVERIFY(client.Write(text));
            QByteArray received;
            QTRY_COMPARE(received += line.Read(), QByteArray(text));
            line.Write("answer");
            QCOMPARE(client.Read(6), QByteArray("answer"));
        }
    }

    void LosesWhatNobodyReads()
    {
        PtyLine line;
        for (int round = 0; round < 100; ++round) {
            line.Write(QByteArray(4096, 'x')); // This would block for ever if the line waited.
        }
        LineClient client(line.DevicePath());
        client.DropInput();
        QVERIFY(client.Write("y"));
        QByteArray received;
        QTRY_COMPARE(received += line.Read(), QByteArray("y"));
    }

    void BreaksWithItsEnd()
    {
        auto line = std::make_unique<PtyLine>();
        LineClient client(line->DevicePath());
        line.reset();
        QCOMPARE(client.Read(1), QByteArray());
        QVERIFY(!client.Write("x"));
    }

    void KeepsItsDescriptorsFromOtherPrograms()
    {
        const PtyLine line;
        QVERIFY((::fcntl(line.Handle(), F_GETFD) & FD_CLOEXEC) != 0);
    }

    void init()
    {
        _folder = std::make_unique<QTemporaryDir>();
        MakeFile(Path("device"));
        MakeFile(Path("other"));
    }

    void LeadsToTheDeviceAndGoes()
    {
        {
            const DeviceLink link(Path("link"), Path("device"));
            QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
        }
        QVERIFY(!QFileInfo(Path("link")).isSymLink());
        QVERIFY(QFile::exists(Path("device")));
    }

    void PointsToANewDevice()
    {
        DeviceLink link(Path("link"), Path("device"));
        link.PointTo(Path("other"));
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
    }

    void GoesWhileThereIsNoDevice()
    {
        DeviceLink link(Path("link"), Path("device"));
        link.PointTo(QString());
        QVERIFY(!QFileInfo(Path("link")).isSymLink());
        link.PointTo(Path("other"));
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
    }

    void ReplacesALinkThatLeadsNowhere()
    {
        QVERIFY(QFile::link(Path("gone"), Path("link")));
        const DeviceLink link(Path("link"), Path("device"));
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
    }

    void ReplacesALinkThatLeadsToItsOwnDevice()
    {
        QVERIFY(QFile::link(Path("device"), Path("link")));
        const DeviceLink link(Path("link"), Path("device"));
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("device"));
    }

    void LeavesOtherFilesAlone()
    {
        QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("other"), Path("device")), std::runtime_error);
        QVERIFY(QFileInfo(Path("other")).isFile());

        QVERIFY(QFile::link(Path("other"), Path("link")));
        QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("link"), Path("device")), std::runtime_error);
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
    }

    void LeavesAReplacedLinkAlone()
    {
        {
            const DeviceLink link(Path("link"), Path("device"));
            QVERIFY(QFile::remove(Path("link")));
            QVERIFY(QFile::link(Path("other"), Path("link")));
        }
        QCOMPARE(QFile::symLinkTarget(Path("link")), Path("other"));
    }

    void MissingFolder()
    {
        QVERIFY_EXCEPTION_THROWN(DeviceLink(Path("missing/link"), Path("device")), std::runtime_error);
    }

private:
    QString Path(const char* name) const { return _folder->filePath(QLatin1String(name)); }
    void MakeFile(const QString& path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    std::unique_ptr<QTemporaryDir> _folder;
};

QTEST_GUILESS_MAIN(TestLine)
#include "tst_line.moc"
