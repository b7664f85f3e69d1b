#include "client/measuring/measurementend.h"

#include <QtTest>

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using VesmarClient::FailureOf;
using VesmarClient::MeasurementPicture;
using VesmarClient::MeasurementSession;
using VesmarClient::Outcome;
using VesmarClient::OutcomeOf;

namespace
{

const MeasurementPicture Idle{Error::NoErrors,
                              MeasurementState::Idle,
                              FunctionState::Unknown,
                              MeasurementType::Monitoring,
                              0,
                              false,
                              true};

/// Brings a high-voltage test of 5 seconds to the way in which it ends.
using End = std::function<void(MeasurementSession& session)>;

MeasurementPicture Active(MeasurementState status, FunctionState functionStatus, int seconds = 0)
{
    return {Error::NoErrors, status, functionStatus, MeasurementType::HVTest, seconds, true, true};
}

void Prepare(MeasurementSession& session)
{
    session.Observe(Active(MeasurementState::Prepared, FunctionState::Prepared));
}

void Measure(MeasurementSession& session)
{
    Prepare(session);
    session.Observe(Active(MeasurementState::Measuring, FunctionState::Running));
}

void Complete(MeasurementSession& session)
{
    Measure(session);
    session.Observe(Active(MeasurementState::Measuring, FunctionState::Running, 5));
    session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed, 5));
}

void LoseLink(MeasurementSession& session)
{
    MeasurementPicture lost = Idle;
    lost.error = Error::NoResponse;
    session.Observe(lost);
}

void ReportError(MeasurementSession& session)
{
    MeasurementPicture picture = Active(MeasurementState::Stopping, FunctionState::PrepareError);
    picture.error = Error::PrepareFailed;
    session.Observe(picture);
}

MeasurementSession Ended(const End& end, bool isConfirmed)
{
    MeasurementSession session(MeasurementType::HVTest, false, 5);
    session.Begin(Idle);
    end(session);
    if (isConfirmed) {
        session.IdentityRead(Idle);
    } else {
        session.TimeOver();
    }
    return session;
}

} // namespace

Q_DECLARE_METATYPE(End)

class TestClientMeasurementEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EachEndHasAnOutcomeAndAFailure_data();
    void EachEndHasAnOutcomeAndAFailure();
    void UnconfirmedStopIsTheFailureWhateverTheOutcome_data();
    void UnconfirmedStopIsTheFailureWhateverTheOutcome();
    void OtherFunctionIsNotOursToConfirm();
    void GapInterruptsWhatIsCompleteOnly();
};

void TestClientMeasurementEnd::EachEndHasAnOutcomeAndAFailure_data()
{
    QTest::addColumn<End>("end");
    QTest::addColumn<Outcome>("outcome");
    QTest::addColumn<QString>("failure");
    QTest::newRow("complete") << End(Complete) << Outcome::Completed << "";
    QTest::newRow("aborted") << End([](MeasurementSession& session) {
        Measure(session);
        session.Abort();
    }) << Outcome::Aborted << "";
    QTest::newRow("aborted after an error") << End([](MeasurementSession& session) {
        Measure(session);
        MeasurementPicture picture = Active(MeasurementState::Measuring, FunctionState::Running);
        picture.error = Error::DeviceError2;
        session.Observe(picture);
        session.Abort();
    }) << Outcome::Aborted << "";
    QTest::newRow("an error") << End(ReportError) << Outcome::Failed << "PrepareFailed";
    QTest::newRow("not prepared") << End([](MeasurementSession& session) { session.TimeOver(); })
                                  << Outcome::Failed << "not-prepared";
    QTest::newRow("not started") << End([](MeasurementSession& session) {
        Prepare(session);
        session.TimeOver();
    }) << Outcome::Failed << "not-started";
    QTest::newRow("ended early") << End([](MeasurementSession& session) {
        Measure(session);
        session.Observe(Active(MeasurementState::Stopped, FunctionState::Completed, 4));
    }) << Outcome::Failed << "no-result";
    QTest::newRow("function lost") << End([](MeasurementSession& session) {
        Measure(session);
        MeasurementPicture picture = Active(MeasurementState::Measuring, FunctionState::Running, 2);
        picture.function = MeasurementType::Monitoring;
        session.Observe(picture);
    }) << Outcome::Failed << "function-lost";
    QTest::newRow("link lost") << End(LoseLink) << Outcome::LinkLost << "link-lost";
}

void TestClientMeasurementEnd::EachEndHasAnOutcomeAndAFailure()
{
    QFETCH(End, end);
    QFETCH(Outcome, outcome);
    QFETCH(QString, failure);
    const MeasurementSession session = Ended(end, true);
    QVERIFY(session.IsStopConfirmed());
    QCOMPARE(OutcomeOf(session, false), outcome);
    const VesmarClient::Failure told = FailureOf(session, Error::NoResponse);
    QCOMPARE(told.name, failure);
    QCOMPARE(told.isFailure(), !told.whatHappened.isEmpty());
    QCOMPARE(told.isFailure(), !told.nextStep.isEmpty());
}

void TestClientMeasurementEnd::UnconfirmedStopIsTheFailureWhateverTheOutcome_data()
{
    EachEndHasAnOutcomeAndAFailure_data();
}

void TestClientMeasurementEnd::UnconfirmedStopIsTheFailureWhateverTheOutcome()
{
    QFETCH(End, end);
    QFETCH(Outcome, outcome);
    const MeasurementSession session = Ended(end, false);
    QVERIFY(!session.IsStopConfirmed());
    QCOMPARE(OutcomeOf(session, false), outcome);
    const VesmarClient::Failure told = FailureOf(session, Error::NoResponse);
    QCOMPARE(told.name, QStringLiteral("stop-not-confirmed"));
    QVERIFY(told.nextStep.contains(QStringLiteral("Cut the mains")));
    const bool hasFailed = session.FailureReason() == MeasurementSession::Reason::Error;
    QCOMPARE(static_cast<Error>(told.code), hasFailed                      ? session.FirstError()
                                            : outcome == Outcome::LinkLost ? Error::NoResponse
                                                                           : Error::NoErrors);
}

void TestClientMeasurementEnd::OtherFunctionIsNotOursToConfirm()
{
    MeasurementSession session(MeasurementType::HVTest, false, 5);
    MeasurementPicture busy = Idle;
    busy.function = MeasurementType::RPE;
    session.Begin(busy);
    session.TimeOver();
    QCOMPARE(OutcomeOf(session, false), Outcome::Failed);
    QCOMPARE(FailureOf(session, Error::NoErrors).name, QStringLiteral("other-function"));
}

void TestClientMeasurementEnd::GapInterruptsWhatIsCompleteOnly()
{
    QCOMPARE(OutcomeOf(Ended(Complete, true), true), Outcome::Interrupted);
    QVERIFY(!FailureOf(Ended(Complete, true), Error::NoErrors).isFailure());
    QCOMPARE(OutcomeOf(Ended(LoseLink, true), true), Outcome::LinkLost);
}

QTEST_GUILESS_MAIN(TestClientMeasurementEnd)
#include "tst_clientmeasurementend.moc"
