#include <QFileInfo>
#include <QJsonArray>
#include <QtTest>

#include "integration/programrun.h"

namespace
{

const QString SimulatorProgram = QStringLiteral(SIMULATOR_PROGRAM);
const QString VesmarProgram = QStringLiteral(VESMAR_PROGRAM);

/// The object of this event; empty where there is none.
QJsonObject Event(const char* event, const QByteArrayList& lines)
{
    for (const QByteArray& line : lines) {
        const QJsonObject object = ObjectOf(line);
        if (TextOf(object, "event") == event) {
            return object;
        }
    }
    return {};
}

} // namespace

class TestDoctorProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SoundLinkIsConfirmed();
    void LineIsSetUp();
    void TroubleIsNamed_data();
    void TroubleIsNamed();
    void SilenceEndsTheRequests();
    void LateAnswersAreReported();
    void OtherProgramAtTheDeviceIsReported();
    void MissingDeviceIsReported();
    void SignalEndsIt();
};

void TestDoctorProgram::SoundLinkIsConfirmed()
{
    VesmarRun run(QStringLiteral("doctor"));
    run->VerifySuccess();
    const QByteArray output = run->Output();
    VERIFY_BEGINS(output, "Device:           /dev/ttycommunication leads to /dev/pts/");
    VERIFY_CONTAINS(output, "\nHeld by:          nobody else");
    VERIFY_CONTAINS(output, "of 50 requests 50 proper, 0 refused, 0 damaged, 0 silent\n");
    QCOMPARE(output.count('#'), 50);
    VERIFY_CONTAINS(output, "\nMode:             Normal (0)\n");
    VERIFY_CONTAINS(output, "\nThe link is sound");
}

void TestDoctorProgram::LineIsSetUp()
{
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("settings"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VESMAR_SIMULATOR_LINE_LOG"), log);
    ProgramRun run(SimulatorProgram,
                   {QStringLiteral("run"), QStringLiteral("--"), VesmarProgram, QStringLiteral("doctor")},
                   environment);
    QVERIFY(run.Finish() != -1); // Answers may be late.
    QCOMPARE(ContentOf(log), QByteArray("iflag=0 oflag=0 cflag=19b2 lflag=0 vmin=0 vtime=0\n"));
}

void TestDoctorProgram::TroubleIsNamed_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("kind");
    const auto row = [](const char* name, const QStringList& options, int status, const char* reason,
                        const char* kind) {
        QTest::newRow(name) << options << status << QString::fromLatin1(reason) << QString::fromLatin1(kind);
    };
    row("refusals", InScenario("refuse"), 2, "refused", "refused");
    row("wrong checksums", InScenario("bad-crc"), 2, "damaged", "damaged");
    row("garbage in front", InScenario("garbage-before"), 2, "damaged", "damaged");
    row("garbage behind", InScenario("garbage-after"), 2, "damaged", "damaged");
    row("half answers", InScenario("truncated"), 2, "damaged", "damaged");
    row("a byte too many", InScenario("wrong-length"), 2, "damaged", "damaged");
    row("slow, but not too slow", AtOnce("fault slow 60"), 0, "", "proper");
    row("error", AtOnce("error 4"), 4, "", "proper");
    row("function that nobody attends", AtOnce("function 9"), 6, "unattended", "proper");
    row("update mode", AtOnce("mode 3"), 3, "update-mode", "proper");
    row("calibration mode", AtOnce("mode 1"), 3, "wrong-mode", "proper");
}

void TestDoctorProgram::TroubleIsNamed()
{
    QFETCH(QStringList, options);
    QFETCH(int, status);
    QFETCH(QString, kind);
    VesmarRun run(QStringLiteral("doctor --json"), options);
    QCOMPARE(run->Finish(), status);
    QCOMPARE(run->Errors(), QByteArray());
    const QJsonObject answers = Event("answers", run->Lines());
    QCOMPARE(NumberOf(answers, "asked"), 50);
    QCOMPARE(answers.value(kind).toInt(-1), 50);
    const QJsonObject result = ObjectOf(run->Lines().last());
    QCOMPARE(TextOf(result, "event"), QByteArray("result"));
    QCOMPARE(NumberOf(result, "status"), status);
    QTEST(ValueOf(result, "reason").toString(), "reason");
    QVERIFY(!TextOf(result, "message").isEmpty());
}

void TestDoctorProgram::SilenceEndsTheRequests()
{
    VesmarRun run(QStringLiteral("doctor --json"), InScenario("silent"));
    QCOMPARE(run->Finish(), 2);
    const QJsonObject answers = Event("answers", run->Lines());
    QCOMPARE(NumberOf(answers, "asked"), 3);
    QCOMPARE(NumberOf(answers, "silent"), 3);
    QVERIFY(Event("condition", run->Lines()).isEmpty());
    QCOMPARE(TextOf(Event("result", run->Lines()), "reason"), QByteArray("no-answer"));
}

void TestDoctorProgram::LateAnswersAreReported()
{
    VesmarRun run(QStringLiteral("doctor --json"), AtOnce("fault slow 600"));
    QCOMPARE(run->Finish(), 4);
    const QJsonObject answers = Event("answers", run->Lines());
    QCOMPARE(NumberOf(answers, "proper"), 50);
    QCOMPARE(NumberOf(answers, "late"), 50);
    QCOMPARE(ValueOf(answers, "fastest").toDouble(), 600.0);
    QCOMPARE(TextOf(Event("result", run->Lines()), "reason"), QByteArray("late"));
}

void TestDoctorProgram::OtherProgramAtTheDeviceIsReported()
{
    const QTemporaryDir folder;
    const QString log = folder.filePath(QStringLiteral("log"));
    const QString script =
        QStringLiteral("exec 3<>/dev/ttycommunication; \"$0\" doctor --json 3<&-; exit $?");
    ProgramRun run(SimulatorProgram,
                   {QStringLiteral("run"), QStringLiteral("--log"), log, QStringLiteral("--"),
                    QStringLiteral("sh"), QStringLiteral("-c"), script, VesmarProgram});
    QCOMPARE(run.Finish(), 2);
    const QJsonArray programs = ValueOf(Event("holders", run.Lines()), "programs").toArray();
    QCOMPARE(programs.size(), 1);
    QCOMPARE(TextOf(programs.first().toObject(), "program"), QByteArray("sh"));
    QVERIFY(Event("answers", run.Lines()).isEmpty());
    const QJsonObject result = Event("result", run.Lines());
    QCOMPARE(TextOf(result, "reason"), QByteArray("held"));
    const int process = NumberOf(programs.first().toObject(), "process");
    QVERIFY(TextOf(result, "message").contains("sh (process " + QByteArray::number(process) + ")"));
    QVERIFY(QFileInfo::exists(log));
    QCOMPARE(LogIn(log), QByteArrayList());
}

void TestDoctorProgram::MissingDeviceIsReported()
{
    if (QFileInfo::exists(QStringLiteral("/dev/ttycommunication"))) {
        QSKIP("This machine has such a serial device.");
    }
    ProgramRun run(VesmarProgram, {QStringLiteral("doctor")});
    QCOMPARE(run.Finish(), 2);
    VERIFY_CONTAINS(run.Output(), "\nThe serial device /dev/ttycommunication does not exist.");
    QCOMPARE(run.Errors(), QByteArray());
}

void TestDoctorProgram::SignalEndsIt()
{
    VesmarRun run(QStringLiteral("doctor"), InScenario("silent"), Time::Real);
    AWAIT(run->Output().contains("Asking for the status"));
    QVERIFY(run->Signal(SIGINT)); // The simulator passes this on.
    QCOMPARE(run->Finish(), 128 + SIGINT);
}

QTEST_GUILESS_MAIN(TestDoctorProgram)
#include "tst_doctorprogram.moc"
