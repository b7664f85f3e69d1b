#include "cli/verbs/explainverb.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include "unit/cli/verbs/verbtest.h"

class TestCliExplainVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ExplainsOneError();
    void ExplainsOneErrorAsJson();
    void ListsEveryError();
    void ListsEveryErrorAsJson();
    void BadUse_data();
    void BadUse();
    void OutputThatCannotBeWritten();
};

void TestCliExplainVerb::ExplainsOneError()
{
    const Outcome outcome = RunVerb({"vesmar", "explain", "304"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(
        outcome.output,
        QByteArray("UpdateConfirmationFailed (304)\n"
                   "  What happened   the instrument refused the closing confirmation of the update\n"
                   "  Likely causes   the confirmation file belongs to another image\n"
                   "                  the image arrived damaged\n"
                   "  Next step       The instrument waits in update mode: update it again with the image "
                   "and the confirmation that belong together.\n"));
}

void TestCliExplainVerb::ExplainsOneErrorAsJson()
{
    const Outcome outcome = RunVerb({"vesmar", "explain", "noresponse", "--json"});
    QCOMPARE(outcome.status, 0);
    const QList<QJsonObject> objects = outcome.Objects();
    QCOMPARE(objects.size(), 2);
    QCOMPARE(objects.first().keys(),
             (QStringList{QStringLiteral("causes"), QStringLiteral("event"), QStringLiteral("meaning"),
                          QStringLiteral("name"), QStringLiteral("nextStep"), QStringLiteral("number"),
                          QStringLiteral("time")}));
    QCOMPARE(objects.first().value(QLatin1String("event")).toString(), QStringLiteral("explanation"));
    QCOMPARE(objects.first().value(QLatin1String("name")).toString(), QStringLiteral("NoResponse"));
    QCOMPARE(objects.first().value(QLatin1String("number")).toInt(), 100);
    QVERIFY(objects.first().value(QLatin1String("causes")).isArray());
}

void TestCliExplainVerb::ListsEveryError()
{
    const Outcome outcome = RunVerb({"vesmar", "explain"});
    QCOMPARE(outcome.status, 0);
    const QList<QByteArray> lines = outcome.output.trimmed().split('\n');
    QCOMPARE(lines.size(), 54);
    QVERIFY2(lines.last().startsWith("534  RCDDeviceError14 "), lines.last().constData());
}

void TestCliExplainVerb::ListsEveryErrorAsJson()
{
    const QList<QJsonObject> objects = RunVerb({"vesmar", "explain", "--json"}).Objects();
    QCOMPARE(objects.size(), 54 + 1);
    QCOMPARE(objects.first().value(QLatin1String("number")).toInt(-1), 0);
    QCOMPARE(objects.at(53).value(QLatin1String("number")).toInt(), 534);
    QCOMPARE(objects.last().value(QLatin1String("event")).toString(), QStringLiteral("result"));
}

void TestCliExplainVerb::BadUse_data()
{
    QTest::addColumn<QByteArray>("argument");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("unknown number") << QByteArray("305") << QByteArray("there is no error \"305\"");
    QTest::newRow("unknown name") << QByteArray("Fire\n") << QByteArray("there is no error \"Fire\\x0a\"");
    QTest::newRow("option of the link") << QByteArray("--trace") << QByteArray("--trace");
}

void TestCliExplainVerb::BadUse()
{
    QFETCH(const QByteArray, argument);
    QFETCH(const QByteArray, complaint);
    const Outcome outcome = RunVerb({"vesmar", "explain", argument.constData()});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains(complaint), outcome.errors.constData());
    QVERIFY(outcome.errors.contains("Usage: vesmar explain"));
}

void TestCliExplainVerb::OutputThatCannotBeWritten()
{
    const int full = ::open("/dev/full", O_WRONLY);
    QVERIFY(full >= 0);
    const Outcome outcome = RunVerb({"vesmar", "explain", "100"}, full);
    ::close(full);
    QCOMPARE(outcome.status, 3);
    QVERIFY2(outcome.errors.contains("cannot write the output"), outcome.errors.constData());
}

QTEST_GUILESS_MAIN(TestCliExplainVerb)
#include "tst_cliexplainverb.moc"
