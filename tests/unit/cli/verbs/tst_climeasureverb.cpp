#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

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
            return WithChecksum(Wire::Bytes("0000003F"
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
        _status = QByteArray(1, _function) + QByteArray::fromHex(errorAndState);
        _isSeenRunning = false;
    }

private:
    /// What runs is terminated; what does not any more is left.
    void Stop()
    {
        const bool isRunning = _status.endsWith('\xF7');
        _status = isRunning ? QByteArray(1, _function) + '\xF9' : Wire::Bytes("00fe");
        _hasResult = false;
    }

    /// There is a result after the first status of a function that runs.
    QByteArray Status()
    {
        if (_status.endsWith('\xF7')) {
            _hasResult = _hasResult || _isSeenRunning;
            _isSeenRunning = true;
        }
        QByteArray status = _status;
        if (_hasResult) {
            status[0] = static_cast<char>(status.at(0) | 0x80);
        }
        if (_hasResult && _isSingle) {
            status[1] = '\xF2';
            _status = status.mid(1).prepend(_function);
        }
        return WithChecksum(status);
    }

    char _function;
    bool _isSingle;
    bool _isSeenRunning = false;
    bool _hasResult = false;
    Answers _answers;
    QByteArray _status = Wire::Bytes("00fe"); ///< Without its checksum.
};

Measurable Rln()
{
    return {1, true};
}

Measurable It()
{
    return {7, false};
}

/// An instrument that falls into another state after it has answered this command.
Instrument Falling(char command, const char* errorAndState)
{
    return [it = It(), command, errorAndState](const QByteArray& request) mutable {
        const QByteArray answer = it(request);
        if (request.at(0) == command) {
            it.Enter(errorAndState);
        }
        return answer;
    };
}

Instrument ThatDoesNotStop()
{
    return [rln = Rln()](const QByteArray& request) mutable {
        return request.at(0) == 'h' ? Wire::Acknowledge : rln(request);
    };
}

} // namespace

class TestCliMeasureVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Ends_data();
    void Ends();
    void SingleMeasurement();
    void ContinuousMeasurement();
    void ReadingsGoToTheFile();
    void FailureIsExplained();
    void FailureIsExplainedAsJson();
    void SignalAbortsIt();
};

void TestCliMeasureVerb::Ends_data()
{
    AddEndColumns();
    QTest::addColumn<bool>("stopped");
    QTest::addColumn<QByteArray>("lastCommand");
    const QByteArray none;
    const QByteArray stop = "68aeed";
    AddEnd("preparation that lasts too long", Falling('P', "F1"), "measure it --prepare-timeout=0.5", 4,
           "failed", "not-prepared", "did not prepare the measurement in time")
        << true << stop;
    AddEnd("stop that is not confirmed", ThatDoesNotStop(), "measure rln --stop-timeout=0.5", 6, "failed",
           "stop-not-confirmed", "Measurement rln done. STOP NOT CONFIRMED")
        << false << stop;
    AddEnd("link that is lost", LostAfter('e', It()), "measure it --stop-timeout=1", 7, "link-lost",
           "link-lost", "the state of the instrument is unknown")
        << false << QByteArray("53966a");
    AddEnd("signal before the link is up", SignalAt('s', SIGTERM, Silent()), "measure it", 128 + SIGTERM,
           "interrupted", "signal", "")
        << false << none;
    AddEnd("update mode", InUpdateMode(), "measure it", 3, "update-mode", "update-mode",
           "vesmar update IMAGE --confirmation FILE")
        << false << none;
}

void TestCliMeasureVerb::Ends()
{
    Outcome ended;
    CheckEnd(&ended);
    QTEST(ended.Result("stopped").toBool(), "stopped");
    QTEST(ended.Sent("PSh").isEmpty() ? QByteArray() : ended.Sent("PSh").last(), "lastCommand");
}

void TestCliMeasureVerb::SingleMeasurement()
{
    const Outcome outcome = RunWith(Rln(), "measure rln --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.CountOf("reading"), 1);
    QVERIFY(outcome.CountOf("status") >= 5);
    QCOMPARE(outcome.Result("function").toString(), QStringLiteral("rln"));
    QVERIFY(outcome.Result("stopped").toBool());
    const QJsonObject readings{{QStringLiteral("resistance"), 0.5},
                               {QStringLiteral("voltage"), 230.5},
                               {QStringLiteral("current"), 0.25},
                               {QStringLiteral("ISUB voltage"), 2},
                               {QStringLiteral("ISUB current"), 4}};
    QCOMPARE(outcome.Result("readings").toObject(), readings);
    QCOMPARE(outcome.Sent("PSh"), (QByteArrayList{"5001ff0100ffffffffea32", "53966a", "68aeed"}));
}

void TestCliMeasureVerb::ContinuousMeasurement()
{
    const Outcome outcome = RunWith(It(), "measure it --time 1");
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
    const Outcome outcome =
        RunWith(It(), "measure it --time=1 --json --csv=" + QFile::encodeName(file.fileName()));
    QCOMPARE(outcome.status, 0);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList rows = file.readAll().split('\n');
    QCOMPARE(rows.size(), outcome.CountOf("reading") + 2);
    const QRegularExpression row(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z,\d+\.\d{3},0\.5\z)"));
    for (const QByteArray& line : rows.mid(1, rows.size() - 2)) {
        QVERIFY2(row.match(QString::fromLatin1(line)).hasMatch(), line.constData());
    }
}

void TestCliMeasureVerb::FailureIsExplained()
{
    const Outcome outcome = RunWith(Falling('S', "F6"), "measure it");
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
    const Outcome outcome = RunWith(Falling('P', "F3"), "measure it --json");
    QCOMPARE(outcome.status, 4);
    QCOMPARE(outcome.errors.count('\n'), 1);
    QVERIFY(outcome.CountOf("error") > 0);
    const QJsonObject error = outcome.Result("error").toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("PrepareFailed"));
    QCOMPARE(error.value(QStringLiteral("nextStep")).toString(),
             QStringLiteral("Check the settings and the connection of the appliance, then prepare again."));
    QVERIFY(outcome.Result("reason").isNull());
}

void TestCliMeasureVerb::SignalAbortsIt()
{
    const Outcome outcome = RunWith(SignalAt('e', SIGINT, It(), 3), "measure it --time=unlimited --json");
    QCOMPARE(outcome.status, 5);
    QCOMPARE(outcome.Result("outcome").toString(), QStringLiteral("aborted"));
    QVERIFY(outcome.Result("reason").isNull());
    QVERIFY2(outcome.errors.startsWith("vesmar: Aborting the measurement (signal 2);"),
             outcome.errors.constData());
    QCOMPARE(outcome.Sent("PSh").last(), QByteArray("68aeed"));
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliMeasureVerb>(argc, argv);
}

#include "tst_climeasureverb.moc"
