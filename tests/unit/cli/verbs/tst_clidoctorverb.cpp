#include <QJsonArray>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "support/serialdevice.h"
#include "unit/cli/verbs/verbtest.h"

class TestCliDoctorVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SoundLink();
    void SoundLinkAsJson();
    void AsksOnlyForTheStatus();
    void GivesUpALineThatBreaks();
    void MissingDevice();
    void DeviceThatIsNoTerminal();
    void BadUse_data();
    void BadUse();
    void OutputThatCannotBeWritten();
    void OutputThatNobodyReads();
};

void TestCliDoctorVerb::SoundLink()
{
    ScriptedPeer peer;
    peer.AnswerAlways(QByteArray::fromHex("00FED10E"));
    const Outcome outcome = RunVerb({"vesmar", "doctor"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QVERIFY2(outcome.output.startsWith("Device:           /dev/ttycommunication leads to " +
                                       peer.DevicePath() + ", a terminal\nPermissions:      owner "),
             outcome.output.constData());
    QVERIFY2(outcome.output.contains("of 50 requests 50 proper, 0 refused, 0 damaged, 0 silent\n"),
             outcome.output.constData());
    QVERIFY2(
        outcome.output.endsWith("\nThe link is sound, and the instrument is in its normal mode and reports "
                                "no error. There is nothing to be done.\n"),
        outcome.output.constData());
}

void TestCliDoctorVerb::SoundLinkAsJson()
{
    ScriptedPeer peer;
    peer.AnswerAlways(QByteArray::fromHex("00FED10E"));
    const Outcome outcome = RunVerb({"vesmar", "doctor", "--json"});
    QCOMPARE(outcome.status, 0);
    QStringList events;
    for (const QJsonObject& object : outcome.Objects()) {
        events.append(object.value(QLatin1String("event")).toString());
        QVERIFY(QDateTime::fromString(object.value(QLatin1String("time")).toString(), Qt::ISODateWithMs)
                    .isValid());
    }
    QCOMPARE(events,
             (QStringList{QStringLiteral("device"), QStringLiteral("permissions"), QStringLiteral("holders"),
                          QStringLiteral("answers"), QStringLiteral("condition"), QStringLiteral("result")}));
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QLatin1String("outcome")).toString(), QStringLiteral("done"));
    QCOMPARE(result.value(QLatin1String("status")).toInt(-1), 0);
    QVERIFY(result.value(QLatin1String("reason")).isNull());
    QVERIFY(result.value(QLatin1String("error")).isNull());
}

void TestCliDoctorVerb::AsksOnlyForTheStatus()
{
    ScriptedPeer peer;
    peer.AnswerAlways(QByteArray::fromHex("214334"));
    QCOMPARE(RunVerb({"vesmar", "doctor"}).status, 2);
    const QList<QByteArray> requests = peer.RequestBytes();
    QCOMPARE(requests.size(), 50);
    QCOMPARE(requests.count(QByteArray::fromHex("73F44E")), 50);
}

void TestCliDoctorVerb::GivesUpALineThatBreaks()
{
    ScriptedPeer peer;
    peer.AnswerAlways(QByteArray::fromHex("00FED10E"));
    FailSerialDeviceReads(3);
    const Outcome outcome = RunVerb({"vesmar", "doctor", "--json"});
    QCOMPARE(outcome.status, 4);
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QLatin1String("reason")).toString(), QStringLiteral("line-broken"));
    QVERIFY2(outcome.output.contains("\"asked\":3,"), outcome.output.constData());
}

void TestCliDoctorVerb::MissingDevice()
{
    RedirectSerialDevice({});
    const Outcome outcome = RunVerb({"vesmar", "doctor", "--json"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.Objects().size(), 2);
    QCOMPARE(outcome.Objects().first().value(QLatin1String("exists")), QJsonValue(false));
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QLatin1String("reason")).toString(), QStringLiteral("device-missing"));
    QCOMPARE(result.value(QLatin1String("outcome")).toString(), QStringLiteral("failed"));
}

void TestCliDoctorVerb::DeviceThatIsNoTerminal()
{
    RedirectSerialDevice("/dev/null");
    const int holder = ::open("/dev/null", O_RDONLY);
    const Outcome outcome = RunVerb({"vesmar", "doctor", "--json"});
    ::close(holder);
    QCOMPARE(outcome.status, 2);
    QVERIFY2(!outcome.output.contains("\"holders\""), outcome.output.constData());
    RedirectSerialDevice({});
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QLatin1String("reason")).toString(), QStringLiteral("device-unusable"));
}

void TestCliDoctorVerb::BadUse_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::newRow("option of the library") << QByteArray("--trace");
    QTest::newRow("time limit") << QByteArray("--timeout=3");
    QTest::newRow("something else") << QByteArray("now");
}

void TestCliDoctorVerb::BadUse()
{
    QFETCH(const QByteArray, argument);
    const Outcome outcome = RunVerb({"vesmar", "doctor", argument.constData()});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains("Usage: vesmar doctor [--json]"), outcome.errors.constData());
}

void TestCliDoctorVerb::OutputThatCannotBeWritten()
{
    const ScriptedPeer peer;
    const int full = ::open("/dev/full", O_WRONLY);
    QVERIFY(full >= 0);
    const Outcome outcome = RunVerb({"vesmar", "doctor"}, full);
    ::close(full);
    QCOMPARE(outcome.status, 3);
    QCOMPARE(outcome.errors.count("cannot write the output"), 1);
    QVERIFY(peer.Requests().isEmpty());
}

void TestCliDoctorVerb::OutputThatNobodyReads()
{
    std::signal(SIGPIPE, SIG_IGN); // as the program does
    const ScriptedPeer peer;
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    ::close(ends[0]);
    const Outcome outcome = RunVerb({"vesmar", "doctor"}, ends[1]);
    ::close(ends[1]);
    QCOMPARE(outcome.status, 141);
    QCOMPARE(outcome.errors, QByteArray());
}

QTEST_GUILESS_MAIN(TestCliDoctorVerb)
#include "tst_clidoctorverb.moc"
