#include "cli/sessions/readiness.h"

#include <QtTest>

using Vesmar::OperationMode;
using Progress = Cli::Readiness::Progress;

class TestCliReadiness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SecondIdentityCompletes();
    void LossOfTheLinkStartsOver();
    void ChangeOfModeStartsOver();
    void RestartingInstrumentIsWaitedFor();
    void UpdateModeIsTheEndOnceTheIdentityIsKnown();
    void UpdateModeBeforeTheIdentityIsWaitedFor();
};

void TestCliReadiness::SecondIdentityCompletes()
{
    Cli::Readiness readiness;
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::AskForIdentity);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::Complete);
}

void TestCliReadiness::LossOfTheLinkStartsOver()
{
    Cli::Readiness readiness;
    readiness.IdentityRead(OperationMode::Normal);
    readiness.ErrorChanged();
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::AskForIdentity);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::Complete);
}

void TestCliReadiness::ChangeOfModeStartsOver()
{
    Cli::Readiness readiness;
    readiness.IdentityRead(OperationMode::Normal);
    QVERIFY(readiness.ModeChanged(OperationMode::Mode2) == Progress::Waiting);
    QVERIFY(readiness.ModeChanged(OperationMode::Normal) == Progress::Waiting);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::AskForIdentity);
}

void TestCliReadiness::RestartingInstrumentIsWaitedFor()
{
    Cli::Readiness readiness;
    QVERIFY(readiness.IdentityRead(OperationMode::Calibration) == Progress::Waiting);
    QVERIFY(readiness.IdentityRead(OperationMode::Calibration) == Progress::Waiting);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Progress::AskForIdentity);
}

void TestCliReadiness::UpdateModeIsTheEndOnceTheIdentityIsKnown()
{
    Cli::Readiness atOnce;
    QVERIFY(atOnce.IdentityRead(OperationMode::Update) == Progress::InUpdateMode);

    Cli::Readiness later;
    later.IdentityRead(OperationMode::Normal);
    QVERIFY(later.ModeChanged(OperationMode::Update) == Progress::InUpdateMode);
}

void TestCliReadiness::UpdateModeBeforeTheIdentityIsWaitedFor()
{
    Cli::Readiness readiness;
    QVERIFY(readiness.ModeChanged(OperationMode::Update) == Progress::Waiting);
    QVERIFY(readiness.IdentityRead(OperationMode::Update) == Progress::InUpdateMode);
}

QTEST_GUILESS_MAIN(TestCliReadiness)
#include "tst_clireadiness.moc"
