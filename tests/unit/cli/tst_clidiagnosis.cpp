#include "cli/kit/diagnosis.h"

#include <QtTest>

#include <cerrno>

#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using Vesmar::Error;
using Vesmar::OperationMode;

class TestCliDiagnosis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Diagnosis_data();
    void Diagnosis();
    void OpeningTellsTheErrorNumber_data();
    void OpeningTellsTheErrorNumber();
    void OpeningADeviceThatIsThere();
    void InUpdateMode();
    void LinkErrors();
};

void TestCliDiagnosis::Diagnosis_data()
{
    QTest::addColumn<int>("openError");
    QTest::addColumn<bool>("hasAnswer");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("reported");
    const auto row = [](const char* name, int openError, bool hasAnswer, int mode, int error,
                        const char* kind, const char* words, int reported = 15) {
        QTest::newRow(name) << openError << hasAnswer << mode << error << QString::fromLatin1(kind)
                            << QString::fromLatin1(words) << reported;
    };
    row("missing", ENOENT, false, 0, 103, "device-missing", "/dev/ttycommunication does not exist");
    row("missing at the end", ENOENT, true, 0, 102, "device-missing", "vesmar-simulator run -- vesmar info");
    row("no permission", EACCES, false, 0, 103, "no-permission", "usermod -a -G dialout");
    row("not permitted", EPERM, false, 0, 100, "no-permission", "/dev/ttycommunication");
    row("broken line", EIO, false, 0, 100, "device-unusable", "Input/output error");
    row("refused", 0, false, 0, 101, "refused", "refuses every request", 101);
    row("damaged", 0, false, 0, 102, "damaged", "arrive damaged", 102);
    row("silent", 0, false, 0, 15, "no-answer", "did not answer within 2.5 s");
    row("given up", 0, false, 0, 100, "no-answer", "did not answer within 2.5 s", 100);
    row("still trying", 0, false, 0, 103, "no-proper-answer", "no proper answer within 2.5 s");
    row("clocks missing", 0, true, 0, 15, "incomplete", "clocks could not be read within 2.5 s");
    row("clocks refused", 0, true, 0, 103, "incomplete", "clocks could not be read within 2.5 s");
    row("fell silent", 0, true, 0, 100, "no-answer", "fell silent", 100);
    row("update mode", 0, false, 3, 103, "update-mode", "vesmar update IMAGE --confirmation FILE");
    row("other mode", 0, true, 2, 15, "wrong-mode", "does not leave its mode Mode2 (2)");
}

void TestCliDiagnosis::Diagnosis()
{
    QFETCH(int, openError);
    QFETCH(bool, hasAnswer);
    QFETCH(int, mode);
    QFETCH(int, error);
    QFETCH(QString, words);
    const Cli::Failure failure = Cli::Diagnose({openError, hasAnswer, static_cast<OperationMode>(mode),
                                                static_cast<Error>(error), std::chrono::milliseconds(2500)});
    QTEST(failure.kind, "kind");
    QTEST(static_cast<int>(failure.error), "reported");
    QVERIFY2(failure.message.contains(words), qPrintable(failure.message));
    QVERIFY(!failure.message.contains(QLatin1Char('\n')));
}

void TestCliDiagnosis::OpeningTellsTheErrorNumber_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << ENOENT;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("busy") << EBUSY;
}

void TestCliDiagnosis::OpeningTellsTheErrorNumber()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    QCOMPARE(Cli::TryToOpenSerialDevice(), error);
    RedirectSerialDevice(QByteArray());
}

void TestCliDiagnosis::OpeningADeviceThatIsThere()
{
    const ScriptedPeer peer;
    QCOMPARE(Cli::TryToOpenSerialDevice(), 0);
    QCOMPARE(RecordedSerialDevice().configurations, 0);
}

void TestCliDiagnosis::InUpdateMode()
{
    QVERIFY(Cli::InUpdateMode().outcome == Cli::Ending::Outcome::UpdateMode);
    QCOMPARE(
        Cli::InUpdateMode().message,
        QStringLiteral("The instrument is in update mode (3) and waits for firmware; run vesmar update IMAGE "
                       "--confirmation FILE."));
}

void TestCliDiagnosis::LinkErrors()
{
    for (const int error : {100, 101, 102, 103}) {
        QVERIFY2(Cli::IsLinkError(static_cast<Error>(error)), qPrintable(QString::number(error)));
    }
    for (const int error : {0, 15, 99, 104, 200, 303}) {
        QVERIFY2(!Cli::IsLinkError(static_cast<Error>(error)), qPrintable(QString::number(error)));
    }
    const Cli::Failure lost = Cli::LinkLost(QStringLiteral("Not done."), Error::NoResponse);
    QVERIFY(lost.outcome == Cli::Ending::Outcome::LinkLost);
    QVERIFY(lost.error == Error::NoResponse);
    const Cli::Failure undecided = Cli::LinkLost(QStringLiteral("Not done."), Error::CommunicationRecovery);
    QVERIFY(undecided.error == Error::NoErrors);
    QCOMPARE(lost.kind, QStringLiteral("link-lost"));
    QVERIFY2(lost.message.startsWith(QStringLiteral("Not done. The link to it was lost;")),
             qPrintable(lost.message));
}

QTEST_GUILESS_MAIN(TestCliDiagnosis)
#include "tst_clidiagnosis.moc"
