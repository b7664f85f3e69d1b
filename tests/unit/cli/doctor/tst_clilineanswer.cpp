#include "cli/doctor/lineanswer.h"

#include <QtTest>

using Cli::LineAnswer;

class TestCliLineAnswer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RequestAsItIsSent();
    void Kinds_data();
    void Kinds();
};

void TestCliLineAnswer::RequestAsItIsSent()
{
    QCOMPARE(Cli::StatusRequest(), QByteArray::fromHex("73F44E"));
}

void TestCliLineAnswer::Kinds_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("kind");
    const auto row = [](const char* name, const char* bytes, LineAnswer kind) {
        QTest::newRow(name) << QByteArray::fromHex(bytes) << static_cast<int>(kind);
    };
    row("status", "00F01FEF", LineAnswer::Proper);
    row("another status", "A3529A32", LineAnswer::Proper);
    row("nothing", "", LineAnswer::Silent);
    row("refusal", "214334", LineAnswer::Refused);
    row("refusal with more behind it", "21433400", LineAnswer::Refused);
    row("half a refusal", "2143", LineAnswer::Damaged);
    row("one byte", "00", LineAnswer::Damaged);
    row("two bytes", "00F0", LineAnswer::Damaged);
    row("low byte of the checksum", "00F01EEF", LineAnswer::Damaged);
    row("high byte of the checksum", "00F01FEE", LineAnswer::Damaged);
    row("checksum with its high byte first", "00F0EF1F", LineAnswer::Damaged);
    row("data", "01F01FEF", LineAnswer::Damaged);
    row("one byte in front", "FF00F01FEF", LineAnswer::Damaged);
    row("one byte behind", "00F01FEFFF", LineAnswer::Damaged);
    row("too long with a valid checksum", "00F000C113", LineAnswer::Damaged);
    row("too short with a valid checksum", "06C660", LineAnswer::Damaged);
}

void TestCliLineAnswer::Kinds()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, kind);
    QCOMPARE(static_cast<int>(Cli::Classify(answer)), kind);
}

QTEST_GUILESS_MAIN(TestCliLineAnswer)
#include "tst_clilineanswer.moc"
