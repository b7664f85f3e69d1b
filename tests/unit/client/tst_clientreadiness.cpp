#include "client/sessions/readiness.h"

#include <QtTest>

using Vesmar::OperationMode;
using Step = VesmarClient::ReadinessSteps::Step;

class TestClientReadiness : public QObject
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

void TestClientReadiness::SecondIdentityCompletes()
{
    VesmarClient::ReadinessSteps readiness;
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::AskForIdentity);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::Complete);
}

void TestClientReadiness::LossOfTheLinkStartsOver()
{
    VesmarClient::ReadinessSteps readiness;
    readiness.IdentityRead(OperationMode::Normal);
    readiness.ErrorChanged();
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::AskForIdentity);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::Complete);
}

void TestClientReadiness::ChangeOfModeStartsOver()
{
    VesmarClient::ReadinessSteps readiness;
    readiness.IdentityRead(OperationMode::Normal);
    QVERIFY(readiness.ModeChanged(OperationMode::Mode2) == Step::Wait);
    QVERIFY(readiness.ModeChanged(OperationMode::Normal) == Step::Wait);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::AskForIdentity);
}

void TestClientReadiness::RestartingInstrumentIsWaitedFor()
{
    VesmarClient::ReadinessSteps readiness;
    QVERIFY(readiness.IdentityRead(OperationMode::Calibration) == Step::Wait);
    QVERIFY(readiness.IdentityRead(OperationMode::Calibration) == Step::Wait);
    QVERIFY(readiness.IdentityRead(OperationMode::Normal) == Step::AskForIdentity);
}

void TestClientReadiness::UpdateModeIsTheEndOnceTheIdentityIsKnown()
{
    VesmarClient::ReadinessSteps atOnce;
    QVERIFY(atOnce.IdentityRead(OperationMode::Update) == Step::FoundInUpdateMode);

    VesmarClient::ReadinessSteps later;
    later.IdentityRead(OperationMode::Normal);
    QVERIFY(later.ModeChanged(OperationMode::Update) == Step::FoundInUpdateMode);
}

void TestClientReadiness::UpdateModeBeforeTheIdentityIsWaitedFor()
{
    VesmarClient::ReadinessSteps readiness;
    QVERIFY(readiness.ModeChanged(OperationMode::Update) == Step::Wait);
    QVERIFY(readiness.IdentityRead(OperationMode::Update) == Step::FoundInUpdateMode);
}

QTEST_GUILESS_MAIN(TestClientReadiness)
#include "tst_clientreadiness.moc"
