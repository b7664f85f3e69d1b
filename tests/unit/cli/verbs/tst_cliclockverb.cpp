#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <csignal>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

/// A clock that runs.
class Clock
{
public:
    explicit Clock(const QByteArray& fields) { Set(fields); }

    void Set(const QByteArray& fields)
    {
        _set = QDateTime::fromString(QStringLiteral("20") + QString::fromLatin1(fields.toHex()),
                                     QStringLiteral("yyyyMMddHHmmss"));
        _time.start();
    }

    QByteArray Read() const
    {
        const QDateTime shown = _set.addMSecs(_time.elapsed());
        return QByteArray::fromHex(shown.toString(QStringLiteral("yyMMddHHmmss")).toLatin1());
    }

private:
    QDateTime _set; // on the peer's thread only
    QElapsedTimer _time;
};

Outcome RunClock(const std::vector<const char*>& arguments)
{
    std::vector<const char*> whole{"vesmar", "clock", LongTimeout};
    whole.insert(whole.end(), arguments.begin(), arguments.end());
    return RunVerb(whole);
}

} // namespace

class TestCliClockVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsTheClock();
    void ShowsAClockWithoutAValidDate();
    void SetsWhatTheInstrumentThenReports();
    void IsSentOnlyAfterTheClocksWereRead();
    void NowIsThisComputersTime();
    void InstrumentThatRefuses();
    void InstrumentThatKeepsItsTime();
    void ClockThatStandsStill();
    void LinkThatIsLost();
    void UpdateMode();
    void SignalEndsIt();
};

void TestCliClockVerb::ShowsTheClock()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const QDateTime shown(QDate(2024, 12, 31), QTime(23, 59, 58));
    const qint64 before = QDateTime::currentDateTime().secsTo(shown);
    const Outcome outcome = RunClock({"--json"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QJsonObject object = outcome.Objects().first();
    QCOMPARE(object.value(QStringLiteral("CurrentDateTime")).toString(),
             QStringLiteral("2024-12-31T23:59:58"));
    const auto difference = static_cast<qint64>(object.value(QStringLiteral("difference")).toDouble());
    const qint64 after = QDateTime::currentDateTime().secsTo(shown);
    constexpr qint64 AnHour = 3600; // of summer time, which a clock on the wall does not know
    QVERIFY2(difference <= before + AnHour + 1 && difference >= after - AnHour - 1,
             outcome.output.constData());

    const Outcome text = RunClock({});
    QVERIFY2(text.output.startsWith("Clock:            2024-12-31 23:59:58\nDifference:       "),
             text.output.constData());
    QVERIFY2(text.output.endsWith(" s behind this computer\n"), text.output.constData());
}

void TestCliClockVerb::ShowsAClockWithoutAValidDate()
{
    Answers answers;
    answers.currentDateTime = QByteArray::fromHex("261341256161");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunClock({"--json"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Objects().size(), 2);
    QVERIFY2(
        outcome.output.startsWith(R"({"CurrentDateTime":null,"difference":null,"event":"clock","time":)"),
        outcome.output.constData());
}

void TestCliClockVerb::SetsWhatTheInstrumentThenReports()
{
    Clock clock(QByteArray::fromHex("200102030400"));
    ScriptedPeer peer;
    peer.Answer([&clock](const QByteArray& request) {
        if (request.at(0) == 'r') {
            clock.Set(request.mid(1, 6));
        }
        return request.at(0) == 'R' ? WithChecksum(clock.Read()) : Answers().To(request);
    });
    const Outcome outcome = RunClock({"set", "2026-11-21T18:00:00", "--json"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QString shown = outcome.Objects().first().value(QStringLiteral("CurrentDateTime")).toString();
    QVERIFY2(shown > QStringLiteral("2026-11-21T18:00:00") && shown < QStringLiteral("2026-11-21T18:01"),
             qPrintable(shown));
}

void TestCliClockVerb::IsSentOnlyAfterTheClocksWereRead()
{
    Clock clock(QByteArray::fromHex("200102030400"));
    ScriptedPeer peer;
    peer.Answer([&clock](const QByteArray& request) {
        if (request.at(0) == 'r') {
            clock.Set(request.mid(1, 6));
        }
        return request.at(0) == 'R' ? WithChecksum(clock.Read()) : Answers().To(request);
    });
    const Outcome outcome = RunClock({"set", "2026-11-21", "18:00:00"});
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.startsWith("Clock:            2026-11-21 18:00:"), outcome.output.constData());
    QByteArrayList sent;
    for (const QByteArray& request : peer.RequestBytes()) {
        if (QByteArray("RTr").contains(request.at(0))) {
            sent.append(request.toHex());
        }
    }
    QVERIFY(sent.size() >= 4);
    QCOMPARE(sent.mid(0, 4), QByteArrayList({"52b77a", "54711a", "722611211800005859", "52b77a"}));
    QCOMPARE(sent.count("722611211800005859"), 1);
}

void TestCliClockVerb::NowIsThisComputersTime()
{
    for (const std::vector<const char*>& arguments : {std::vector<const char*>{"set"}, {"set", "now"}}) {
        QByteArray sent;
        ScriptedPeer peer;
        peer.Answer([&sent](const QByteArray& request) {
            if (request.at(0) == 'r') {
                sent = request.mid(1, 6);
                ::kill(::getpid(), SIGTERM);
            }
            return Answers().To(request);
        });
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1); // it has no fractions
        RunClock(arguments);
        const QDateTime set = QDateTime::fromString(QStringLiteral("20") + QString::fromLatin1(sent.toHex()),
                                                    QStringLiteral("yyyyMMddHHmmss"));
        QVERIFY2(before <= set && set <= QDateTime::currentDateTime().addSecs(1), sent.toHex().constData());
    }
}

void TestCliClockVerb::InstrumentThatRefuses()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) {
        return request.at(0) == 'r' ? Answers::Refusal() : Answers().To(request);
    });
    const Outcome outcome = RunClock({"set", "2026-11-21T18:00:00", "--json"});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("reason")).toString(), QStringLiteral("not-set"));
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument did not take the time 2026-11-21 18:00:00: its "
                        "clock shows 2024-12-31 23:59:58.\n"));
}

void TestCliClockVerb::InstrumentThatKeepsItsTime()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) {
        Answers answers;
        answers.currentDateTime = QByteArray::fromHex("261121180100");
        return answers.To(request);
    });
    const Outcome outcome = RunClock({"set", "2026-11-21T18:00:00"});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.contains("its clock shows 2026-11-21 18:01:00"), outcome.errors.constData());
}

/// What is told must come from the instrument, and the value set might not.
void TestCliClockVerb::ClockThatStandsStill()
{
    Answers answers;
    answers.currentDateTime = QByteArray::fromHex("261121180000");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunClock({"set", "2026-11-21T18:00:00", "--confirm-timeout", "2"});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument has not reported its clock as set and running.\n"));
}

void TestCliClockVerb::LinkThatIsLost()
{
    ScriptedPeer peer;
    std::atomic<bool> isLost{false};
    peer.Answer([&isLost](const QByteArray& request) {
        isLost = isLost || request.at(0) == 'r';
        return isLost ? Answers::Refusal() : Answers().To(request);
    });
    const Outcome outcome = RunClock({"set", "2026-11-21T18:00:00", "--confirm-timeout", "5", "--json"});
    QCOMPARE(outcome.status, 7);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("outcome")).toString(),
             QStringLiteral("link-lost"));
}

void TestCliClockVerb::UpdateMode()
{
    Answers answers;
    answers.status = QByteArray::fromHex("60FE");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunClock({"set"});
    QCOMPARE(outcome.status, 3);
    QVERIFY2(outcome.errors.contains("vesmar update IMAGE --confirmation FILE"), outcome.errors.constData());
}

void TestCliClockVerb::SignalEndsIt()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) {
        if (request.at(0) == 'r') {
            ::kill(::getpid(), SIGINT);
        }
        return Answers().To(request);
    });
    const Outcome outcome = RunClock({"set", "2024-12-31T23:59:58"});
    QCOMPARE(outcome.status, 128 + SIGINT);
    QCOMPARE(outcome.output + outcome.errors, QByteArray());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliClockVerb>(argc, argv);
}

#include "tst_cliclockverb.moc"
