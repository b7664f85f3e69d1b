#include "client/sessions/linksession.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::OperationMode;
using VesmarClient::LinkSession;
using VesmarClient::LinkState;
using Action = LinkSession::Action;

class TestClientLinkSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LinkIsUpWithTheSecondIdentity();
    void UpdateModeIsFoundWithTheFirstIdentity();
    void LossOfTheLinkAsksForFreshReadiness_data();
    void LossOfTheLinkAsksForFreshReadiness();
    void ReasonOfALossOutlivesFurtherFailures();
    void ErrorsOfTheInstrumentAreNoLoss();
    void ModeDecidesWhatAnInstrumentIsReadyFor();
};

namespace
{

LinkSession Connected(OperationMode mode = OperationMode::Normal)
{
    LinkSession link;
    link.IdentityRead(mode);
    link.IdentityRead(mode);
    return link;
}

} // namespace

void TestClientLinkSession::LinkIsUpWithTheSecondIdentity()
{
    LinkSession link;
    QCOMPARE(link.State(), LinkState::Opening);
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::AskForIdentity);
    QCOMPARE(link.State(), LinkState::Opening);
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::None);
    QCOMPARE(link.State(), LinkState::Up);
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::None);
}

void TestClientLinkSession::UpdateModeIsFoundWithTheFirstIdentity()
{
    LinkSession link;
    link.ModeChanged(OperationMode::Update);
    QCOMPARE(link.State(), LinkState::Opening);
    QVERIFY(link.IdentityRead(OperationMode::Update) == Action::None);
    QCOMPARE(link.State(), LinkState::UpdateMode);
}

void TestClientLinkSession::LossOfTheLinkAsksForFreshReadiness_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<LinkState>("state");
    QTest::newRow("a request failed")
        << static_cast<int>(Error::CommunicationRecovery) << LinkState::Interrupted;
    QTest::newRow("no answer") << static_cast<int>(Error::NoResponse) << LinkState::Lost;
    QTest::newRow("refused") << static_cast<int>(Error::RequestRefused) << LinkState::Lost;
    QTest::newRow("damaged") << static_cast<int>(Error::InvalidResponse) << LinkState::Lost;
}

void TestClientLinkSession::LossOfTheLinkAsksForFreshReadiness()
{
    QFETCH(int, error);
    QFETCH(LinkState, state);
    LinkSession link = Connected();
    link.ErrorChanged(static_cast<Error>(error));
    QCOMPARE(link.State(), state);
    link.ErrorChanged(Error::NoErrors);
    QCOMPARE(link.State(), state);
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::AskForIdentity);
    link.ErrorChanged(Error::DeviceError3); // It may hide another loss.
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::AskForIdentity);
    QVERIFY(link.IdentityRead(OperationMode::Normal) == Action::None);
    QCOMPARE(link.State(), LinkState::Up);
}

void TestClientLinkSession::ReasonOfALossOutlivesFurtherFailures()
{
    LinkSession link = Connected();
    link.ErrorChanged(Error::NoResponse);
    link.ErrorChanged(Error::CommunicationRecovery);
    QCOMPARE(link.State(), LinkState::Lost);

    LinkSession opening;
    opening.ErrorChanged(Error::CommunicationRecovery);
    QCOMPARE(opening.State(), LinkState::Opening);
}

void TestClientLinkSession::ErrorsOfTheInstrumentAreNoLoss()
{
    LinkSession link = Connected();
    link.ErrorChanged(Error::DeviceError0);
    link.ErrorChanged(Error::PrepareFailed);
    QCOMPARE(link.State(), LinkState::Up);
}

void TestClientLinkSession::ModeDecidesWhatAnInstrumentIsReadyFor()
{
    LinkSession link = Connected();
    link.ModeChanged(OperationMode::Normal);
    QCOMPARE(link.State(), LinkState::Up);
    link.ModeChanged(OperationMode::Update);
    QCOMPARE(link.State(), LinkState::UpdateMode);
    link.ModeChanged(OperationMode::Normal);
    QCOMPARE(link.State(), LinkState::Opening);

    link = Connected();
    link.ModeChanged(OperationMode::Calibration); // The library restarts the instrument.
    QCOMPARE(link.State(), LinkState::Opening);
}

QTEST_GUILESS_MAIN(TestClientLinkSession)
#include "tst_clientlinksession.moc"
