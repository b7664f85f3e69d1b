#include <QTest>

#include "states/update/awaitupdateactionstate.h"
#include "unit/states/pauselog.h"
#include "unit/states/updatewire.h"

using Vesmar::AwaitUpdateActionState;
using Vesmar::OperationMode;

Q_DECLARE_METATYPE(OperationMode)

namespace
{

const QString InUpdateMode = Red(QStringLiteral("Tester is in update mode."));
const QString ModeChanged = Red(QStringLiteral("Change tester mode to update."));
const QString ModeNotChanged = Red(QStringLiteral("UPDATE ERROR - Tester mode could not be changed."));

/// The state before a step, with an update requested. Nothing is sent a second time, and no pause is waited
/// for.
struct Waiting : Engine {
    explicit Waiting(const QByteArray& status) : Waiting(Wire::UpdateAnswers(status)) {}

    explicit Waiting(const QMap<char, QByteArray>& answers)
    {
        transciever.SetMaxRetransmissions(0);
        AnswerByCommand(answers);
        context.UpdateRequested.Set(true);
        cells.Clear();
        log.Clear();
    }

    PauseLog pauses;
    AwaitUpdateActionState state{&context, nullptr};
};

QMap<char, QByteArray> AnsweringTheModeChangeWith(const QByteArray& answer, const QByteArray& status)
{
    QMap<char, QByteArray> answers = Wire::UpdateAnswers(status);
    answers['x'] = answer;
    return answers;
}

} // namespace

class TestAwaitUpdateActionState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryWritesItsBannerAlone()
    {
        Waiting waiting(Wire::IdleStatus);
        CompareHook(
            waiting, [&waiting]() { waiting.state.OnEntry(); }, "ENTERING AWAIT UPDATE ACTION STATE ");
    }

    void ExitWritesItsBannerAlone()
    {
        Waiting waiting(Wire::IdleStatus);
        CompareHook(
            waiting, [&waiting]() { waiting.state.OnExit(); }, "LEAVING AWAIT UPDATE ACTION STATE ");
    }

    void InUpdateModeItAsksForTheStatusInEveryStep()
    {
        Waiting waiting(Wire::UpdateModeStatus);
        waiting.state.OnRunning();
        waiting.state.OnRunning();
        QCOMPARE(waiting.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadStatus}));
        QCOMPARE(Announcements(waiting.log), (QStringList{InUpdateMode, InUpdateMode}));
        for (const LogCapture::Message& message : waiting.log.Messages()) {
            QCOMPARE(message.type, QtWarningMsg);
            QCOMPARE(message.category, QByteArray("default"));
        }
        QCOMPARE(waiting.cells.Changes(),
                 Changes("TesterMode=3 CurrentMeasurementType=0 StartTestStatus=14"));
    }

    void AnyOtherModeIsChangedAndGivenTwoSeconds_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QStringList>("changes");
        const QStringList changes = Changes("CurrentMeasurementType=0 StartTestStatus=14");
        QTest::newRow("normal") << Wire::IdleStatus << changes;
        QTest::newRow("calibration") << Wire::CalibrationModeStatus << Changes("TesterMode=1") + changes;
        QTest::newRow("mode 2") << Wire::Mode2Status << Changes("TesterMode=2") + changes;
    }

    void AnyOtherModeIsChangedAndGivenTwoSeconds()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const QStringList, changes);
        Waiting waiting(status);
        waiting.state.OnRunning();
        QCOMPARE(waiting.pauses.Text(), QStringLiteral("2000"));
        QCOMPARE(waiting.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ChangeToUpdateMode}));
        QCOMPARE(Announcements(waiting.log), QStringList{ModeChanged});
        QCOMPARE(waiting.cells.Changes(), changes);
    }

    void ModeIsTheOneThatThisStepsStatusReports_data()
    {
        QTest::addColumn<OperationMode>("before");
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("no longer in update mode")
            << OperationMode::Update << Wire::IdleStatus << QByteArray("sx");
        QTest::newRow("in update mode by now")
            << OperationMode::Normal << Wire::UpdateModeStatus << QByteArray("s");
    }

    void ModeIsTheOneThatThisStepsStatusReports()
    {
        QFETCH(const OperationMode, before);
        QFETCH(const QByteArray, status);
        QFETCH(const QByteArray, sent);
        Waiting waiting(AnsweringTheModeChangeWith(Wire::Refusal, status));
        waiting.context.TesterMode.Set(before);
        waiting.state.OnRunning();
        QCOMPARE(waiting.Commands(), sent);
    }

    void FailedStatusEndsTheStep_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<OperationMode>("mode");
        QTest::newRow("refused, normal mode so far") << Wire::Refusal << OperationMode::Normal;
        QTest::newRow("refused, update mode so far") << Wire::Refusal << OperationMode::Update;
        QTest::newRow("acknowledged") << Wire::Acknowledge << OperationMode::Normal;
        QTest::newRow("damaged") << Wire::DamagedStatus << OperationMode::Normal;
    }

    void FailedStatusEndsTheStep()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const OperationMode, mode);
        Waiting waiting(answer);
        waiting.context.TesterMode.Set(mode);
        waiting.cells.Clear();
        waiting.state.OnRunning();
        QCOMPARE(waiting.Commands(), QByteArray("s"));
        QCOMPARE(Announcements(waiting.log), QStringList{});
        QCOMPARE(waiting.cells.Changes(), Changes("CommunicationError=1"));
    }

    void FailedModeChangeIsReported_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("refused") << Wire::Refusal;
        QTest::newRow("data") << Wire::UpdateModeStatus;
        QTest::newRow("damaged") << Wire::DamagedStatus;
    }

    void FailedModeChangeIsReported()
    {
        QFETCH(const QByteArray, answer);
        Waiting waiting(AnsweringTheModeChangeWith(answer, Wire::IdleStatus));
        waiting.state.OnRunning();
        QCOMPARE(waiting.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ChangeToUpdateMode}));
        QCOMPARE(Announcements(waiting.log), QStringList{ModeNotChanged});
        QCOMPARE(waiting.cells.Changes(), Changes("CurrentMeasurementType=0 StartTestStatus=14 "
                                                  "CommunicationError=1 ErrorCode=300"));
    }

    void FailedModeChangeReplacesAnErrorThatIsPending()
    {
        Waiting waiting(AnsweringTheModeChangeWith(Wire::Refusal, Wire::FaultyStatus));
        waiting.state.OnRunning();
        QCOMPARE(waiting.cells.Changes(), Changes("CurrentMeasurementType=0 ErrorCode=5 StartTestStatus=0 "
                                                  "CommunicationError=1 ErrorCode=300"));
    }

    void RefusedModeChangeIsSentThreeTimes()
    {
        Waiting waiting(AnsweringTheModeChangeWith(Wire::Refusal, Wire::IdleStatus));
        waiting.transciever.SetMaxRetransmissions(2);
        waiting.state.OnRunning();
        QCOMPARE(waiting.Commands(), QByteArray("sxxx"));
    }

    void FailedModeChangeIsTriedAgainInTheNextStep()
    {
        Waiting waiting(AnsweringTheModeChangeWith(Wire::Refusal, Wire::IdleStatus));
        waiting.state.OnRunning();
        waiting.state.OnRunning();
        QCOMPARE(waiting.Commands(), QByteArray("sxsx"));
        QCOMPARE(Announcements(waiting.log), (QStringList{ModeNotChanged, ModeNotChanged}));
        // Each status says that the instrument itself has no error.
        QCOMPARE(waiting.cells.Changes(), Changes("CurrentMeasurementType=0 StartTestStatus=14 "
                                                  "CommunicationError=1 ErrorCode=300 ErrorCode=15 "
                                                  "ErrorCode=300"));
    }
};

QTEST_GUILESS_MAIN(TestAwaitUpdateActionState)
#include "tst_awaitupdateactionstate.moc"
