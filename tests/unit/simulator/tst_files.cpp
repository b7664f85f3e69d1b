#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "simulator/line/exchangelog.h"
#include "simulator/line/firmwarefile.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::ExchangeLog;
using Simulator::FirmwareFile;

namespace
{

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LogHasOneLineForEachEntry()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("log"));
        ExchangeLog log(path);
        log.Write({Bytes("73f44e"), Bytes("00fed10e"), {}, {}});
        log.Write({Bytes("57122a"), QByteArray(), {}, {}});
        log.Write(QStringLiteral("function 9 running"));
        log.WriteUnasked(Bytes("0af73370"));
        const QStringList lines = QString::fromLatin1(Content(path)).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 5);
        const QRegularExpression time(
            QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z$"));
        for (const QString& line : lines.mid(0, 4)) {
            QVERIFY2(time.match(line.section(QLatin1Char(' '), 0, 0)).hasMatch(), qPrintable(line));
        }
        QCOMPARE(lines.at(0).mid(25), QStringLiteral("73f44e 00fed10e"));
        QCOMPARE(lines.at(1).mid(25), QStringLiteral("57122a -"));
        QCOMPARE(lines.at(2).mid(25), QStringLiteral("function 9 running"));
        QCOMPARE(lines.at(3).mid(25), QStringLiteral("unasked 0af73370"));
        QCOMPARE(lines.at(4), QString());
    }

    void LogPathThatCannotBeWritten()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("missing/log"));
        QVERIFY_EXCEPTION_THROWN(ExchangeLog{path}, std::runtime_error);
    }

    void LogPipeThatNobodyReads()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        QVERIFY_EXCEPTION_THROWN(ExchangeLog{path}, std::runtime_error);
    }

    void LogPipeWhoseReaderStopsReading()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("pipe"));
        const QByteArray encoded = QFile::encodeName(path);
        QCOMPARE(::mkfifo(encoded.constData(), 0600), 0);
        const int reader = ::open(encoded.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        QVERIFY(reader >= 0);
        const int capacity = ::fcntl(reader, F_GETPIPE_SZ);
        ExchangeLog log(path);
        QTest::ignoreMessage(QtWarningMsg, ("vesmar-simulator: cannot write the log " + encoded +
                                            ": its reader does not keep up; it ends here")
                                               .constData());
        for (int written = 0; written <= capacity; written += 1000) {
            log.Write(QString(1000, QLatin1Char('x'))); // This must not wait.
        }
        ::close(reader);
    }

    void LogFullDisk()
    {
        QTest::ignoreMessage(
            QtWarningMsg,
            "vesmar-simulator: cannot write the log /dev/full: No space left on device; it ends here");
        ExchangeLog log(QStringLiteral("/dev/full"));
        log.Write(QStringLiteral("function 9 running"));
        log.Write(QStringLiteral("function 9 stopping")); // This must not warn again.
    }

    void FirmwareHoldsTheLastImage()
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

    void FirmwareIsLeftAloneUntilThereIsAnImage()
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

    void FirmwareNoPathNoFile()
    {
        const QTemporaryDir folder;
        QVERIFY(QDir::setCurrent(folder.path()));
        const FirmwareFile file({});
        file.Write("b");
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList());
        QVERIFY(QDir::setCurrent(QDir::rootPath()));
    }

    void FirmwarePathThatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("no such folder") << "no/such/folder";
        QTest::newRow("a folder") << "";
    }

    void FirmwarePathThatCannotBeWritten()
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

    void FirmwareWarnsWhenItIsTooLate()
    {
        QTemporaryDir folder;
        const FirmwareFile file(folder.filePath(QStringLiteral("firmware")));
        QVERIFY(folder.remove());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                               "^vesmar-simulator: cannot save the firmware to ")));
        file.Write("b");
        QVERIFY(!QDir(folder.path()).exists());
    }
};

QTEST_APPLESS_MAIN(TestFiles)
#include "tst_files.moc"
