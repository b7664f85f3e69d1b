#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "simulator/line/exchangelog.h"

using Simulator::ExchangeLog;

class TestExchangeLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OneLineAnExchange();
    void Remarks();
    void BytesThatNobodyAskedFor();
    void PathThatCannotBeWritten();
    void PipeThatNobodyReads();
    void PipeWhoseReaderStopsReading();
    void FullDisk();
};

void TestExchangeLog::OneLineAnExchange()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log"));
    ExchangeLog log(path);
    log.Write({QByteArray::fromHex("73f44e"), QByteArray::fromHex("00fed10e"), {}, {}});
    log.Write({QByteArray::fromHex("57122a"), QByteArray(), {}, {}});

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QRegularExpression expected(QStringLiteral(
        "\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z 73f44e 00fed10e\n[^ ]+Z 57122a -\n\\z"));
    const QString text = QString::fromLatin1(file.readAll());
    QVERIFY2(expected.match(text).hasMatch(), qPrintable(text));
}

void TestExchangeLog::Remarks()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log"));
    ExchangeLog log(path);
    log.Write(QStringLiteral("function 9 running"));
    log.Write({QByteArray::fromHex("68aeed"), QByteArray::fromHex("06c660"), {}, {}});

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QRegularExpression expected(
        QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z function 9 running\n"
                       "[^ ]+Z 68aeed 06c660\n\\z"));
    const QString text = QString::fromLatin1(file.readAll());
    QVERIFY2(expected.match(text).hasMatch(), qPrintable(text));
}

void TestExchangeLog::BytesThatNobodyAskedFor()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log"));
    ExchangeLog log(path);
    log.WriteUnasked(QByteArray::fromHex("0af73370"));

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QRegularExpression expected(
        QStringLiteral("\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z unasked 0af73370\n\\z"));
    const QString text = QString::fromLatin1(file.readAll());
    QVERIFY2(expected.match(text).hasMatch(), qPrintable(text));
}

void TestExchangeLog::PathThatCannotBeWritten()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("missing/log"));
    QVERIFY_EXCEPTION_THROWN(ExchangeLog{path}, std::runtime_error);
}

void TestExchangeLog::PipeThatNobodyReads()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QVERIFY_EXCEPTION_THROWN(ExchangeLog{path}, std::runtime_error);
}

void TestExchangeLog::PipeWhoseReaderStopsReading()
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
        log.Write(QString(1000, QLatin1Char('x'))); // without waiting
    }
    ::close(reader);
}

void TestExchangeLog::FullDisk()
{
    QTest::ignoreMessage(
        QtWarningMsg,
        "vesmar-simulator: cannot write the log /dev/full: No space left on device; it ends here");
    ExchangeLog log(QStringLiteral("/dev/full"));
    log.Write(QStringLiteral("function 9 running"));
    log.Write(QStringLiteral("function 9 stopping")); // without another word
}

QTEST_APPLESS_MAIN(TestExchangeLog)
#include "tst_exchangelog.moc"
