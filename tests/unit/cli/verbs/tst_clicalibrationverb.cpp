#include <QtTest>

#include <csignal>
#include <functional>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

/// An instrument that takes a calibration date in calibration mode only, if at all.
class Calibrated
{
public:
    explicit Calibrated(bool isObstinate) : _isObstinate(isObstinate) {}

    QByteArray operator()(const QByteArray& request)
    {
        switch (request.at(0)) {
        case 's':
            _answers.status = QByteArray::fromHex(_isCalibrating ? "20FE" : "00FE");
            break;
        case 'x':
            _isCalibrating = request.at(1) == 1;
            break;
        case 't':
            if (_isObstinate || !_isCalibrating) {
                return Answers::Refusal();
            }
            _answers.calibrationDateTime = request.mid(1, 6);
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

Outcome RunCalibration(const std::vector<const char*>& arguments)
{
    std::vector<const char*> whole{"vesmar", "calibration", LongTimeout};
    whole.insert(whole.end(), arguments.begin(), arguments.end());
    return RunVerb(whole);
}

} // namespace

class TestCliCalibrationVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsTheDate();
    void SetsWhatTheInstrumentThenReports();
    void SetsTheDateThatItHas();
    void InstrumentThatRefuses();
    void SignalDoesNotLeaveItInCalibrationMode();
    void SignalBeforeItEndsIt();
};

void TestCliCalibrationVerb::ShowsTheDate()
{
    Calibrated calibrated(false);
    ScriptedPeer peer;
    peer.Answer(std::ref(calibrated));
    const Outcome text = RunCalibration({});
    QCOMPARE(text.status, 0);
    QCOMPARE(text.output, QByteArray("Last calibrated:  2023-01-02 00:00:00\n"));
    const Outcome json = RunCalibration({"--json"});
    QCOMPARE(json.Objects().size(), 2);
    QVERIFY2(json.output.startsWith(
                 R"({"CalibrationDateTime":"2023-01-02T00:00:00","event":"calibration","time":)"),
             json.output.constData());
}

void TestCliCalibrationVerb::SetsWhatTheInstrumentThenReports()
{
    Calibrated calibrated(false);
    ScriptedPeer peer;
    peer.Answer(std::ref(calibrated));
    const Outcome outcome = RunCalibration({"set", "2026-11-21", "--json"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.Objects().size(), 2);
    QVERIFY2(outcome.output.startsWith(
                 R"({"CalibrationDateTime":"2026-11-21T00:00:00","event":"calibration","time":)"),
             outcome.output.constData());
    QByteArrayList sent;
    for (const QByteArray& request : peer.RequestBytes()) {
        if (QByteArray("Txt").contains(request.at(0))) {
            sent.append(request.toHex());
        }
    }
    QCOMPARE(sent, QByteArrayList({"54711a", "7801d191", "74261121000000bf12", "7800f081", "54711a"}));
}

/// It reports the same as before, which must not be taken for a silence.
void TestCliCalibrationVerb::SetsTheDateThatItHas()
{
    Calibrated calibrated(false);
    ScriptedPeer peer;
    peer.Answer(std::ref(calibrated));
    const Outcome outcome = RunCalibration({"set", "2023-01-02"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, QByteArray("Last calibrated:  2023-01-02 00:00:00\n"));
}

void TestCliCalibrationVerb::InstrumentThatRefuses()
{
    Calibrated calibrated(true);
    ScriptedPeer peer;
    peer.Answer(std::ref(calibrated));
    const Outcome outcome = RunCalibration({"set", "2026-11-21", "--json"});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("reason")).toString(), QStringLiteral("not-set"));
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument did not take the date 2026-11-21: it was last "
                        "calibrated at 2023-01-02 00:00:00.\n"));
}

void TestCliCalibrationVerb::SignalDoesNotLeaveItInCalibrationMode()
{
    Calibrated calibrated(false);
    ScriptedPeer peer;
    peer.Answer([&calibrated](const QByteArray& request) {
        if (request.at(0) == 't') {
            ::kill(::getpid(), SIGINT);
        }
        return calibrated(request);
    });
    const Outcome outcome = RunCalibration({"set", "2026-11-21"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.output, QByteArray("Last calibrated:  2026-11-21 00:00:00\n"));
    QVERIFY2(outcome.errors.contains("waiting until it has left it (signal 2)"), outcome.errors.constData());
}

void TestCliCalibrationVerb::SignalBeforeItEndsIt()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray&) {
        ::kill(::getpid(), SIGTERM);
        return QByteArray();
    });
    const Outcome outcome = RunCalibration({"set", "2026-11-21"});
    QCOMPARE(outcome.status, 128 + SIGTERM);
    QCOMPARE(outcome.output + outcome.errors, QByteArray());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliCalibrationVerb>(argc, argv);
}

#include "tst_clicalibrationverb.moc"
