#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>

#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

/// An instrument that accepts firmware in update mode, and has a newer version afterwards.
class Updatable
{
public:
    QByteArray operator()(const QByteArray& request)
    {
        switch (request.at(0)) {
        case 'x':
            _answers.status = request.at(1) == 3 ? Wire::UpdateModeStatus : Wire::IdleStatus;
            break;
        case 'V':
            return WithChecksum("ready");
        case 'Z':
            _answers.status = Wire::IdleStatus;
            _answers.version = WithChecksum("PAT41020481510603022016");
            break;
        default:
            break;
        }
        return _answers.To(request);
    }

private:
    Answers _answers;
};

/// An instrument that accepts the confirmation without acting on it.
Instrument ThatStaysInUpdateMode()
{
    return [updatable = Updatable()](const QByteArray& request) mutable {
        return request.at(0) == 'Z' ? Wire::Acknowledge : updatable(request);
    };
}

} // namespace

class TestCliUpdateVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void Ends_data();
    void Ends();
    void SendsEverySectorAndTheConfirmation_data();
    void SendsEverySectorAndTheConfirmation();
    void FilesAreCheckedBeforeAnythingIsSent();
    void SignalBeforeTheFirstSectorEndsIt();
    void SignalWhileSectorsAreSentIsRefused_data();
    void SignalWhileSectorsAreSentIsRefused();
    void InstrumentThatOnlyAcceptsFirmware();
    void InstrumentThatDoesNotComeBack();
    void RefusalIsExplained();

private:
    QByteArray Line(const QByteArray& options = {}) const { return "update " + _files + ' ' + options; }

    QTemporaryDir _folder;
    QByteArray _files; ///< Both, as they stand on the command line.
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
    _files =
        QFile::encodeName(image.fileName()) + " --confirmation=" + QFile::encodeName(confirmation.fileName());
}

void TestCliUpdateVerb::Ends_data()
{
    AddEndColumns();
    AddEnd("mode that does not change", Answering(), Line("--confirm-timeout=3"), 4, "failed",
           "mode-not-changed", "did not change to update mode in time");
    AddEnd("instrument that stays in update mode", ThatStaysInUpdateMode(), Line(), 4, "update-mode",
           "update-mode", "the instrument stays in update mode; run the same command again.");
    AddEnd("link lost before the first sector", LostAfter('x', Updatable()), Line(), 7, "link-lost",
           "link-lost", "link was lost before the first sector");
    AddEnd("no answer", Silent(), Line("--timeout=0.3"), 2, "failed", "no-answer",
           "The instrument did not answer within 0.3 s.");
}

void TestCliUpdateVerb::Ends()
{
    Outcome ended;
    CheckEnd(&ended);
}

void TestCliUpdateVerb::SendsEverySectorAndTheConfirmation_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::newRow("online") << QByteArray("--json");
    QTest::newRow("offline") << QByteArray("--json --offline --timeout=10");
}

void TestCliUpdateVerb::SendsEverySectorAndTheConfirmation()
{
    QFETCH(QByteArray, options);
    const Outcome outcome = RunWith(Updatable(), Line(options));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Result("outcome").toString(), QStringLiteral("done"));
    QCOMPARE(outcome.Result("versionBefore").toString(), QStringLiteral("1.05"));
    QCOMPARE(outcome.Result("versionAfter").toString(), QStringLiteral("1.06"));
    const QByteArrayList expected{"780393b1", "56333a", WithChecksum("F" + _sectors[0]).toHex(),
                                  WithChecksum("F" + _sectors[1]).toHex(), "5aabcd6a50"};
    QCOMPARE(outcome.Sent("xVFZ"), expected);
}

void TestCliUpdateVerb::FilesAreCheckedBeforeAnythingIsSent()
{
    const Outcome outcome = RunWith(
        Updatable(), Line("--json").replace(_folder.path().toLocal8Bit() + "/image", "/nowhere/image"));
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.output, QByteArray());
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: cannot read the image /nowhere/image: No such file or directory\n"));
    QCOMPARE(outcome.requests, QList<QByteArray>());
}

void TestCliUpdateVerb::SignalBeforeTheFirstSectorEndsIt()
{
    const Outcome outcome = RunWith(SignalAt('x', SIGINT, Updatable()), Line("--json"));
    QCOMPARE(outcome.status, 128 + SIGINT);
    QCOMPARE(outcome.Result("outcome").toString(), QStringLiteral("interrupted"));
    QVERIFY(outcome.Result("message").toString().contains(QStringLiteral("vesmar restart")));
    QCOMPARE(outcome.Sent("VFZ"), QByteArrayList());
}

void TestCliUpdateVerb::SignalWhileSectorsAreSentIsRefused_data()
{
    SendsEverySectorAndTheConfirmation_data();
}

void TestCliUpdateVerb::SignalWhileSectorsAreSentIsRefused()
{
    QFETCH(QByteArray, options);
    const Outcome outcome =
        RunWith(SignalAt('F', SIGTERM, SignalAt('F', SIGTERM, Updatable(), 2)), Line(options));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Result("sectors").toInt(), 2);
}

/// The instrument does not even report its version: the library would never begin to send it anything.
void TestCliUpdateVerb::InstrumentThatOnlyAcceptsFirmware()
{
    const Instrument stuck = [updatable = Updatable(), isStuck = true](const QByteArray& request) mutable {
        if (isStuck && request.at(0) == 's') {
            return Wire::UpdateModeStatus;
        }
        isStuck = isStuck && request.at(0) != 'Z';
        return isStuck && request.at(0) == 'W' ? Wire::Refusal : updatable(request);
    };
    const Outcome outcome = RunWith(stuck, Line("--offline --timeout=0.5 --json"));
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.Result("versionBefore").isNull());
    QCOMPARE(outcome.Result("versionAfter").toString(), QStringLiteral("1.06"));
}

void TestCliUpdateVerb::InstrumentThatDoesNotComeBack()
{
    const Instrument leaving = [updatable = Updatable(), isAway = false](const QByteArray& request) mutable {
        const QByteArray answer = isAway ? QByteArray() : updatable(request);
        isAway = isAway || request.at(0) == 'Z';
        return answer;
    };
    const Outcome outcome = RunWith(leaving, Line("--confirm-timeout=8 --json"));
    QCOMPARE(outcome.status, 7);
    QCOMPARE(outcome.Result("outcome").toString(), QStringLiteral("link-lost"));
    QVERIFY(outcome.Result("versionAfter").isNull());
}

void TestCliUpdateVerb::RefusalIsExplained()
{
    const Outcome json = RunWith(Refusing('Z', Updatable()), Line("--json"));
    QCOMPARE(json.status, 4);
    const QJsonObject error = json.Result("error").toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("UpdateConfirmationFailed"));
    QCOMPARE(json.errors.count('\n'), 1);

    const Outcome text = RunWith(Refusing('Z', Updatable()), Line());
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

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliUpdateVerb>(argc, argv);
}

#include "tst_cliupdateverb.moc"
