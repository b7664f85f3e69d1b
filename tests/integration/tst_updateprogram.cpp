#include <algorithm>
#include <memory>

#include "integration/programrun.h"

namespace
{

// What the requests of an update begin with, in hexadecimal.
constexpr char Initialize[] = "56333a";
constexpr char Sector[] = "46";
constexpr char Finish[] = "5aab12";

constexpr int SectorSize = 512;
constexpr int Sectors = 5;

/// Every byte that may mean something else on a line is in it.
QByteArray Image()
{
    QByteArray image;
    for (int i = 0; i < Sectors * SectorSize; ++i) {
        image.append(static_cast<char>(i * 7 + i / SectorSize));
    }
    return image;
}

/// `vesmar update` with an image of five sectors and its confirmation, and a simulated instrument of its own
/// that keeps a log and what it accepts.
class UpdateRun
{
public:
    explicit UpdateRun(const QString& options = QString(), const QString& simulatorOptions = QString(),
                       Time time = Time::Virtual)
    {
        WriteFile("image", Image());
        WriteFile("confirmation", QByteArray::fromHex("00FFAB12"));
        const QString script =
            QStringLiteral(
                "cd '%1' && exec '%2' run --confirmation AB12 --log log --save-firmware firmware %3 "
                "-- '%4' update image --confirmation confirmation %5")
                .arg(_folder.path(), SimulatorIn(time), simulatorOptions, QStringLiteral(VESMAR_PROGRAM),
                     options);
        _run = std::make_unique<ProgramRun>(QStringLiteral("sh"), QStringList{QStringLiteral("-c"), script});
    }

    ProgramRun* operator->() { return _run.get(); }

    /// What the instrument has accepted.
    QByteArray Firmware() const { return ContentOf(Path("firmware")); }

    /// How many requests with this command it was sent.
    int Requests(const QByteArray& command) const
    {
        const QByteArrayList log = LogIn(Path("log"));
        return static_cast<int>(std::count_if(log.cbegin(), log.cend(), [&command](const QByteArray& line) {
            return line.startsWith(command);
        }));
    }

    QJsonObject Result()
    {
        const QJsonObject result = ObjectOf(_run->Lines().value(_run->Lines().size() - 1));
        return TextOf(result, "event") == "result" ? result : QJsonObject();
    }

private:
    QString Path(const char* name) const { return _folder.filePath(QLatin1String(name)); }

    void WriteFile(const char* name, const QByteArray& content) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write a file");
        }
    }

    const QTemporaryDir _folder; // First: everything else is in it.
    std::unique_ptr<ProgramRun> _run;
};

struct Failure {
    const char* scenario;
    int error; ///< 0 for none.
    int sectors;
    const char* advice;
};

constexpr char Stays[] = "instrument stays in update mode; run the same command again.";
constexpr Failure Failures[]{
    {"refuses-update-mode", 300, 0, "Nothing was sent, and the instrument keeps its firmware;"},
    {"refuses-initialize", 303, 0, "in update mode"},
    {"refuses-sector 1", 303, 0, Stays},
    {"refuses-sector 4", 303, 3, Stays},
    {"refuses-confirmation", 304, 5, Stays},
    {"stays-in-update-mode", 0, 5, Stays},
};

void CheckFailure(UpdateRun& run, const Failure& failure)
{
    QCOMPARE(run->Finish(), 4);
    const QJsonObject result = run.Result();
    QCOMPARE(NumberOf(result, "status"), 4);
    QCOMPARE(ValueOf(PartOf(result, "error"), "number").toInt(), failure.error);
    QCOMPARE(NumberOf(result, "sectors"), failure.sectors);
    const QByteArray message = TextOf(result, "message");
    VERIFY_CONTAINS(message, failure.advice);
    QCOMPARE(run->Errors(), "vesmar: " + message + '\n');
}

} // namespace

/// The verb `update` of the program as it is built.
class TestUpdateProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsItsProgressAsText();
    void ShowsItsProgressAsJson_data();
    void ShowsItsProgressAsJson();
    void ShowsABarOnATerminal();
    void BringsAnInstrumentHomeFromUpdateMode_data();
    void BringsAnInstrumentHomeFromUpdateMode();
    void RestartsAnInstrumentThatComesBackInAnotherMode();
    void RejectsFilesThatCannotBeUsed_data();
    void RejectsFilesThatCannotBeUsed();
    void ReaderThatGoesAwayDoesNotEndIt();
    void InfoAndMonitorReportUpdateMode();
    void FailsByTheInstrument_data();
    void FailsByTheInstrument();
    void FailureIsFollowedByAdvice();
    void LostSectorIsSentThreeTimes();
    void SignalDoesNotEndTheSectors();
    void SignalEndsItBeforeTheFirstSector();
    void NoLink();
};

void TestUpdateProgram::ShowsItsProgressAsText()
{
    UpdateRun run;
    run->VerifySuccess();
    const QRegularExpression time(QStringLiteral(", \\d+ s left"));
    const QString shown = QString::fromUtf8(run->Output()).remove(time);
    QCOMPARE(shown, QStringLiteral("Version before:   1.05\n"
                                   "Changing the instrument to update mode.\n"
                                   "Sending the firmware. Do not switch the instrument off.\n"
                                   " 20 %  1 of 5 sectors\n"
                                   " 40 %  2 of 5 sectors\n"
                                   " 60 %  3 of 5 sectors\n"
                                   " 80 %  4 of 5 sectors\n"
                                   "100 %  5 of 5 sectors\n"
                                   "The firmware is confirmed. Waiting for the instrument to come back.\n"
                                   "Version after:    1.06\n"
                                   "Firmware update done. The instrument is back in its normal mode.\n"));
    QCOMPARE(run.Firmware(), Image());
}

void TestUpdateProgram::ShowsItsProgressAsJson_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("online") << "--json";
    QTest::newRow("offline") << "--json --offline";
}

void TestUpdateProgram::ShowsItsProgressAsJson()
{
    QFETCH(QString, options);
    UpdateRun run(options, QStringLiteral("--new-version 2.34"));
    run->VerifySuccess();
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(run.Requests(Initialize), 1);
    QCOMPARE(run.Requests(Sector), Sectors);
    QCOMPARE(run.Requests(Finish), 1);

    QVector<int> progress;
    for (const QByteArray& line : run->Lines()) {
        const QJsonObject event = ObjectOf(line);
        if (TextOf(event, "event") == "progress") {
            progress.append(NumberOf(event, "percent"));
            QCOMPARE(NumberOf(event, "sectors"), progress.last() / 20);
            QCOMPARE(NumberOf(event, "total"), Sectors);
        }
    }
    QCOMPARE(progress.last(), 100);
    QVERIFY(std::is_sorted(progress.cbegin(), progress.cend()));
    const QJsonObject result = run.Result();
    QCOMPARE(TextOf(result, "outcome"), QByteArray("done"));
    QCOMPARE(NumberOf(result, "status"), 0);
    QCOMPARE(NumberOf(result, "sectors"), Sectors);
    QCOMPARE(TextOf(result, "versionBefore"), QByteArray("1.05"));
    QCOMPARE(TextOf(result, "versionAfter"), QByteArray("2.34"));
    QVERIFY(ValueOf(result, "error").isNull());
}

void TestUpdateProgram::ShowsABarOnATerminal()
{
    const QTemporaryDir folder;
    const QString image = folder.filePath(QStringLiteral("image"));
    QFile file(image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(Image()), Image().size());
    file.close();
    const QString command =
        QStringLiteral("'%1' run --confirmation %4 -- '%2' update '%3' --confirmation '%3'")
            .arg(SimulatorIn(Time::Virtual), QStringLiteral(VESMAR_PROGRAM), image,
                 QString::fromLatin1(Image().right(2).toHex()));
    ProgramRun terminal(QStringLiteral("script"),
                        {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"),
                         command, QStringLiteral("/dev/null")});
    QCOMPARE(terminal.Finish(), 0);
    const QByteArray shown = terminal.Output();
    VERIFY_CONTAINS(shown, "  0 % [                    ]  0 of 5 sectors\033[J");
    VERIFY_CONTAINS(shown, "100 % [====================]  5 of 5 sectors, 0 s left\033[J");
    VERIFY_CONTAINS(shown, "Version after:    1.06\r\n");
}

void TestUpdateProgram::BringsAnInstrumentHomeFromUpdateMode_data()
{
    ShowsItsProgressAsJson_data();
}

void TestUpdateProgram::BringsAnInstrumentHomeFromUpdateMode()
{
    QFETCH(QString, options);
    UpdateRun run(options, QStringLiteral("--at '0:mode 3'"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(TextOf(run.Result(), "versionAfter"), QByteArray("1.06"));
}

void TestUpdateProgram::RestartsAnInstrumentThatComesBackInAnotherMode()
{
    UpdateRun run(QStringLiteral("--json"), QStringLiteral("--scenario comes-back-in-mode-2"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(TextOf(run.Result(), "versionAfter"), QByteArray("1.06"));
}

void TestUpdateProgram::RejectsFilesThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("confirmation");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("no image") << "missing"
                              << "two"
                              << QByteArray("cannot read the image missing: No such file or directory");
    QTest::newRow("empty image") << "empty"
                                 << "two" << QByteArray("the image empty is empty");
    QTest::newRow("odd image") << "odd"
                               << "two"
                               << QByteArray("the image odd has 513 bytes, which is not a multiple of 512");
    QTest::newRow("folder") << "."
                            << "two" << QByteArray("the image . is not a regular file");
    QTest::newRow("no confirmation") << "image"
                                     << "missing" << QByteArray("cannot read the confirmation missing");
    QTest::newRow("short confirmation") << "image"
                                        << "one" << QByteArray("the confirmation one has fewer than 2 bytes");
}

void TestUpdateProgram::RejectsFilesThatCannotBeUsed()
{
    QFETCH(QString, image);
    QFETCH(QString, confirmation);
    QFETCH(QByteArray, complaint);
    const QTemporaryDir folder;
    const QString script =
        QStringLiteral("cd '%1' && printf x > one && printf xx > two && : > empty && "
                       "head -c 512 /dev/zero > image && head -c 513 /dev/zero > odd && "
                       "exec '%2' run --log log -- '%3' update '%4' --confirmation '%5' --json")
            .arg(folder.path(), QStringLiteral(SIMULATOR_PROGRAM), QStringLiteral(VESMAR_PROGRAM), image,
                 confirmation);
    ProgramRun run(QStringLiteral("sh"), {QStringLiteral("-c"), script});
    QCOMPARE(run.Finish(), 1);
    QCOMPARE(run.Output(), QByteArray());
    VERIFY_BEGINS(run.Errors(), "vesmar: " + complaint);
    QCOMPARE(run.Errors().count('\n'), 1);
    QCOMPARE(ContentOf(folder.filePath(QStringLiteral("log"))), QByteArray()); // Nothing was sent.
}

/// Nobody reads the output, but the instrument needs all of its firmware.
void TestUpdateProgram::ReaderThatGoesAwayDoesNotEndIt()
{
    UpdateRun run(QStringLiteral("| head -n 1"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Output(), QByteArray("Version before:   1.05\n"));
    QCOMPARE(run->Errors(), QByteArray("vesmar: nobody reads the output\n"));
    QCOMPARE(run.Firmware(), Image());
}

void TestUpdateProgram::InfoAndMonitorReportUpdateMode()
{
    const QStringList inUpdateMode{QStringLiteral("--at"), QStringLiteral("0:mode 3")};
    const QByteArray sentence =
        "vesmar: The instrument is in update mode (3) and waits for firmware; run vesmar "
        "update IMAGE --confirmation FILE.\n";
    const auto run = [&inUpdateMode](const QStringList& arguments) {
        return QStringList{QStringLiteral("run")} + inUpdateMode +
               QStringList{QStringLiteral("--"), QStringLiteral(VESMAR_PROGRAM)} + arguments;
    };
    ProgramRun info(QStringLiteral(SIMULATOR_PROGRAM), run({QStringLiteral("info")}));
    ProgramRun monitor(QStringLiteral(SIMULATOR_PROGRAM),
                       run({QStringLiteral("monitor"), QStringLiteral("--for"), QStringLiteral("0.5")}));
    QCOMPARE(info.Finish(), 3);
    VERIFY_CONTAINS(info.Output(), "Serial number:    204815");
    QCOMPARE(info.Errors(), sentence);
    QCOMPARE(monitor.Finish(), 0);
    QCOMPARE(monitor.Errors(), sentence);
}

void TestUpdateProgram::FailsByTheInstrument_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("online") << "--json";
    QTest::newRow("offline") << "--json --offline";
}

void TestUpdateProgram::FailsByTheInstrument()
{
    QFETCH(QString, options);
    CheckSideBySide(
        Failures,
        [&options](const Failure& failure) {
            return std::make_unique<UpdateRun>(
                options, QStringLiteral("--scenario '%1'").arg(QLatin1String(failure.scenario)));
        },
        CheckFailure, [](const Failure& failure) { return failure.scenario; });
}

void TestUpdateProgram::FailureIsFollowedByAdvice()
{
    UpdateRun run(QString(), QStringLiteral("--scenario refuses-confirmation"));
    QCOMPARE(run->Finish(), 4);
    VERIFY_BEGINS(run->Errors(), "vesmar: Firmware update failed: UpdateConfirmationFailed (304): ");
    QVERIFY2(
        run->Errors().endsWith("  Likely causes   the confirmation file belongs to another image\n"
                               "                  the image arrived damaged\n"
                               "  Next step       The instrument waits in update mode: update it again with "
                               "the image and the confirmation that belong together.\n"),
        run->Errors().constData());
}

/// The library sends the sector three times and waits for an answer each time.
void TestUpdateProgram::LostSectorIsSentThreeTimes()
{
    UpdateRun run(QStringLiteral("--json"), QStringLiteral("--scenario 'loses-sector 2'"));
    QCOMPARE(run->Finish(), 4);
    QCOMPARE(run.Requests(Sector), 4);
    QCOMPARE(run.Requests(Finish), 0);
    const QJsonObject result = run.Result();
    QCOMPARE(NumberOf(result, "sectors"), 1);
    QCOMPARE(NumberOf(PartOf(result, "error"), "number"), 303);
}

void TestUpdateProgram::SignalDoesNotEndTheSectors()
{
    const std::pair<int, const char*> interruptions[]{
        {SIGINT, ""}, {SIGTERM, ""}, {SIGHUP, ""}, {SIGINT, "--offline"}};
    std::vector<std::unique_ptr<UpdateRun>> runs; // side by side
    for (const auto& [signalNumber, option] : interruptions) {
        runs.push_back(
            std::make_unique<UpdateRun>(QLatin1String(option), QStringLiteral("--baud 4800"), Time::Real));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        AWAIT(runs.at(i)->Requests(Sector) > 0);
        QCOMPARE(runs.at(i)->Requests(Finish), 0);
        QVERIFY((*runs.at(i))->Signal(interruptions[i].first));
    }
    for (size_t i = 0; i < runs.size(); ++i) {
        UpdateRun& run = *runs.at(i);
        QCOMPARE(run->Finish(), 0);
        QCOMPARE(run->Errors(),
                 QStringLiteral("vesmar: Signal %1 does not end this: an image that is cut short "
                                "leaves the instrument without firmware. Sending it goes on.\n")
                     .arg(interruptions[i].first)
                     .toLatin1());
        QCOMPARE(run.Firmware(), Image());
    }
}

void TestUpdateProgram::SignalEndsItBeforeTheFirstSector()
{
    UpdateRun run(QStringLiteral("--json"), QString(), Time::Real);
    AWAIT(run.Requests("780393b1") == 1);
    QVERIFY(run->Signal(SIGTERM));
    QCOMPARE(run->Finish(), 128 + SIGTERM);
    QCOMPARE(TextOf(run.Result(), "outcome"), QByteArray("interrupted"));
    VERIFY_CONTAINS(run->Errors(), "vesmar restart brings it back");
    QCOMPARE(run.Requests(Initialize), 0);
}

void TestUpdateProgram::NoLink()
{
    UpdateRun run(QStringLiteral("--json --timeout 0.5"), QStringLiteral("--scenario silent"));
    QCOMPARE(run->Finish(), 2);
    VERIFY_CONTAINS(run->Errors(), "did not answer within 0.5 s");
}

QTEST_GUILESS_MAIN(TestUpdateProgram)
#include "tst_updateprogram.moc"
