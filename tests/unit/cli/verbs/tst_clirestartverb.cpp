#include <QtTest>

#include <csignal>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

} // namespace

class TestCliRestartVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SaysHowLongItTook();
    void BringsBackFromUpdateMode();
    void LinkThatIsLost();
    void InstrumentThatStaysInAnotherMode();
    void SignalEndsIt();
};

void TestCliRestartVerb::SaysHowLongItTook()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunVerb({"vesmar", "restart", "--json", LongTimeout});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.Objects().first().value(QStringLiteral("event")).toString(), QStringLiteral("restart"));
    QVERIFY(outcome.Objects().first().value(QStringLiteral("seconds")).toDouble() >= 2);
    const QList<QByteArray> requests = peer.RequestBytes();
    const int restart = requests.indexOf(QByteArray::fromHex("7800F081"));
    QVERIFY(restart > 0);
    QVERIFY(requests.indexOf(QByteArray::fromHex("57122A"), restart) > 0);

    const Outcome text = RunVerb({"vesmar", "restart", LongTimeout});
    const QRegularExpression form(
        QStringLiteral(R"(\AThe instrument has restarted; that took \d+\.\d s\.\n\z)"));
    QVERIFY2(form.match(QString::fromUtf8(text.output)).hasMatch(), text.output.constData());
}

void TestCliRestartVerb::BringsBackFromUpdateMode()
{
    bool isNormal = false;
    ScriptedPeer peer;
    peer.Answer([&isNormal](const QByteArray& request) {
        isNormal = isNormal || request.at(0) == 'x';
        Answers answers;
        answers.status = QByteArray::fromHex(isNormal ? "00FE" : "60FE");
        return answers.To(request);
    });
    const Outcome outcome = RunVerb({"vesmar", "restart", LongTimeout});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliRestartVerb::LinkThatIsLost()
{
    bool isLost = false;
    ScriptedPeer peer;
    peer.Answer([&isLost](const QByteArray& request) {
        isLost = isLost || request.at(0) == 'x';
        return isLost ? Answers::Refusal() : Answers().To(request);
    });
    const Outcome outcome = RunVerb({"vesmar", "restart", "--json", LongTimeout});
    QCOMPARE(outcome.status, 7);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("outcome")).toString(),
             QStringLiteral("link-lost"));
    QVERIFY(outcome.Objects().last().value(QStringLiteral("error")).isNull()); // it goes on trying
    QVERIFY2(outcome.errors.contains("not known whether the instrument has restarted"),
             outcome.errors.constData());
}

void TestCliRestartVerb::InstrumentThatStaysInAnotherMode()
{
    Answers answers;
    answers.status = QByteArray::fromHex("60FE");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunVerb({"vesmar", "restart", "--confirm-timeout", "4", LongTimeout});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument has not come back in its normal mode in time.\n"));
}

void TestCliRestartVerb::SignalEndsIt()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) {
        if (request.at(0) == 'x') {
            ::kill(::getpid(), SIGHUP);
        }
        return Answers().To(request);
    });
    const Outcome outcome = RunVerb({"vesmar", "restart", LongTimeout});
    QCOMPARE(outcome.status, 128 + SIGHUP);
    QCOMPARE(outcome.output + outcome.errors, QByteArray());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliRestartVerb>(argc, argv);
}

#include "tst_clirestartverb.moc"
