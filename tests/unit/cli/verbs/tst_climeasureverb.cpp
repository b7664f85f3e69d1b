#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <functional>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

/// An instrument with a function that is prepared and started at once, and has a result whenever it runs.
class Measurable
{
public:
    /// The function's number. A single one is complete with its result.
    Measurable(char function, bool isSingle) : _function(function), _isSingle(isSingle) {}

    QByteArray operator()(const QByteArray& request)
    {
        switch (request.at(0)) {
        case 'P':
            Enter("F4");
            break;
        case 'S':
            Enter("F7");
            break;
        case 's':
            return Status();
        case 'e':
            _hasResult = false;
            // 0.5, 230.5, 0.25, 2, 4 and 0 in little-endian single precision.
            return WithChecksum(QByteArray::fromHex("0000003F"
                                                    "00806643"
                                                    "0000803E"
                                                    "00000040"
                                                    "00008040"
                                                    "00000000"));
        case 'h':
            Stop();
            break;
        default:
            break;
        }
        return _answers.To(request);
    }

    /// The function is active, with this error and state.
    void Enter(const QByteArray& errorAndState)
    {
        _answers.status = QByteArray(1, _function) + QByteArray::fromHex(errorAndState);
        _isSeenRunning = false;
    }

private:
    /// What runs is terminated; what does not any more is left.
    void Stop()
    {
        const bool isRunning = _answers.status.endsWith('\xF7');
        _answers.status = isRunning ? QByteArray(1, _function) + '\xF9' : QByteArray::fromHex("00FE");
        _hasResult = false;
    }

    /// There is a result after the first status of a function that runs.
    QByteArray Status()
    {
        if (_answers.status.endsWith('\xF7')) {
            _hasResult = _hasResult || _isSeenRunning;
            _isSeenRunning = true;
        }
        QByteArray status = _answers.status;
        if (_hasResult) {
            status[0] = static_cast<char>(status.at(0) | 0x80);
        }
        if (_hasResult && _isSingle) {
            status[1] = '\xF2';
            _answers.status = status.mid(1).prepend(_function);
        }
        return WithChecksum(status);
    }

    char _function;
    bool _isSingle;
    bool _isSeenRunning = false;
    bool _hasResult = false;
    Answers _answers;
};

Measurable Rln()
{
    return {1, true};
}

Measurable It()
{
    return {7, false};
}

QByteArrayList CommandsTo(const ScriptedPeer& peer)
{
    QByteArrayList commands;
    for (const QByteArray& request : peer.RequestBytes()) {
        if (QByteArray("PSh").contains(request.at(0))) {
            commands.append(request.toHex());
        }
    }
    return commands;
}

int CountOf(const char* event, const Outcome& outcome)
{
    int count = 0;
    for (const QJsonObject& object : outcome.Objects()) {
        count += object.value(QStringLiteral("event")) == QLatin1String(event) ? 1 : 0;
    }
    return count;
}

QString WordOf(const char* field, const Outcome& outcome)
{
    return outcome.Objects().last().value(QLatin1String(field)).toString();
}

} // namespace

class TestCliMeasureVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SingleMeasurement();
    void ContinuousMeasurement();
    void ReadingsGoToTheFile();
    void FailureIsExplained();
    void FailureIsExplainedAsJson();
    void PreparationThatTakesTooLong();
    void SignalAbortsIt();
    void SignalBeforeTheLinkIsUp();
    void StopThatIsNotConfirmed();
    void LinkThatIsLost();
    void UpdateMode();
};

void TestCliMeasureVerb::SingleMeasurement()
{
    Measurable rln = Rln();
    ScriptedPeer peer;
    peer.Answer(std::ref(rln));
    const Outcome outcome = RunVerb({"vesmar", "measure", "rln", "--json", LongTimeout});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(CountOf("reading", outcome), 1);
    QVERIFY(CountOf("status", outcome) >= 5);
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QStringLiteral("function")).toString(), QStringLiteral("rln"));
    QVERIFY(result.value(QStringLiteral("stopped")).toBool());
    const QJsonObject readings{{QStringLiteral("resistance"), 0.5},
                               {QStringLiteral("voltage"), 230.5},
                               {QStringLiteral("current"), 0.25},
                               {QStringLiteral("ISUB voltage"), 2},
                               {QStringLiteral("ISUB current"), 4}};
    QCOMPARE(result.value(QStringLiteral("readings")).toObject(), readings);
    QCOMPARE(CommandsTo(peer), (QByteArrayList{"5001ff0100ffffffffea32", "53966a", "68aeed"}));
}

void TestCliMeasureVerb::ContinuousMeasurement()
{
    Measurable it = It();
    ScriptedPeer peer;
    peer.Answer(std::ref(it));
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--time", "1", LongTimeout});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QVERIFY2(outcome.output.count(" s  current 0.5\n") > 1, outcome.output.constData());
    QVERIFY2(outcome.output.endsWith("\nMeasurement it done. The instrument is confirmed to have stopped.\n"
                                     "  current           0.5\n"),
             outcome.output.constData());
}

void TestCliMeasureVerb::ReadingsGoToTheFile()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("readings.csv")));
    const QByteArray option = "--csv=" + QFile::encodeName(file.fileName());
    Measurable it = It();
    ScriptedPeer peer;
    peer.Answer(std::ref(it));
    const Outcome outcome =
        RunVerb({"vesmar", "measure", "it", "--time=1", "--json", option.constData(), LongTimeout});
    QCOMPARE(outcome.status, 0);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList rows = file.readAll().split('\n');
    QCOMPARE(rows.size(), CountOf("reading", outcome) + 2);
    const QRegularExpression row(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z,\d+\.\d{3},0\.5\z)"));
    for (const QByteArray& line : rows.mid(1, rows.size() - 2)) {
        QVERIFY2(row.match(QString::fromLatin1(line)).hasMatch(), line.constData());
    }
}

void TestCliMeasureVerb::FailureIsExplained()
{
    Measurable it = It();
    ScriptedPeer peer;
    peer.Answer([&it](const QByteArray& request) {
        const QByteArray answer = it(request);
        if (request.at(0) == 'S') {
            it.Enter("F6");
        }
        return answer;
    });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", LongTimeout});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: Measurement it failed: StartFailed (201): the instrument could not start "
                        "the measurement. The instrument is confirmed to have stopped.\n"
                        "  Likely causes   the instrument fell back while it started, such as for a missing "
                        "mains voltage\n"
                        "                  the instrument refused the start\n"
                        "  Next step       Check the mains supply and the connection of the appliance, then "
                        "prepare and start again.\n"));
}

void TestCliMeasureVerb::FailureIsExplainedAsJson()
{
    Measurable it = It();
    ScriptedPeer peer;
    peer.Answer([&it](const QByteArray& request) {
        const QByteArray answer = it(request);
        if (request.at(0) == 'P') {
            it.Enter("F3");
        }
        return answer;
    });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--json", LongTimeout});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.errors.count('\n'), 1);
    const QJsonObject error = outcome.Objects().last().value(QStringLiteral("error")).toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("PrepareFailed"));
    QCOMPARE(error.value(QStringLiteral("nextStep")).toString(),
             QStringLiteral("Check the settings and the connection of the appliance, then prepare again."));
    QVERIFY(outcome.Objects().last().value(QStringLiteral("reason")).isNull());
}

void TestCliMeasureVerb::PreparationThatTakesTooLong()
{
    Measurable it = It();
    ScriptedPeer peer;
    peer.Answer([&it](const QByteArray& request) {
        const QByteArray answer = it(request);
        if (request.at(0) == 'P') {
            it.Enter("F1");
        }
        return answer;
    });
    const Outcome outcome =
        RunVerb({"vesmar", "measure", "it", "--prepare-timeout=0.5", "--json", LongTimeout});
    QCOMPARE(outcome.status, 4);
    QCOMPARE(WordOf("reason", outcome), QStringLiteral("not-prepared"));
    QVERIFY2(outcome.errors.contains("did not prepare it in time"), outcome.errors.constData());
    QCOMPARE(CommandsTo(peer).last(), QByteArray("68aeed"));
}

void TestCliMeasureVerb::SignalAbortsIt()
{
    Measurable it = It();
    std::atomic<int> readings{0};
    ScriptedPeer peer;
    peer.Answer([&it, &readings](const QByteArray& request) {
        if (request.at(0) == 'e' && ++readings == 3) {
            ::kill(::getpid(), SIGINT);
        }
        return it(request);
    });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--time=unlimited", "--json", LongTimeout});
    QCOMPARE(outcome.status, 5);
    QCOMPARE(WordOf("outcome", outcome), QStringLiteral("aborted"));
    QVERIFY(outcome.Objects().last().value(QStringLiteral("reason")).isNull());
    QVERIFY2(outcome.errors.startsWith("vesmar: Aborting the measurement (signal 2);"),
             outcome.errors.constData());
    QCOMPARE(CommandsTo(peer).last(), QByteArray("68aeed"));
}

void TestCliMeasureVerb::SignalBeforeTheLinkIsUp()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray&) {
        ::kill(::getpid(), SIGTERM);
        return QByteArray();
    });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--json", LongTimeout});
    QCOMPARE(outcome.status, 128 + SIGTERM);
    QCOMPARE(WordOf("outcome", outcome), QStringLiteral("interrupted"));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliMeasureVerb::StopThatIsNotConfirmed()
{
    Measurable rln = Rln();
    ScriptedPeer peer;
    peer.Answer([&rln](const QByteArray& request) {
        return request.at(0) == 'h' ? Answers::Acknowledge() : rln(request);
    });
    const Outcome outcome =
        RunVerb({"vesmar", "measure", "rln", "--stop-timeout=0.5", "--json", LongTimeout});
    QCOMPARE(outcome.status, 6);
    QCOMPARE(WordOf("outcome", outcome), QStringLiteral("failed"));
    QCOMPARE(WordOf("reason", outcome), QStringLiteral("stop-not-confirmed"));
    QVERIFY(!outcome.Objects().last().value(QStringLiteral("stopped")).toBool(true));
    QVERIFY2(outcome.errors.contains("Measurement rln done. STOP NOT CONFIRMED"), outcome.errors.constData());
}

void TestCliMeasureVerb::LinkThatIsLost()
{
    Measurable it = It();
    std::atomic<bool> isLost{false};
    ScriptedPeer peer;
    peer.Answer([&it, &isLost](const QByteArray& request) {
        const QByteArray answer = isLost ? Answers::Refusal() : it(request);
        isLost = isLost || request.at(0) == 'e';
        return answer;
    });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--stop-timeout=1", "--json", LongTimeout});
    QCOMPARE(outcome.status, 7);
    QCOMPARE(WordOf("outcome", outcome), QStringLiteral("link-lost"));
    QCOMPARE(WordOf("reason", outcome), QStringLiteral("link-lost"));
    QVERIFY(CountOf("error", outcome) > 0);
    QVERIFY2(outcome.errors.contains("the state of the instrument is unknown"), outcome.errors.constData());
}

void TestCliMeasureVerb::UpdateMode()
{
    Answers answers;
    answers.status = QByteArray::fromHex("60FE");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunVerb({"vesmar", "measure", "it", "--json", LongTimeout});
    QCOMPARE(outcome.status, 3);
    QCOMPARE(WordOf("outcome", outcome), QStringLiteral("update-mode"));
    QCOMPARE(CommandsTo(peer), QByteArrayList());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliMeasureVerb>(argc, argv);
}

#include "tst_climeasureverb.moc"
