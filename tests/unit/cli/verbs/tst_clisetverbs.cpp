#include <QElapsedTimer>
#include <QtTest>

#include <functional>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

/// An instrument whose clock runs.
class Clocked
{
public:
    QByteArray operator()(const QByteArray& request)
    {
        if (request.at(0) == 'r') {
            _set = QDateTime::fromString(QString::fromLatin1("20" + request.mid(1, 6).toHex()),
                                         QStringLiteral("yyyyMMddHHmmss"));
            _time.start();
        }
        Answers answers;
        if (_time.isValid()) {
            const QDateTime shown = _set.addMSecs(_time.elapsed());
            answers.currentDate =
                WithChecksum(Wire::Bytes(shown.toString(QStringLiteral("yyMMddHHmmss")).toLatin1()));
        }
        return answers.To(request);
    }

    const QDateTime& Set() const { return _set; }

private:
    QDateTime _set;
    QElapsedTimer _time;
};

Instrument WithTime(const char* hexadecimal)
{
    Answers answers;
    answers.currentDate = WithChecksum(Wire::Bytes(hexadecimal));
    return Answering(answers);
}

/// An instrument that accepts a calibration date in calibration mode only, if at all.
class Calibrated
{
public:
    explicit Calibrated(bool isObstinate = false) : _isObstinate(isObstinate) {}

    QByteArray operator()(const QByteArray& request)
    {
        switch (request.at(0)) {
        case 's':
            _answers.status = _isCalibrating ? Wire::CalibrationModeStatus : Wire::IdleStatus;
            break;
        case 'x':
            _isCalibrating = request.at(1) == 1;
            break;
        case 't':
            if (_isObstinate || !_isCalibrating) {
                return Wire::Refusal;
            }
            _answers.calibrationDate = WithChecksum(request.mid(1, 6));
            break;
        default:
            break;
        }
        return _answers.To(request);
    }

private:
    Answers _answers;
    bool _isObstinate;
    bool _isCalibrating = false;
};

} // namespace

/// The verbs that change something at the instrument.
class TestCliSetVerbs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Ends_data();
    void Ends();
    void ClockIsShown();
    void ClockWithoutAValidDateIsShown();
    void ClockIsSetToWhatTheInstrumentThenReports();
    void ClockIsSentOnlyAfterTheClocksWereRead();
    void NowIsThisComputersTime_data();
    void NowIsThisComputersTime();
    void CalibrationIsShown();
    void CalibrationIsSetToWhatTheInstrumentThenReports();
    void CalibrationIsSetToTheDateThatItHas();
    void SignalDoesNotLeaveItInCalibrationMode();
    void RestartSaysHowLongItTook();
    void RestartBringsBackFromUpdateMode();
    void SignalEndsATextWithoutAWord();
};

void TestCliSetVerbs::Ends_data()
{
    AddEndColumns();
    const QByteArray setClock = "clock set 2026-11-21T18:00:00";
    AddEnd("clock refused", Refusing('r'), setClock, 4, "failed", "not-set",
           "vesmar: The instrument did not take the time 2026-11-21 18:00:00: its clock shows "
           "2024-03-07 14:05:09.\n");
    AddEnd("clock that keeps its time", WithTime("261121180100"), setClock, 4, "failed", "not-set",
           "its clock shows 2026-11-21 18:01:00");
    // The time that is shown must come from the instrument, and the one that was set may not.
    AddEnd("clock that stands still", WithTime("261121180000"), setClock + " --confirm-timeout 2", 4,
           "failed", "not-confirmed", "vesmar: The instrument has not reported the date as set. ");
    AddEnd("clock, link lost", LostAfter('r'), setClock + " --confirm-timeout 5", 7, "link-lost", "link-lost",
           "The link to it was lost");
    AddEnd("clock in update mode", InUpdateMode(), "clock set", 3, "update-mode", "update-mode",
           "vesmar update IMAGE --confirmation FILE");
    AddEnd("clock, signal", SignalAt('r', SIGINT), "clock set 2024-03-07T14:05:09", 128 + SIGINT,
           "interrupted", "signal", "");
    AddEnd("calibration refused", Calibrated(true), "calibration set 2026-11-21", 4, "failed", "not-set",
           "vesmar: The instrument did not take the date 2026-11-21: it was last calibrated at "
           "2024-02-15 00:00:00.\n");
    AddEnd("calibration, signal before", SignalAt('s', SIGTERM, Silent()), "calibration set 2026-11-21",
           128 + SIGTERM, "interrupted", "signal", "");
    AddEnd("restart, link lost", LostAfter('x'), "restart", 7, "link-lost", "link-lost",
           "not known whether the instrument has restarted"); // it goes on trying: no error yet
    AddEnd("restart into another mode", InUpdateMode(), "restart", 4, "update-mode", "update-mode",
           "vesmar update IMAGE --confirmation FILE");
    Answers running;
    running.status = Wire::Status(9, 7);
    AddEnd("stop, function that does not end", Answering(running), "stop", 6, "failed", "stop-not-confirmed",
           "It is not confirmed that the instrument has stopped");
    AddEnd("stop, no link", Silent(), "stop --timeout 0.3", 2, "failed", "no-answer",
           "The instrument did not answer within 0.3 s.");
    AddEnd("stop, signal", SignalAt('s', SIGINT, Answering(running)), "stop", 128 + SIGINT, "interrupted",
           "signal", "");
    AddEnd("restart, signal", SignalAt('x', SIGHUP), "restart", 128 + SIGHUP, "interrupted", "signal", "");
}

void TestCliSetVerbs::Ends()
{
    Outcome ended;
    CheckEnd(&ended);
}

void TestCliSetVerbs::ClockIsShown()
{
    const QDateTime shown(QDate(2024, 3, 7), QTime(14, 5, 9));
    const qint64 before = QDateTime::currentDateTime().secsTo(shown);
    const Outcome outcome = RunWith(Answering(), "clock --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.First("CurrentDateTime").toString(), QStringLiteral("2024-03-07T14:05:09"));
    const auto difference = static_cast<qint64>(outcome.First("difference").toDouble());
    const qint64 after = QDateTime::currentDateTime().secsTo(shown);
    constexpr qint64 AnHour = 3600; // of summer time, which a clock on the wall does not know
    QVERIFY2(difference <= before + AnHour + 1 && difference >= after - AnHour - 1,
             outcome.output.constData());

    const Outcome text = RunWith(Answering(), "clock");
    QVERIFY2(text.output.startsWith("Clock:            2024-03-07 14:05:09\nDifference:       "),
             text.output.constData());
    QVERIFY2(text.output.endsWith(" s behind this computer\n"), text.output.constData());
}

void TestCliSetVerbs::ClockWithoutAValidDateIsShown()
{
    const Outcome outcome = RunWith(WithTime("261341256161"), "clock --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Objects().size(), 2);
    QVERIFY2(
        outcome.output.startsWith(R"({"CurrentDateTime":null,"difference":null,"event":"clock","time":)"),
        outcome.output.constData());
}

void TestCliSetVerbs::ClockIsSetToWhatTheInstrumentThenReports()
{
    const Outcome outcome = RunWith(Clocked(), "clock set 2026-11-21T18:00:00 --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QString shown = outcome.First("CurrentDateTime").toString();
    QVERIFY2(shown > QStringLiteral("2026-11-21T18:00:00") && shown < QStringLiteral("2026-11-21T18:01"),
             qPrintable(shown));
}

void TestCliSetVerbs::ClockIsSentOnlyAfterTheClocksWereRead()
{
    const Outcome outcome = RunWith(Clocked(), "clock set 2026-11-21 18:00:00");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.startsWith("Clock:            2026-11-21 18:00:"), outcome.output.constData());
    const QByteArrayList sent = outcome.Sent("RTr");
    QCOMPARE(sent.mid(0, 4), QByteArrayList({"52b77a", "54711a", "722611211800005859", "52b77a"}));
    QCOMPARE(sent.count("722611211800005859"), 1);
}

void TestCliSetVerbs::NowIsThisComputersTime_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("by default") << QByteArray("clock set");
    QTest::newRow("in a word") << QByteArray("clock set now");
}

void TestCliSetVerbs::NowIsThisComputersTime()
{
    QFETCH(const QByteArray, line);
    Clocked clock;
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1); // it has no fractions
    RunWith(SignalAt('r', SIGTERM, std::ref(clock)), line);
    QVERIFY2(before <= clock.Set() && clock.Set() <= QDateTime::currentDateTime().addSecs(1),
             qPrintable(clock.Set().toString()));
}

void TestCliSetVerbs::CalibrationIsShown()
{
    const Outcome text = RunWith(Calibrated(), "calibration");
    QCOMPARE(text.status, 0);
    QCOMPARE(text.output, QByteArray("Last calibrated:  2024-02-15 00:00:00\n"));
    const Outcome json = RunWith(Calibrated(), "calibration --json");
    QCOMPARE(json.Objects().size(), 2);
    QVERIFY2(json.output.startsWith(
                 R"({"CalibrationDateTime":"2024-02-15T00:00:00","event":"calibration","time":)"),
             json.output.constData());
}

void TestCliSetVerbs::CalibrationIsSetToWhatTheInstrumentThenReports()
{
    const Outcome outcome = RunWith(Calibrated(), "calibration set 2026-11-21 --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.Objects().size(), 2);
    QCOMPARE(outcome.First("CalibrationDateTime").toString(), QStringLiteral("2026-11-21T00:00:00"));
    QCOMPARE(outcome.Sent("Txt"),
             QByteArrayList({"54711a", "7801d191", "74261121000000bf12", "7800f081", "54711a"}));
}

/// The instrument reports the same date as before, which must not count as silence.
void TestCliSetVerbs::CalibrationIsSetToTheDateThatItHas()
{
    const Outcome outcome = RunWith(Calibrated(), "calibration set 2024-02-15");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, QByteArray("Last calibrated:  2024-02-15 00:00:00\n"));
}

void TestCliSetVerbs::SignalDoesNotLeaveItInCalibrationMode()
{
    const Outcome outcome = RunWith(SignalAt('t', SIGINT, Calibrated()), "calibration set 2026-11-21");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, QByteArray("Last calibrated:  2026-11-21 00:00:00\n"));
    QVERIFY2(outcome.errors.contains("waiting until it has left it (signal 2)"), outcome.errors.constData());
}

void TestCliSetVerbs::RestartSaysHowLongItTook()
{
    const Outcome outcome = RunWith(Answering(), "restart --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.First("event").toString(), QStringLiteral("restart"));
    QVERIFY(outcome.First("seconds").toDouble() >= 2);
    const int restart = outcome.requests.indexOf(Wire::ChangeToNormalMode);
    QVERIFY(restart > 0);
    QVERIFY(outcome.requests.indexOf(Wire::ReadVersion, restart) > 0);

    const Outcome text = RunWith(Answering(), "restart");
    const QRegularExpression form(
        QStringLiteral(R"(\AThe instrument has restarted; that took \d+\.\d s\.\n\z)"));
    QVERIFY2(form.match(QString::fromUtf8(text.output)).hasMatch(), text.output.constData());
}

void TestCliSetVerbs::RestartBringsBackFromUpdateMode()
{
    const Instrument instrument = [isNormal = false](const QByteArray& request) mutable {
        isNormal = isNormal || request.at(0) == 'x';
        return isNormal ? Answers().To(request) : InUpdateMode()(request);
    };
    const Outcome outcome = RunWith(instrument, "restart");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliSetVerbs::SignalEndsATextWithoutAWord()
{
    const Outcome outcome = RunWith(SignalAt('x', SIGHUP), "restart");
    QCOMPARE(outcome.status, 128 + SIGHUP);
    QCOMPARE(outcome.output + outcome.errors, QByteArray());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliSetVerbs>(argc, argv);
}

#include "tst_clisetverbs.moc"
