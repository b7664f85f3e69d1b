#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <csignal>
#include <functional>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

/// An instrument that takes firmware in update mode, and has a newer version afterwards.
class Updatable
{
public:
    QByteArray operator()(const QByteArray& request)
    {
        switch (request.at(0)) {
        case 'x':
            _answers.status = QByteArray::fromHex(request.at(1) == 3 ? "60FE" : "00FE");
            break;
        case 'V':
            return WithChecksum("ready");
        case 'Z':
            _answers.status = QByteArray::fromHex("00FE");
            _answers.version = "ABC4102048151060302" + QByteArray("2016");
            break;
        default:
            break;
        }
        return _answers.To(request);
    }

private:
    Answers _answers;
};

} // namespace

class TestCliUpdateVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void SendsEverySectorAndTheConfirmation_data();
    void SendsEverySectorAndTheConfirmation();
    void FilesAreCheckedBeforeAnythingIsSent();
    void SignalBeforeTheFirstSectorEndsIt();
    void SignalWhileSectorsAreSentIsRefused_data();
    void SignalWhileSectorsAreSentIsRefused();
    void InstrumentThatOnlyTakesFirmware();
    void InstrumentThatDoesNotChangeItsMode();
    void InstrumentThatDoesNotComeBack();
    void RefusalIsExplained();
    void InstrumentThatStaysInUpdateMode();
    void LinkThatIsLostBeforeTheFirstSector();
    void InstrumentThatDoesNotAnswer();

private:
    Outcome RunUpdate(const std::vector<const char*>& arguments) const;
    QJsonObject ResultOf(const Outcome& outcome) const;

    QTemporaryDir _folder;
    QByteArray _imagePath;
    QByteArray _confirmationOption;
    const std::array<QByteArray, 2> _sectors{QByteArray(512, 'a'), QByteArray(512, '\xFF')};
};

void TestCliUpdateVerb::initTestCase()
{
    QFile image(_folder.filePath(QStringLiteral("image")));
    QVERIFY(image.open(QIODevice::WriteOnly));
    image.write(_sectors[0] + _sectors[1]);
    QFile confirmation(_folder.filePath(QStringLiteral("confirmation")));
    QVERIFY(confirmation.open(QIODevice::WriteOnly));
    confirmation.write(QByteArray::fromHex("0102ABCD"));
    _imagePath = QFile::encodeName(image.fileName());
    _confirmationOption = "--confirmation=" + QFile::encodeName(confirmation.fileName());
}

Outcome TestCliUpdateVerb::RunUpdate(const std::vector<const char*>& arguments) const
{
    std::vector<const char*> whole{"vesmar", "update", _imagePath.constData(),
                                   _confirmationOption.constData(), "--json"};
    whole.insert(whole.end(), arguments.begin(), arguments.end());
    return RunVerb(whole);
}

QJsonObject TestCliUpdateVerb::ResultOf(const Outcome& outcome) const
{
    const QJsonObject result = outcome.Objects().last();
    const bool isResult = result.value(QStringLiteral("event")).toString() == QStringLiteral("result") &&
                          result.value(QStringLiteral("status")).toInt(-1) == outcome.status;
    return isResult ? result : QJsonObject();
}

void TestCliUpdateVerb::SendsEverySectorAndTheConfirmation_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::newRow("online") << QByteArray(LongTimeout);
    QTest::newRow("offline") << QByteArray("--offline");
}

void TestCliUpdateVerb::SendsEverySectorAndTheConfirmation()
{
    QFETCH(QByteArray, option);
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer(std::ref(updatable));
    const Outcome outcome = RunUpdate({option.constData()});
    QCOMPARE(outcome.status, 0);
    const QJsonObject result = ResultOf(outcome);
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("done"));
    QCOMPARE(result.value(QStringLiteral("versionBefore")).toString(), QStringLiteral("1.05"));
    QCOMPARE(result.value(QStringLiteral("versionAfter")).toString(), QStringLiteral("1.06"));
    QByteArrayList sent;
    for (const QByteArray& request : peer.RequestBytes()) {
        if (QByteArray("xVFZ").contains(request.at(0))) {
            sent.append(request);
        }
    }
    const QByteArrayList expected{QByteArray::fromHex("780393B1"), QByteArray::fromHex("56333A"),
                                  WithChecksum("F" + _sectors[0]), WithChecksum("F" + _sectors[1]),
                                  QByteArray::fromHex("5AABCD6A50")};
    QCOMPARE(sent, expected);
}

void TestCliUpdateVerb::FilesAreCheckedBeforeAnythingIsSent()
{
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer(std::ref(updatable));
    const Outcome outcome =
        RunVerb({"vesmar", "update", "/nowhere/image", _confirmationOption.constData(), "--json"});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: cannot read the image /nowhere/image: No such file or directory\n"));
    QCOMPARE(peer.RequestBytes(), QList<QByteArray>());
}

void TestCliUpdateVerb::SignalBeforeTheFirstSectorEndsIt()
{
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer([&updatable](const QByteArray& request) {
        if (request.at(0) == 'x') {
            ::kill(::getpid(), SIGINT);
        }
        return updatable(request);
    });
    const Outcome outcome = RunUpdate({LongTimeout});
    QCOMPARE(outcome.status, 128 + SIGINT);
    const QJsonObject result = ResultOf(outcome);
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("interrupted"));
    QVERIFY(result.value(QStringLiteral("message")).toString().contains(QStringLiteral("vesmar restart")));
    for (const QByteArray& request : peer.RequestBytes()) {
        QVERIFY2(!QByteArray("VFZ").contains(request.at(0)), request.toHex().constData());
    }
}

void TestCliUpdateVerb::SignalWhileSectorsAreSentIsRefused_data()
{
    SendsEverySectorAndTheConfirmation_data();
}

void TestCliUpdateVerb::SignalWhileSectorsAreSentIsRefused()
{
    QFETCH(QByteArray, option);
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer([&updatable](const QByteArray& request) {
        if (request.at(0) == 'F') {
            ::kill(::getpid(), SIGTERM);
        }
        return updatable(request);
    });
    const Outcome outcome = RunUpdate({option.constData()});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(ResultOf(outcome).value(QStringLiteral("sectors")).toInt(), 2);
}

/// It does not even tell its version: the library would never come to sending it anything.
void TestCliUpdateVerb::InstrumentThatOnlyTakesFirmware()
{
    Updatable updatable;
    bool isStuck = true;
    ScriptedPeer peer;
    peer.Answer([&updatable, &isStuck](const QByteArray& request) {
        if (isStuck && request.at(0) == 's') {
            return WithChecksum(QByteArray::fromHex("60FE"));
        }
        isStuck = isStuck && request.at(0) != 'Z';
        return isStuck && request.at(0) == 'W' ? Answers::Refusal() : updatable(request);
    });
    const Outcome outcome = RunUpdate({"--offline", "--timeout=0.5"});
    QCOMPARE(outcome.status, 0);
    const QJsonObject result = ResultOf(outcome);
    QVERIFY(result.value(QStringLiteral("versionBefore")).isNull());
    QCOMPARE(result.value(QStringLiteral("versionAfter")).toString(), QStringLiteral("1.06"));
}

void TestCliUpdateVerb::InstrumentThatDoesNotChangeItsMode()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunUpdate({"--confirm-timeout=3", LongTimeout});
    QCOMPARE(outcome.status, 4);
    QVERIFY(ResultOf(outcome)
                .value(QStringLiteral("message"))
                .toString()
                .contains(QStringLiteral("did not change to update mode in time")));
}

void TestCliUpdateVerb::InstrumentThatDoesNotComeBack()
{
    Updatable updatable;
    bool isAway = false;
    ScriptedPeer peer;
    peer.Answer([&updatable, &isAway](const QByteArray& request) {
        const QByteArray answer = isAway ? QByteArray() : updatable(request);
        isAway = isAway || request.at(0) == 'Z';
        return answer;
    });
    const Outcome outcome = RunUpdate({"--confirm-timeout=8", LongTimeout});
    QCOMPARE(outcome.status, 7);
    const QJsonObject result = ResultOf(outcome);
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("link-lost"));
    QVERIFY(result.value(QStringLiteral("versionAfter")).isNull());
}

void TestCliUpdateVerb::RefusalIsExplained()
{
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer([&updatable](const QByteArray& request) {
        return request.at(0) == 'Z' ? Answers::Refusal() : updatable(request);
    });
    const Outcome json = RunUpdate({LongTimeout});
    QCOMPARE(json.status, 4);
    const QJsonObject error = ResultOf(json).value(QStringLiteral("error")).toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("UpdateConfirmationFailed"));
    QCOMPARE(json.errors.count('\n'), 1);

    const Outcome text =
        RunVerb({"vesmar", "update", _imagePath.constData(), _confirmationOption.constData(), LongTimeout});
    QCOMPARE(text.status, 4);
    QVERIFY2(
        text.errors.endsWith("2 of 2 sectors were confirmed. The instrument stays in update mode; run the "
                             "same command again.\n"
                             "  Likely causes   the confirmation file belongs to another image\n"
                             "                  the image arrived damaged\n"
                             "  Next step       The instrument waits in update mode: update it again with "
                             "the image and the confirmation that belong together.\n"),
        text.errors.constData());
}

void TestCliUpdateVerb::InstrumentThatStaysInUpdateMode()
{
    Updatable updatable;
    ScriptedPeer peer;
    peer.Answer([&updatable](const QByteArray& request) {
        return request.at(0) == 'Z' ? Answers::Acknowledge() : updatable(request);
    });
    const Outcome outcome = RunUpdate({LongTimeout});
    QCOMPARE(outcome.status, 4);
    const QJsonObject result = ResultOf(outcome);
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("update-mode"));
    QCOMPARE(result.value(QStringLiteral("reason")).toString(), QStringLiteral("update-mode"));
}

void TestCliUpdateVerb::LinkThatIsLostBeforeTheFirstSector()
{
    Updatable updatable;
    bool isLost = false;
    ScriptedPeer peer;
    peer.Answer([&updatable, &isLost](const QByteArray& request) {
        const QByteArray answer = isLost ? Answers::Refusal() : updatable(request);
        isLost = isLost || request.at(0) == 'x';
        return answer;
    });
    const Outcome outcome = RunUpdate({LongTimeout});
    QCOMPARE(outcome.status, 7);
    QVERIFY(ResultOf(outcome)
                .value(QStringLiteral("message"))
                .toString()
                .contains(QStringLiteral("link was lost before the first sector")));
}

void TestCliUpdateVerb::InstrumentThatDoesNotAnswer()
{
    const ScriptedPeer peer;
    const Outcome outcome = RunUpdate({"--timeout=0.3"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.Objects().size(), 1);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("reason")).toString(),
             QStringLiteral("no-answer"));
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliUpdateVerb>(argc, argv);
}

#include "tst_cliupdateverb.moc"
