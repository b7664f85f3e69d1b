#include <QtTest>

#include <QDir>

#include "integration/programrun.h"

/// `vesmar decode` with a log that still grows.
class TestDecodeProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SignalEndsTheReading_data();
    void SignalEndsTheReading();
    void SignalBeforeAnExchange();
};

void TestDecodeProgram::SignalEndsTheReading_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestDecodeProgram::SignalEndsTheReading()
{
    QFETCH(const int, signalNumber);
    const QTemporaryDir folder;
    ProgramRun run(QStringLiteral(VESMAR_PROGRAM),
                   {QStringLiteral("decode"), QStringLiteral("-"), QStringLiteral("--scenario"),
                    folder.filePath(QStringLiteral("recording"))});
    run.Tell("20:51:40.316  73f44e 00fed10e[4b]");
    run.Tell("20:51:40.416  73f44e 00fed10e[4b]");
    AWAIT(run.Output().count("read status") == 2);
    QVERIFY(run.Signal(signalNumber));
    QCOMPARE(run.Finish(), 0);
    QCOMPARE(run.Errors(), QByteArray());
    QVERIFY2(run.Output().contains("\nSummary\n  exchanges          2\n"), run.Output().constData());
    QVERIFY2(run.Output().endsWith("The log is decoded as far as it was read, and 2 entries are recorded.\n"),
             run.Output().constData());
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
             QStringList{QStringLiteral("recording")});
}

void TestDecodeProgram::SignalBeforeAnExchange()
{
    const QTemporaryDir folder;
    const QString recording = folder.filePath(QStringLiteral("recording"));
    ProgramRun run(QStringLiteral(VESMAR_PROGRAM),
                   {QStringLiteral("decode"), QStringLiteral("-"), QStringLiteral("--scenario"), recording});
    run.Tell("20:51:40.212 Transciever::Open");
    AWAIT(run.Output().contains("Transciever::Open"));
    QVERIFY(run.Signal(SIGINT));
    QCOMPARE(run.Finish(), 1);
    QCOMPARE(run.Errors(), QByteArray("vesmar: the standard input: the reading was ended before an exchange "
                                      "with an instrument\n"));
    QVERIFY(QDir(folder.path()).isEmpty());
}

QTEST_GUILESS_MAIN(TestDecodeProgram)
#include "tst_decodeprogram.moc"
