#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

#include "cli/update/updatefiles.h"
#include "cli/update/updateformat.h"
#include "support/eventschema.h"

using VesmarClient::Failure;
using VesmarClient::Outcome;
using VesmarClient::Phase;

Q_DECLARE_METATYPE(Cli::UpdateEnd)

namespace
{

const QDateTime Evening(QDate(2026, 11, 21), QTime(18, 0), Qt::UTC);

Cli::UpdateEnd FailedAt(int confirmed, int sectors, int error, Phase phase = Phase::Sending)
{
    return {Outcome::Failed, Failure::ofError(static_cast<VesmarClient::Error>(error)),
            phase,           confirmed,
            sectors,         0,
            QString(),       QString()};
}

/// An end that the client tells with a name of its own.
Cli::UpdateEnd Named(Outcome outcome, const char* name, Phase phase, int signalNumber = 0)
{
    Failure failure;
    failure.name = QString::fromLatin1(name);
    return {outcome, failure, phase, 8, 8, signalNumber, QString(), QStringLiteral("1.06")};
}

QByteArray ResultOf(const Cli::UpdateEnd& end)
{
    const Cli::Ending ending = Cli::EndingOf(end);
    const QByteArray line = Cli::ResultLine(Evening, ending, Cli::ResultFields(end));
    CheckRun(line, ending.status);
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
    void ProgressAsJson();
    void Versions();
    void FailuresSayWhatToDo_data();
    void FailuresSayWhatToDo();
    void OtherEnds_data();
    void OtherEnds();
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
    QTest::addColumn<int>("confirmed");
    QTest::addColumn<int>("left");
    QTest::addColumn<QString>("live");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nothing yet") << 0 << -1 << "  0 % [                    ]  0 of 8 sectors"
                                 << QByteArray("  0 %  0 of 8 sectors\n");
    QTest::newRow("a quarter") << 2 << 3000 << " 25 % [=====               ]  2 of 8 sectors, 3 s left"
                               << QByteArray(" 25 %  2 of 8 sectors, 3 s left\n");
    QTest::newRow("rounded up") << 4 << 1001 << " 50 % [==========          ]  4 of 8 sectors, 2 s left"
                                << QByteArray(" 50 %  4 of 8 sectors, 2 s left\n");
    QTest::newRow("all") << 8 << 0 << "100 % [====================]  8 of 8 sectors, 0 s left"
                         << QByteArray("100 %  8 of 8 sectors, 0 s left\n");
}

void TestCliUpdate::Progress()
{
    QFETCH(int, confirmed);
    QFETCH(int, left);
    const Cli::UpdateProgress progress{confirmed, 8, left};
    QTEST(Cli::UpdateLiveLine(progress).replace(QChar::Nbsp, QLatin1Char(' ')), "live");
    QTEST(Cli::UpdateProgressLine(progress), "line");
}

void TestCliUpdate::ProgressAsJson()
{
    QCOMPARE(Cli::UpdateProgressJson(Evening, {2, 8, 3000}),
             QByteArray(R"({"event":"progress","left":3,"percent":25,"sectors":2,)"
                        R"("time":"2026-11-21T18:00:00.000Z","total":8})"
                        "\n"));
    QVERIFY(Cli::UpdateProgressJson(Evening, {0, 8, -1}).contains(R"("left":null)"));
}

void TestCliUpdate::Versions()
{
    QCOMPARE(Cli::VersionText(QStringLiteral("1.05")), QStringLiteral("1.05"));
    QCOMPARE(Cli::VersionText(QStringLiteral("1\033")), QStringLiteral("1\\x1b"));
    QCOMPARE(Cli::VersionText(QString()), QStringLiteral("unknown"));
}

void TestCliUpdate::FailuresSayWhatToDo_data()
{
    QTest::addColumn<int>("confirmed");
    QTest::addColumn<int>("sectors");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("message");
    QTest::newRow("300")
        << 0 << 8 << 300
        << "Firmware update failed: UpdateModeChangeFailed (300): the instrument could not be "
           "switched to update mode. Nothing was sent, and the instrument keeps its firmware; run "
           "the same command again.";
    QTest::newRow("303")
        << 2 << 8 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument refused the "
           "update, or a part of the image was not transferred. 2 of 8 sectors were confirmed. The "
           "instrument stays in update mode; run the same command again.";
    QTest::newRow("303 behind the first sector")
        << 1 << 8 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument refused the "
           "update, or a part of the image was not transferred. 1 of 8 sectors was confirmed. The "
           "instrument stays in update mode; run the same command again.";
    QTest::newRow("303 of many")
        << 10 << 1000 << 303
        << "Firmware update failed: UpdateInitializationFailed (303): the instrument "
           "refused the update, or a part of the image was not transferred. At least 10 "
           "of 1000 sectors were confirmed. The instrument stays in update mode; run the "
           "same command again.";
    QTest::newRow("304")
        << 1000 << 1000 << 304
        << "Firmware update failed: UpdateConfirmationFailed (304): the instrument refused the "
           "closing confirmation of the update. 1000 of 1000 sectors were confirmed. The "
           "instrument stays in update mode; run the same command again.";
}

void TestCliUpdate::FailuresSayWhatToDo()
{
    QFETCH(int, confirmed);
    QFETCH(int, sectors);
    QFETCH(int, error);
    QTEST(Cli::EndingOf(FailedAt(confirmed, sectors, error)).message, "message");
}

void TestCliUpdate::OtherEnds_data()
{
    QTest::addColumn<Cli::UpdateEnd>("end");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("words");
    using Ended = Cli::Ending::Outcome;
    const auto row = [](const char* name, const Cli::UpdateEnd& end, int status, Ended outcome,
                        const char* reason, const char* words) {
        QTest::newRow(name) << end << status << static_cast<int>(outcome) << QString::fromLatin1(reason)
                            << QString::fromLatin1(words);
    };
    row("done", Named(Outcome::Completed, "", Phase::Restarting), 0, Ended::Done, "",
        "Firmware update done. The instrument is back in its normal mode.");
    row("stays in update mode", Named(Outcome::Failed, "update-mode", Phase::Restarting), 4,
        Ended::UpdateMode, "update-mode", "stays in update mode; run the same command again.");
    row("not back", Named(Outcome::LinkLost, "not-back", Phase::Restarting), 7, Ended::LinkLost, "not-back",
        "sent and confirmed, but the instrument has not");
    row("mode not changed", Named(Outcome::Failed, "mode-not-changed", Phase::ChangingMode), 4, Ended::Failed,
        "mode-not-changed", "did not change to update mode in time");
    row("no sector sent", FailedAt(0, 8, 303, Phase::ChangingMode), 4, Ended::Failed, "",
        " No sector was sent. The instrument may be in update mode; check cable and power, and run the same "
        "command again.");
    row("link lost", Named(Outcome::LinkLost, "link-lost", Phase::ChangingMode), 7, Ended::LinkLost,
        "link-lost", "link was lost before the first sector");
    row("link lost before it began", Named(Outcome::Failed, "not-connected", Phase::Waiting), 7,
        Ended::LinkLost, "link-lost", "");
    row("signal before", Named(Outcome::Aborted, "", Phase::ChangingMode, 2), 128 + 2, Ended::Interrupted,
        "signal",
        "Ended by signal 2 before the first sector was sent: the instrument keeps its firmware. It may be in "
        "update mode; vesmar restart brings it back.");
    row("signal after", Named(Outcome::Aborted, "", Phase::Restarting, 15), 128 + 15, Ended::Interrupted,
        "signal", "Ended by signal 15 after the firmware was sent and confirmed.");
}

void TestCliUpdate::OtherEnds()
{
    QFETCH(const Cli::UpdateEnd, end);
    QFETCH(const QString, words);
    const Cli::Ending ending = Cli::EndingOf(end);
    QTEST(ending.status, "status");
    QTEST(static_cast<int>(ending.outcome), "outcome");
    QTEST(ending.reason, "reason");
    QVERIFY2(ending.message.contains(words), qPrintable(ending.message));
}

void TestCliUpdate::SignalThatIsRefused()
{
    QCOMPARE(Cli::UpdateGoesOnMessage(1),
             QStringLiteral("Signal 1 does not end this: an image that is cut short leaves the instrument "
                            "without firmware. Sending it goes on."));
}

void TestCliUpdate::ResultAsJson()
{
    QCOMPARE(ResultOf(Named(Outcome::Completed, "", Phase::Restarting)),
             QByteArray(R"({"error":null,"event":"result",)"
                        R"("message":"Firmware update done. The instrument is back in its normal mode.",)"
                        R"("outcome":"done","reason":null,"sectors":8,"status":0,)"
                        R"("time":"2026-11-21T18:00:00.000Z","total":8,"versionAfter":"1.06",)"
                        R"("versionBefore":null})"
                        "\n"));
}

void TestCliUpdate::ResultOfAFailureAsJson()
{
    Cli::UpdateEnd failed = FailedAt(2, 8, 303);
    failed.versionBefore = QStringLiteral("1.05");
    const QJsonObject result = QJsonDocument::fromJson(ResultOf(failed)).object();
    QCOMPARE(result.value(QStringLiteral("outcome")).toString(), QStringLiteral("failed"));
    QCOMPARE(result.value(QStringLiteral("status")).toInt(), 4);
    QCOMPARE(result.value(QStringLiteral("sectors")).toInt(), 2);
    QCOMPARE(result.value(QStringLiteral("error")).toObject().value(QStringLiteral("number")).toInt(), 303);
    QCOMPARE(result.value(QStringLiteral("versionBefore")).toString(), QStringLiteral("1.05"));
    QVERIFY(result.value(QStringLiteral("versionAfter")).isNull());
}

QTEST_GUILESS_MAIN(TestCliUpdate)
#include "tst_cliupdate.moc"
