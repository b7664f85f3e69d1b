#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

#include <functional>

#include "cli/update/updatefiles.h"
#include "cli/update/updateformat.h"
#include "support/eventschema.h"

using namespace std::chrono_literals;
using Vesmar::Error;
using Vesmar::OperationMode;
using Vesmar::OperationState;

Q_DECLARE_METATYPE(Cli::Ending)

namespace
{

const QDateTime Evening(QDate(2026, 11, 21), QTime(18, 0), Qt::UTC);
constexpr OperationMode Update = OperationMode::Update;

VesmarClient::UpdateSession SendingSession(int sectors, int progress)
{
    VesmarClient::UpdateSession session(sectors, false);
    session.Begin();
    session.Observe({Error::NoErrors, OperationState::InProgress, progress, Update});
    return session;
}

VesmarClient::UpdateSession FailedSession(int sectors, int progress, Error error)
{
    VesmarClient::UpdateSession session = SendingSession(sectors, progress);
    session.Observe({error, OperationState::InProgress, progress, Update});
    return session;
}

VesmarClient::UpdateSession FinishedSession()
{
    VesmarClient::UpdateSession session = SendingSession(8, 100);
    session.Observe({Error::NoErrors, OperationState::Finished, 100, Update});
    return session;
}

Cli::Ending EndOf(const VesmarClient::UpdateSession& session, Error presentError = Error::NoErrors)
{
    return Cli::EndingOf(session, presentError);
}

QByteArray ResultOf(const VesmarClient::UpdateSession& session, const Cli::UpdateVersions& versions)
{
    const QByteArray line = Cli::ResultLine(Evening, EndOf(session), Cli::ResultFields(session, versions));
    CheckRun(line, Cli::ExitStatusOf(session));
    return line;
}

} // namespace

class TestCliUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BothAreRead();
    void Problems_data();
    void Problems();
    void MissingFiles();
    void NoRegularFile();
    void FarTooLarge();
    void Progress_data();
    void Progress();
    void LiveLineIsCut();
    void ProgressAsJson();
    void Versions();
    void FailuresSayWhatToDo_data();
    void FailuresSayWhatToDo();
    void OtherEnds_data();
    void OtherEnds();
    void ErrorOfALostLink();
    void SignalThatIsRefused();
    void ResultAsJson();
    void ResultOfAFailureAsJson();

private:
    QString Path(const char* name) const { return _folder.filePath(QLatin1String(name)); }
    QString WriteFile(const char* name, const QByteArray& content) const;

    QTemporaryDir _folder;
};

QString TestCliUpdate::WriteFile(const char* name, const QByteArray& content) const
{
    QFile file(Path(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                    : QString();
}

void TestCliUpdate::BothAreRead()
{
    const QByteArray image = QByteArray(512, 'a') + QByteArray(512, '\0') + QByteArray(512, '\n');
    const Cli::UpdateFiles files = Cli::ReadUpdateFiles(
        WriteFile("image", image), WriteFile("confirmation", QByteArray("\x00\xAB\xCD", 3)));
    QCOMPARE(files.problem, QString());
    QCOMPARE(files.image, image);
    QCOMPARE(files.confirmation, QByteArray::fromHex("00ABCD"));
    QCOMPARE(files.Sectors(), 3);
}

void TestCliUpdate::Problems_data()
{
    QTest::addColumn<int>("imageSize");
    QTest::addColumn<int>("confirmationSize");
    QTest::addColumn<QString>("problem");
    QTest::newRow("empty image") << 0 << 2 << "the image %1 is empty; check that it is the right file";
    QTest::newRow("a byte short")
        << 511 << 2
        << "the image %1 has 511 bytes, which is not a multiple of 512; check that it "
           "is the right file and complete";
    QTest::newRow("a byte too many")
        << 1025 << 2
        << "the image %1 has 1025 bytes, which is not a multiple of 512; check that "
           "it is the right file and complete";
    QTest::newRow("empty confirmation") << 512 << 0
                                        << "the confirmation %2 has fewer than 2 bytes; check that it is the "
                                           "right file";
    QTest::newRow("one byte of confirmation")
        << 512 << 1 << "the confirmation %2 has fewer than 2 bytes; check that it is the right file";
    QTest::newRow("the least") << 512 << 2 << "";
}

void TestCliUpdate::Problems()
{
    QFETCH(int, imageSize);
    QFETCH(int, confirmationSize);
    QFETCH(QString, problem);
    const QString image = WriteFile("image", QByteArray(imageSize, 'x'));
    const QString confirmation = WriteFile("confirmation", QByteArray(confirmationSize, 'x'));
    problem.replace(QLatin1String("%1"), image).replace(QLatin1String("%2"), confirmation);
    QCOMPARE(Cli::ReadUpdateFiles(image, confirmation).problem, problem);
}

void TestCliUpdate::MissingFiles()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    const QString missing = Path("missing");
    QCOMPARE(Cli::ReadUpdateFiles(missing, present).problem,
             QStringLiteral("cannot read the image %1: No such file or directory").arg(missing));
    QCOMPARE(Cli::ReadUpdateFiles(present, missing).problem,
             QStringLiteral("cannot read the confirmation %1: No such file or directory").arg(missing));
}

void TestCliUpdate::NoRegularFile()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    const QString pipe = Path("pipe");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    QCOMPARE(Cli::ReadUpdateFiles(pipe, present).problem,
             QStringLiteral("the image %1 is not a regular file").arg(pipe));
    QCOMPARE(Cli::ReadUpdateFiles(present, _folder.path()).problem,
             QStringLiteral("the confirmation %1 is not a regular file").arg(_folder.path()));
}

void TestCliUpdate::FarTooLarge()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    QFile large(Path("large"));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize(64 * 1024 * 1024 + 512)); // a hole, which takes no room
    QCOMPARE(
        Cli::ReadUpdateFiles(large.fileName(), present).problem,
        QStringLiteral("the image %1 has 67109376 bytes, which is too much; check that it is the right file")
            .arg(large.fileName()));
}

void TestCliUpdate::Progress_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("confirmed");
    QTest::addColumn<int>("milliseconds");
    QTest::addColumn<QString>("live");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nothing yet") << 0 << 0 << 400 << "  0 % [                    ]  0 of 8 sectors"
                                 << QByteArray("  0 %  0 of 8 sectors\n");
    QTest::newRow("a quarter") << 25 << 2 << 1000 << " 25 % [=====               ]  2 of 8 sectors, 3 s left"
                               << QByteArray(" 25 %  2 of 8 sectors, 3 s left\n");
    QTest::newRow("rounded up") << 50 << 4 << 1001 << " 50 % [==========          ]  4 of 8 sectors, 2 s left"
                                << QByteArray(" 50 %  4 of 8 sectors, 2 s left\n");
    QTest::newRow("all") << 100 << 8 << 2000 << "100 % [====================]  8 of 8 sectors, 0 s left"
                         << QByteArray("100 %  8 of 8 sectors, 0 s left\n");
}

void TestCliUpdate::Progress()
{
    QFETCH(int, percent);
    QFETCH(int, confirmed);
    QFETCH(int, milliseconds);
    const Cli::UpdateProgress progress{percent, confirmed, 8, std::chrono::milliseconds(milliseconds)};
    QTEST(Cli::UpdateLiveLine(progress, 80), "live");
    QTEST(Cli::UpdateProgressLine(progress), "line");
}

void TestCliUpdate::LiveLineIsCut()
{
    QCOMPARE(Cli::UpdateLiveLine({25, 2, 8, 1s}, 9), QStringLiteral(" 25 % [=="));
}

void TestCliUpdate::ProgressAsJson()
{
    QCOMPARE(Cli::UpdateProgressJson(Evening, {25, 2, 8, 1s}),
             QByteArray(R"({"event":"progress","left":3,"percent":25,"sectors":2,)"
                        R"("time":"2026-11-21T18:00:00.000Z","total":8})"
                        "\n"));
    QVERIFY(Cli::UpdateProgressJson(Evening, {0, 0, 8, 1s}).contains(R"("left":null)"));
}

void TestCliUpdate::Versions()
{
    QCOMPARE(Cli::VersionText(QStringLiteral("1.05")), QStringLiteral("1.05"));
    QCOMPARE(Cli::VersionText(QStringLiteral("1\033")), QStringLiteral("1\\x1b"));
    QCOMPARE(Cli::VersionText(QString()), QStringLiteral("unknown"));
}

void TestCliUpdate::FailuresSayWhatToDo_data()
{
    QTest::addColumn<int>("sectors");
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("message");
    QTest::newRow("300")
        << 8 << 0 << 300
        << "Firmware update failed: UpdateModeChangeFailed (300): the instrument could not be "
           "switched to update mode. Nothing was sent, and the instrument keeps its firmware; run "
           "the same command again.";
    QTest::newRow("303")
        << 8 << 25 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument refused the "
           "update, or a part of the image was not transferred. 2 of 8 sectors were confirmed. The "
           "instrument stays in update mode; run the same command again.";
    QTest::newRow("303 behind the first sector")
        << 8 << 12 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument refused the "
           "update, or a part of the image was not transferred. 1 of 8 sectors was confirmed. The "
           "instrument stays in update mode; run the same command again.";
    QTest::newRow("303 of many")
        << 1000 << 1 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument "
           "refused the update, or a part of the image was not transferred. At least 10 "
           "of 1000 sectors were confirmed. The instrument stays in update mode; run the "
           "same command again.";
    QTest::newRow("304")
        << 1000 << 100 << 304
        << "Firmware update failed: UpdateConfirmationFailed (304): the instrument refused the "
           "closing confirmation of the update. 1000 of 1000 sectors were confirmed. The "
           "instrument stays in update mode; run the same command again.";
}

void TestCliUpdate::FailuresSayWhatToDo()
{
    QFETCH(int, sectors);
    QFETCH(int, progress);
    QFETCH(int, error);
    QTEST(EndOf(FailedSession(sectors, progress, static_cast<Error>(error))).message, "message");
}

void TestCliUpdate::OtherEnds_data()
{
    using Outcome = Cli::Ending::Outcome;
    using VesmarClient::UpdateSession;
    QTest::addColumn<Cli::Ending>("ending");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("words");
    const auto row = [](const char* name, UpdateSession session,
                        const std::function<void(UpdateSession&)>& end, int status, Outcome outcome,
                        const char* reason, const char* words) {
        end(session);
        QTest::newRow(name) << EndOf(session) << status << static_cast<int>(outcome)
                            << QString::fromLatin1(reason) << QString::fromLatin1(words);
    };
    UpdateSession begun(8, false);
    begun.Begin();
    UpdateSession offline(8, true);
    offline.Begin();
    row(
        "done", FinishedSession(),
        [](UpdateSession& session) { session.IdentityRead(OperationMode::Normal); }, 0, Outcome::Done, "",
        "Firmware update done. The instrument is back in its normal mode.");
    row(
        "stays in update mode", FinishedSession(),
        [](UpdateSession& session) { session.IdentityRead(Update); }, 4, Outcome::UpdateMode, "update-mode",
        "stays in update mode; run the same command again.");
    row(
        "not back", FinishedSession(),
        [](UpdateSession& session) { session.TimeOver(OperationState::Finished); }, 7, Outcome::LinkLost,
        "not-back", "sent and confirmed, but the instrument has not");
    row(
        "mode not changed", begun, [](UpdateSession& session) { session.TimeOver(OperationState::Idle); }, 4,
        Outcome::Failed, "mode-not-changed", "did not change to update mode in time");
    row(
        "no sector sent", offline,
        [](UpdateSession& session) {
            session.Observe(
                {Error::UpdateInitializationFailed, OperationState::Idle, 0, OperationMode::Normal});
        },
        4, Outcome::Failed, "",
        " No sector was sent. The instrument may be in update mode; check cable and power, and run the same "
        "command "
        "again.");
    row(
        "link lost", begun,
        [](UpdateSession& session) {
            session.Observe({Error::CommunicationRecovery, OperationState::Idle, 0, OperationMode::Normal});
        },
        7, Outcome::LinkLost, "link-lost", "link was lost before the first sector");
    row(
        "signal before", begun, [](UpdateSession& session) { session.Interrupt(OperationState::Idle, 2); },
        128 + 2, Outcome::Interrupted, "signal",
        "Ended by signal 2 before the first sector was sent: the instrument keeps its firmware. It may be in "
        "update "
        "mode; vesmar restart brings it back.");
    row(
        "signal after", FinishedSession(),
        [](UpdateSession& session) { session.Interrupt(OperationState::Idle, 15); }, 128 + 15,
        Outcome::Interrupted, "signal", "Ended by signal 15 after the firmware was sent and confirmed.");
}

void TestCliUpdate::OtherEnds()
{
    QFETCH(const Cli::Ending, ending);
    QFETCH(const QString, words);
    QTEST(ending.status, "status");
    QTEST(static_cast<int>(ending.outcome), "outcome");
    QTEST(ending.reason, "reason");
    QVERIFY2(ending.message.contains(words), qPrintable(ending.message));
}

/// Where the link is lost, the result has the library's final error of the link, once there is one.
void TestCliUpdate::ErrorOfALostLink()
{
    VesmarClient::UpdateSession away = FinishedSession();
    away.TimeOver(OperationState::Finished);
    QVERIFY(EndOf(away, Error::InvalidResponse).error == Error::InvalidResponse);
    QVERIFY(EndOf(away, Error::CommunicationRecovery).error == Error::NoErrors);
    QVERIFY(EndOf(away, Error::DeviceError3).error == Error::NoErrors);

    const VesmarClient::UpdateSession failed = FailedSession(8, 25, Error::UpdateInitializationFailed);
    QVERIFY(EndOf(failed, Error::NoResponse).error == Error::UpdateInitializationFailed);
}

void TestCliUpdate::SignalThatIsRefused()
{
    QCOMPARE(Cli::UpdateGoesOnMessage(1),
             QStringLiteral("Signal 1 does not end this: an image that is cut short leaves the instrument "
                            "without firmware. Sending it goes on."));
}

void TestCliUpdate::ResultAsJson()
{
    VesmarClient::UpdateSession done = FinishedSession();
    done.IdentityRead(OperationMode::Normal);
    QCOMPARE(ResultOf(done, {QString(), QStringLiteral("1.06")}),
             QByteArray(R"({"error":null,"event":"result",)"
                        R"("message":"Firmware update done. The instrument is back in its normal mode.",)"
                        R"("outcome":"done","reason":null,"sectors":8,"status":0,)"
                        R"("time":"2026-11-21T18:00:00.000Z","total":8,"versionAfter":"1.06",)"
                        R"("versionBefore":null})"
                        "\n"));
}

void TestCliUpdate::ResultOfAFailureAsJson()
{
    const VesmarClient::UpdateSession failed = FailedSession(8, 25, Error::UpdateInitializationFailed);
    const QByteArray line = ResultOf(failed, {QStringLiteral("1.05"), QString()});
    const QJsonObject result = QJsonDocument::fromJson(line).object();
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("failed"));
    QCOMPARE(result.value(QStringLiteral("status")).toInt(), 4);
    QCOMPARE(result.value(QStringLiteral("sectors")).toInt(), 2);
    QCOMPARE(result.value(QStringLiteral("error")).toObject().value(QStringLiteral("number")).toInt(), 303);
    QCOMPARE(result.value(QStringLiteral("versionBefore")).toString(), QStringLiteral("1.05"));
    QVERIFY(result.value(QStringLiteral("versionAfter")).isNull());
}

QTEST_GUILESS_MAIN(TestCliUpdate)
#include "tst_cliupdate.moc"
