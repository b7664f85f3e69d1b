#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "simulator/line/firmwarefile.h"

using Simulator::FirmwareFile;

namespace
{

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class TestFirmwareFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void HoldsTheLastImage();
    void IsLeftAloneUntilThereIsAnImage();
    void NoPathNoFile();
    void PathThatCannotBeWritten_data();
    void PathThatCannotBeWritten();
    void WarnsWhenItIsTooLate();
};

void TestFirmwareFile::HoldsTheLastImage()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("firmware"));
    const FirmwareFile file(path);
    file.Write(QByteArray("\x00\r\n\xFF", 4));
    QCOMPARE(Content(path), QByteArray("\x00\r\n\xFF", 4));
    file.Write("b");
    QCOMPARE(Content(path), QByteArray("b"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("firmware")});
}

void TestFirmwareFile::IsLeftAloneUntilThereIsAnImage()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("firmware"));
    {
        const FirmwareFile file(path);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());

    QFile before(path);
    QVERIFY(before.open(QIODevice::WriteOnly));
    QCOMPARE(before.write("old"), 3);
    before.close();
    const FirmwareFile file(path);
    QCOMPARE(Content(path), QByteArray("old"));
}

void TestFirmwareFile::NoPathNoFile()
{
    const QTemporaryDir folder;
    QVERIFY(QDir::setCurrent(folder.path()));
    const FirmwareFile file({});
    file.Write("b");
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
}

void TestFirmwareFile::PathThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << "no/such/folder";
    QTest::newRow("a folder") << "";
}

void TestFirmwareFile::PathThatCannotBeWritten()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    try {
        const FirmwareFile file(path);
        QFAIL("nothing was thrown");
    } catch (const std::runtime_error& error) {
        const QString text = QString::fromStdString(error.what());
        QVERIFY2(text.startsWith(QStringLiteral("cannot save the firmware to ")), error.what());
        QVERIFY2(text.contains(path) && !text.contains(QLatin1Char('\n')), error.what());
    }
}

void TestFirmwareFile::WarnsWhenItIsTooLate()
{
    QTemporaryDir folder;
    const FirmwareFile file(folder.filePath(QStringLiteral("firmware")));
    QVERIFY(folder.remove());
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(QStringLiteral("^vesmar-simulator: cannot save the firmware to ")));
    file.Write("b");
    QVERIFY(!QDir(folder.path()).exists());
}

QTEST_APPLESS_MAIN(TestFirmwareFile)
#include "tst_firmwarefile.moc"
