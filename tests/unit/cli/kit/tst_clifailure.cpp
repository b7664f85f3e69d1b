#include "cli/kit/failure.h"

#include <QtTest>

#include <cerrno>

using Vesmar::Error;
using Vesmar::OperationMode;

class TestCliFailure : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LinksThatAreNotUp_data();
    void LinksThatAreNotUp();
    void InUpdateMode();
    void LostLink();
};

void TestCliFailure::LinksThatAreNotUp_data()
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

void TestCliFailure::LinksThatAreNotUp()
{
    QFETCH(int, openError);
    QFETCH(bool, hasAnswer);
    QFETCH(int, mode);
    QFETCH(int, error);
    QFETCH(QString, words);
    const Cli::Failure failure =
        Cli::LinkNotUp({openError, hasAnswer, static_cast<OperationMode>(mode), static_cast<Error>(error)},
                       std::chrono::milliseconds(2500));
    QTEST(failure.kind, "kind");
    QTEST(static_cast<int>(failure.error), "reported");
    QVERIFY2(failure.message.contains(words), qPrintable(failure.message));
    QVERIFY(!failure.message.contains(QLatin1Char('\n')));
}

void TestCliFailure::InUpdateMode()
{
    QVERIFY(Cli::InUpdateMode().outcome == Cli::Ending::Outcome::UpdateMode);
    QCOMPARE(
        Cli::InUpdateMode().message,
        QStringLiteral("The instrument is in update mode (3) and waits for firmware; run vesmar update IMAGE "
                       "--confirmation FILE."));
}

void TestCliFailure::LostLink()
{
    const Cli::Failure lost = Cli::LinkLost(QStringLiteral("Not done."), Error::NoResponse);
    QVERIFY(lost.outcome == Cli::Ending::Outcome::LinkLost);
    QVERIFY(lost.error == Error::NoResponse);
    const Cli::Failure undecided = Cli::LinkLost(QStringLiteral("Not done."), Error::CommunicationRecovery);
    QVERIFY(undecided.error == Error::NoErrors);
    QCOMPARE(lost.kind, QStringLiteral("link-lost"));
    QVERIFY2(lost.message.startsWith(QStringLiteral("Not done. The link to it was lost;")),
             qPrintable(lost.message));
}

QTEST_GUILESS_MAIN(TestCliFailure)
#include "tst_clifailure.moc"
