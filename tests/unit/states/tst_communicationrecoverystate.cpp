#include <QElapsedTimer>
#include <QTest>

#include "states/connection/communicationrecoverystate.h"
#include "unit/states/enginefixture.h"

using Vesmar::CommunicationRecoveryState;
using Vesmar::Error;

namespace
{

void Step(CommunicationRecoveryState& state, int times)
{
    for (int step = 0; step < times; ++step) {
        state.OnRunning();
    }
}

/// Ten failures that cost no time, and an eleventh with this answer.
void FailElevenTimes(Engine& engine, CommunicationRecoveryState& state, const QByteArray& answer,
                     const QByteArray& modeAnswer = Wire::Acknowledge)
{
    engine.peer.AnswerAlways(Wire::Acknowledge);
    Step(state, 10);
    engine.AnswerByCommand({{'s', answer}, {'x', modeAnswer}});
    state.OnRunning();
}

int ErrorCodeOf(Engine& engine)
{
    return static_cast<int>(engine.context.ErrorCode.Get());
}

} // namespace

class TestCommunicationRecoveryState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void CheckStatusReturnsTheResultAndLeavesCommunicationErrorAlone_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("result");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("status") << Wire::Bytes("00f5babf") << 0
                                << QStringList{QStringLiteral("CurrentMeasurementType=0"),
                                               QStringLiteral("StartTestStatus=5")};
        QTest::newRow("data of another length") << Wire::Bytes("31323334356c54") << 0 << QStringList{};
        QTest::newRow("acknowledged") << Wire::Acknowledge << 1 << QStringList{};
        QTest::newRow("refused") << Wire::Refusal << 2 << QStringList{};
        QTest::newRow("silence") << Wire::Silence << 3 << QStringList{};
        QTest::newRow("damaged") << Wire::DamagedStatus << 4 << QStringList{};
    }

    void CheckStatusReturnsTheResultAndLeavesCommunicationErrorAlone()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const int, result);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.peer.AnswerAlways(answer);
        CommunicationRecoveryState state(&engine.context, nullptr);
        for (const bool raised : {true, false}) {
            engine.context.CommunicationError.Set(raised);
            QCOMPARE(state.CheckStatus(), result);
            QCOMPARE(engine.context.CommunicationError.Get(), raised);
        }
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadStatus}));
        QStringList others = engine.cells.Changes();
        others.removeAll(QStringLiteral("CommunicationError=1"));
        others.removeAll(QStringLiteral("CommunicationError=0"));
        QCOMPARE(others, changes);
    }

    void CheckStatusWaitsHalfASecondAndSendsOnce()
    {
        Engine engine;
        CommunicationRecoveryState state(&engine.context, nullptr);
        QElapsedTimer time;
        time.start();
        QCOMPARE(state.CheckStatus(), 3);
        QCOMPARE(time.elapsed(), 10 + 500 + 200);
        QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
    }

    void FirstShows103UnlessASpecificCodeIsStored_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<QStringList>("changes");
        const QStringList shown{QStringLiteral("ErrorCode=103")};
        QTest::newRow("no error") << 15 << shown;
        QTest::newRow("the instrument's error") << 3 << shown;
        QTest::newRow("99") << 99 << shown;
        QTest::newRow("100") << 100 << QStringList{};
        QTest::newRow("101") << 101 << QStringList{};
        QTest::newRow("102") << 102 << QStringList{};
        QTest::newRow("103") << 103 << QStringList{};
        QTest::newRow("104") << 104 << shown;
        QTest::newRow("measurement failed") << 202 << shown;
    }

    void FirstShows103UnlessASpecificCodeIsStored()
    {
        QFETCH(const int, stored);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.context.ErrorCode.Set(static_cast<Error>(stored));
        engine.peer.AnswerAlways(Wire::Acknowledge);
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(), changes);
        QCOMPARE(Banners(engine.log).size(), 1); // That of the entry.
    }

    void AnswerDropsCommunicationErrorInThatVeryStep()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.peer.AnswerInTurn({Wire::Refusal, Wire::Bytes("00f5babf")});
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("ErrorCode=103")});
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("CurrentMeasurementType=0"),
                              QStringLiteral("ErrorCode=15"), QStringLiteral("StartTestStatus=5"),
                              QStringLiteral("CommunicationError=0")}));
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadStatus}));
    }

    void AnswerThatIsNoStatusDropsCommunicationErrorToo()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.peer.AnswerAlways(Wire::Bytes("31323334356c54"));
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("CommunicationError=0")}));
    }

    void InstrumentsOwnErrorReplaces103()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.peer.AnswerAlways(Wire::Bytes("00305336"));
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        state.OnRunning();
        QCOMPARE(ErrorCodeOf(engine), 3);
    }

    void SpecificCodeLastsUntilTheInstrumentAnswers()
    {
        Engine engine;
        engine.context.ErrorCode.Set(Error::NoResponse);
        engine.peer.AnswerInTurn({Wire::Refusal, Wire::Bytes("00f5babf")});
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        state.OnRunning();
        QCOMPARE(ErrorCodeOf(engine), 100);
        state.OnRunning();
        QCOMPARE(ErrorCodeOf(engine), 15);
    }

    void TenFailuresAreTolerated()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.peer.AnswerAlways(Wire::Acknowledge);
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        Step(state, 10);
        QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("ErrorCode=103")});
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("ErrorCode=101")}));
        QCOMPARE(engine.Commands(), QByteArray(11, 's'));
    }

    void EleventhFailureDecidesByItsOwnResult_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("error");
        QTest::newRow("acknowledged") << Wire::Acknowledge << 101;
        QTest::newRow("silence") << Wire::Silence << 100;
    }

    void EleventhFailureDecidesByItsOwnResult()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const int, error);
        Engine engine;
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        FailElevenTimes(engine, state, answer);
        QCOMPARE(ErrorCodeOf(engine), error);
        QCOMPARE(engine.Commands(), QByteArray(11, 's'));
    }

    void SilenceSets100AfterElevenFailures()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        Step(state, 10);
        QCOMPARE(ErrorCodeOf(engine), 103);
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("ErrorCode=100")}));
        QCOMPARE(engine.Commands(), QByteArray(11, 's'));
        QVERIFY(engine.context.CommunicationError.Get());
    }

    void PersistentFailureResetsTheModeOnceAndThenReports_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("error");
        QTest::newRow("refused") << Wire::Refusal << 101;
        QTest::newRow("damaged") << Wire::DamagedStatus << 102;
    }

    void PersistentFailureResetsTheModeOnceAndThenReports()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const int, error);
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.AnswerByCommand({{'s', answer}, {'x', Wire::Acknowledge}});
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        engine.cells.Clear();
        Step(state, 11);
        QCOMPARE(engine.Commands(), QByteArray(11, 's') + 'x');
        QCOMPARE(engine.peer.RequestBytes().constLast(), Wire::ChangeToNormalMode);
        Step(state, 10);
        QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("ErrorCode=103")});
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("ErrorCode=%1").arg(error)}));
        QCOMPARE(engine.Commands(), QByteArray(11, 's') + 'x' + QByteArray(11, 's'));
        QCOMPARE(engine.GapAfter(11).count(), 4 + 3000);
        QVERIFY(engine.context.CommunicationError.Get());
    }

    void ResultOfTheModeResetIsNotLookedAt()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.transciever.SetMaxRetransmissions(0);
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        FailElevenTimes(engine, state, Wire::DamagedStatus, Wire::Refusal);
        QCOMPARE(engine.Commands(), QByteArray(11, 's') + 'x');
        QCOMPARE(ErrorCodeOf(engine), 103);
        FailElevenTimes(engine, state, Wire::DamagedStatus);
        QCOMPARE(engine.Commands(), QByteArray(11, 's') + 'x' + QByteArray(11, 's'));
        QCOMPARE(ErrorCodeOf(engine), 102);
    }

    void SilenceAfterTheModeResetSets100()
    {
        Engine engine;
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        FailElevenTimes(engine, state, Wire::Refusal);
        engine.transciever.Close(); // From here on there is no answer, at once.
        Step(state, 10);
        QCOMPARE(ErrorCodeOf(engine), 103);
        state.OnRunning();
        QCOMPARE(ErrorCodeOf(engine), 100);
    }

    void FurtherFailuresChangeNothingMore()
    {
        Engine engine;
        engine.transciever.Close();
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        Step(state, 40);
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("ErrorCode=103"), QStringLiteral("ErrorCode=100")}));
    }

    void EntryStartsTheCountAnew()
    {
        Engine engine;
        engine.transciever.Close();
        CommunicationRecoveryState state(&engine.context, nullptr);
        state.OnEntry();
        Step(state, 10);
        state.OnEntry();
        Step(state, 10);
        QCOMPARE(ErrorCodeOf(engine), 103);
        state.OnRunning();
        QCOMPARE(ErrorCodeOf(engine), 100);
    }

    void EntryAllowsAnotherModeReset()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        CommunicationRecoveryState state(&engine.context, nullptr);
        for (int visit = 1; visit <= 2; ++visit) {
            state.OnEntry();
            FailElevenTimes(engine, state, Wire::DamagedStatus);
            QCOMPARE(engine.Commands().count('x'), visit);
        }
    }
};

QTEST_GUILESS_MAIN(TestCommunicationRecoveryState)
#include "tst_communicationrecoverystate.moc"
