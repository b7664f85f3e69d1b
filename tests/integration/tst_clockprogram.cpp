#include <QDateTime>

#include "integration/programrun.h"

namespace
{

/// The requests in hexadecimal, without those that only read.
QByteArrayList CommandsOf(const VesmarRun& run)
{
    QByteArrayList commands;
    for (const QByteArray& line : run.Log()) {
        const QByteArray request = line.split(' ').first();
        const bool isCommand =
            request.startsWith("72") || request.startsWith("74") || request.startsWith("78");
        if (isCommand) {
            commands.append(request);
        }
    }
    return commands;
}

} // namespace

/// The programs as they are built: the verbs `clock`, `calibration` and `restart`.
class TestClockProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ClockIsShown();
    void ClockIsSet();
    void ClockIsSetToNow();
    void CalibrationIsShown();
    void CalibrationIsSet();
    void CalibrationIsSetToWhatItIs();
    void InstrumentIsRestarted();
    void SlowRestartIsWaitedFor();
    void RestartLeavesUpdateMode();
    void UpdateModeIsReported_data();
    void UpdateModeIsReported();
    void SignalDoesNotLeaveItInCalibrationMode();
    void LinkLostInTheMiddleIsReported();
    void MissingLinkIsReported_data();
    void MissingLinkIsReported();
};

void TestClockProgram::ClockIsShown()
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1); // The clock has no fractions.
    VesmarRun run(QStringLiteral("clock"), {}, Time::Real);
    run->VerifySuccess();
    QCOMPARE(run->Lines().size(), 2);
    const QDateTime clock = QDateTime::fromString(QString::fromLatin1(run->Lines().at(0)),
                                                  QStringLiteral("'Clock:            'yyyy-MM-dd HH:mm:ss"));
    QVERIFY2(before <= clock && clock <= QDateTime::currentDateTime(), run->Output().constData());
    const QRegularExpression difference(
        QStringLiteral("^Difference:       (none|\\d s (behind|ahead of) this computer)$"));
    QVERIFY2(difference.match(QString::fromUtf8(run->Lines().at(1))).hasMatch(), run->Output().constData());
    QCOMPARE(CommandsOf(run), QByteArrayList());
}

void TestClockProgram::ClockIsSet()
{
    VesmarRun run(QStringLiteral("clock set 2030-02-03 04:05:06 --json"));
    run->VerifySuccess();
    QCOMPARE(run->Lines().size(), 2);
    const QJsonObject shown = ObjectOf(run->Lines().first());
    const QDateTime set(QDate(2030, 2, 3), QTime(4, 5, 6));
    const QDateTime clock = QDateTime::fromString(ValueOf(shown, "CurrentDateTime").toString(), Qt::ISODate);
    QVERIFY2(set < clock && clock <= set.addSecs(60), run->Output().constData());
    QVERIFY(ValueOf(shown, "difference").isDouble());
    QCOMPARE(CommandsOf(run), QByteArrayList{"72300203040506a257"});
}

void TestClockProgram::ClockIsSetToNow()
{
    const QDateTime before = QDateTime::currentDateTime();
    VesmarRun run(QStringLiteral("clock set"), {}, Time::Real);
    QCOMPARE(run->Finish(), 0);
    const QDateTime after = QDateTime::currentDateTime();
    const QByteArrayList commands = CommandsOf(run);
    QCOMPARE(commands.size(), 1);
    const QDateTime sent =
        QDateTime::fromString(QStringLiteral("20") + QString::fromLatin1(commands.first().mid(2, 12)),
                              QStringLiteral("yyyyMMddHHmmss"));
    QVERIFY2(before.addSecs(-1) <= sent && sent <= after.addSecs(1), commands.first().constData());
}

void TestClockProgram::CalibrationIsShown()
{
    VesmarRun run(QStringLiteral("calibration"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Output(), QByteArray("Last calibrated:  2024-02-15 00:00:00\n"));
    QCOMPARE(CommandsOf(run), QByteArrayList());
}

void TestClockProgram::CalibrationIsSet()
{
    VesmarRun run(QStringLiteral("calibration set 2026-11-21"));
    run->VerifySuccess();
    QCOMPARE(run->Output(), QByteArray("Last calibrated:  2026-11-21 00:00:00\n"));
    QCOMPARE(CommandsOf(run).last(), QByteArray("7800f081"));
    QVERIFY2(CommandsOf(run).contains("74261121000000bf12"), CommandsOf(run).join(' ').constData());
}

void TestClockProgram::CalibrationIsSetToWhatItIs()
{
    VesmarRun run(QStringLiteral("calibration set 2024-02-15 --json"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Lines().size(), 2);
    QCOMPARE(TextOf(ObjectOf(run->Lines().first()), "CalibrationDateTime"),
             QByteArray("2024-02-15T00:00:00"));
    QVERIFY2(CommandsOf(run).contains("742402150000006f95"), CommandsOf(run).join(' ').constData());
}

void TestClockProgram::InstrumentIsRestarted()
{
    VesmarRun run(QStringLiteral("restart --json"));
    run->VerifySuccess();
    QVERIFY2(ValueOf(ObjectOf(run->Lines().first()), "seconds").toDouble() >= 2, run->Output().constData());
    QCOMPARE(CommandsOf(run), QByteArrayList{"7800f081"});
}

/// The restart takes longer than the library waits for it, but not as long as it waits for an answer.
void TestClockProgram::SlowRestartIsWaitedFor()
{
    VesmarRun run(QStringLiteral("restart --json"), Words(QStringLiteral("--restart-time 4000")));
    QCOMPARE(run->Finish(), 0);
    QVERIFY2(ValueOf(ObjectOf(run->Lines().first()), "seconds").toDouble() >= 4, run->Output().constData());
}

void TestClockProgram::RestartLeavesUpdateMode()
{
    VesmarRun run(QStringLiteral("restart"), AtOnce("mode 3"));
    QCOMPARE(run->Finish(), 0);
    VERIFY_BEGINS(run->Output(), "The instrument has restarted; that took ");
}

void TestClockProgram::UpdateModeIsReported_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char* arguments : {"clock", "clock set", "calibration", "calibration set 2026-11-21"}) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
    }
}

void TestClockProgram::UpdateModeIsReported()
{
    QFETCH(QString, arguments);
    VesmarRun run(arguments, AtOnce("mode 3"));
    QCOMPARE(run->Finish(), 3);
    QCOMPARE(run->Output(), QByteArray());
    QCOMPARE(run->Errors(),
             QByteArray("vesmar: The instrument is in update mode (3) and waits for firmware; run "
                        "vesmar update IMAGE --confirmation FILE.\n"));
    QCOMPARE(CommandsOf(run), QByteArrayList());
}

void TestClockProgram::SignalDoesNotLeaveItInCalibrationMode()
{
    VesmarRun run(QStringLiteral("calibration set 2026-11-21"), {}, Time::Real);
    AWAIT(CommandsOf(run).contains("7801d191"));
    QVERIFY(run->Signal(SIGINT));
    QCOMPARE(run->Finish(), 0);
    VERIFY_CONTAINS(run->Errors(), "waiting until it has left it (signal 2)");
    QCOMPARE(CommandsOf(run).last(), QByteArray("7800f081"));
}

/// The link breaks in the pause after the first change of the mode.
void TestClockProgram::LinkLostInTheMiddleIsReported()
{
    VesmarRun run(QStringLiteral("calibration set 2026-11-21 --confirm-timeout 20 --json"),
                  Words(QStringLiteral("--restart-time 600000")));
    QCOMPARE(run->Finish(), 7);
    QCOMPARE(TextOf(ObjectOf(run->Lines().last()), "outcome"), QByteArray("link-lost"));
    VERIFY_CONTAINS(run->Errors(), "The link to it was lost");
}

void TestClockProgram::MissingLinkIsReported_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char* arguments :
         {"clock", "clock set", "calibration", "calibration set 2026-11-21", "restart"}) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
    }
}

void TestClockProgram::MissingLinkIsReported()
{
    QFETCH(QString, arguments);
    VesmarRun run(arguments + QStringLiteral(" --timeout 0.5 --json"), InScenario("silent"));
    QCOMPARE(run->Finish(), 2);
    QCOMPARE(TextOf(ObjectOf(run->Lines().last()), "reason"), QByteArray("no-answer"));
    QCOMPARE(run->Errors().count('\n'), 1);
}

QTEST_GUILESS_MAIN(TestClockProgram)
#include "tst_clockprogram.moc"
