#include <functional>

#include <QTest>

#include "states/update/updatingstate.h"
#include "unit/states/pauselog.h"
#include "unit/states/updatewire.h"

using Vesmar::Error;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::UpdatingState;

using Exchange = std::function<bool(UpdatingState&)>;

Q_DECLARE_METATYPE(Exchange)

namespace
{

const QString Initialized = Red(QStringLiteral("Iinitialization update OK."));
const QString DataInvalid = Red(QStringLiteral("UPDATE ERROR - Update data is invalid."));
const QString ConfirmationInvalid =
    Red(QStringLiteral("UPDATE ERROR - Update confirmation data is invalid."));
const QString NotInitialized = Red(QStringLiteral("UPDATE ERROR - Update initialization error."));
const QString SectorFailed = Red(QStringLiteral("UPDATE ERROR - Sector data transfer issues."));
const QString NotConfirmed = Red(QStringLiteral("UPDATE ERROR - Confirmation error."));

/// The state before its first step, in update mode and with an update to make, and an instrument that accepts
/// every exchange and is back in normal mode afterwards. Nothing is sent a second time, and no pause is
/// waited for.
struct Update : Engine {
    explicit Update(const QByteArray& image = Wire::Image(),
                    const QByteArray& confirmation = Wire::Confirmation)
    {
        transciever.SetMaxRetransmissions(0);
        AnswerByCommand(Wire::UpdateAnswers(Wire::IdleStatus));
        context.SetUpdate(image, confirmation);
        context.UpdateRequested.Set(true);
        context.TesterMode.Set(OperationMode::Update);
        context.OperationStatus.Set(OperationState::Started);
        context.OperationProgress.Set(ProgressBefore);
        cells.Clear();
        log.Clear();
    }

    /// The instrument gives this answer to this frame.
    void AnswerInstead(const QByteArray& frame, const QByteArray& answer)
    {
        const QMap<char, QByteArray> answers = Wire::UpdateAnswers(Wire::IdleStatus);
        peer.Answer([=](const QByteArray& request) {
            return request == frame ? answer : answers.value(request.at(0));
        });
    }

    static constexpr int ProgressBefore = 77; ///< That of an earlier update.

    PauseLog pauses;
    UpdatingState state{&context, nullptr};
};

const QStringList AfterTheImage =
    Changes("OperationStatus=3 TesterMode=0 CurrentMeasurementType=0 StartTestStatus=14");

QString Progress(int percent)
{
    return QStringLiteral("Update progress: %1").arg(percent);
}

} // namespace

class TestUpdatingState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryWritesItsBannerAndStarts()
    {
        Update update;
        update.context.OperationStatus.Set(OperationState::Idle);
        CompareHook(
            update, [&update]() { update.state.OnEntry(); }, "ENTERING UPDATING STATE ",
            Changes("OperationStatus=1"));
    }

    void ExitWritesItsBannerWithdrawsTheRequestAndIsIdle()
    {
        Update update;
        update.context.OperationStatus.Set(OperationState::Finished);
        CompareHook(
            update, [&update]() { update.state.OnExit(); }, "LEAVING UPDATING STATE ",
            Changes("UpdateRequested=0 OperationStatus=0"));
    }

    void WholeUpdateIsSentAndReported()
    {
        Update update;
        QString pausesWhenFinished;
        QObject::connect(&update.context.OperationStatus, &Vesmar::Notifible::ValueChanged, this, [&]() {
            if (update.context.OperationStatus.Get() == OperationState::Finished) {
                pausesWhenFinished = update.pauses.Text();
            }
        });
        update.state.OnRunning();
        QCOMPARE(Wire::SectorFrame(0).size(), 515);
        QCOMPARE(update.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::InitializeUpdate, Wire::SectorFrame(0), Wire::SectorFrame(1),
                                    Wire::SectorFrame(2), Wire::Finish, Wire::ReadStatus}));
        QCOMPARE(pausesWhenFinished, QStringLiteral("100 100 100 2500"));
        QCOMPARE(update.cells.Changes(),
                 Changes("OperationStatus=2 OperationProgress=0 OperationProgress=33 OperationProgress=66 "
                         "OperationProgress=100") +
                     AfterTheImage);
        QCOMPARE(Announcements(update.log),
                 (QStringList{Initialized, Progress(33), Progress(66), Progress(100)}));
        for (const LogCapture::Message& message : update.log.Messages()) {
            QCOMPARE(message.type, QtWarningMsg);
            QCOMPARE(message.category, QByteArray("default"));
        }
    }

    void ProgressIsTruncated_data()
    {
        QTest::addColumn<int>("sectors");
        QTest::addColumn<QStringList>("progress");
        QTest::newRow("1 sector") << 1 << Changes("OperationProgress=0 OperationProgress=100");
        QTest::newRow("2 sectors") << 2
                                   << Changes(
                                          "OperationProgress=0 OperationProgress=50 OperationProgress=100");
        QTest::newRow("7 sectors") << 7
                                   << Changes(
                                          "OperationProgress=0 OperationProgress=14 OperationProgress=28 "
                                          "OperationProgress=42 OperationProgress=57 OperationProgress=71 "
                                          "OperationProgress=85 OperationProgress=100");
    }

    void ProgressIsTruncated()
    {
        QFETCH(const int, sectors);
        QFETCH(const QStringList, progress);
        Update update(Wire::Sector(0).repeated(sectors));
        update.state.OnRunning();
        QCOMPARE(update.Commands(), 'V' + QByteArray(sectors, 'F') + "Zs");
        QCOMPARE(update.cells.Changes().filter(QStringLiteral("OperationProgress")), progress);
    }

    /// In double precision, 29 of 50 are a little less than 58 per cent.
    void ProgressIsComputedInDoublePrecision()
    {
        Update update(Wire::Sector(0).repeated(29) + Wire::Sector(1) + Wire::Sector(0).repeated(20));
        update.AnswerInstead(Wire::SectorFrame(1), Wire::Refusal);
        update.state.OnRunning();
        QCOMPARE(update.Commands(), 'V' + QByteArray(30, 'F'));
        QCOMPARE(update.context.OperationProgress.Get(), 57);
    }

    void EmptyImageHasNoSector()
    {
        Update update(QByteArray{});
        update.state.OnRunning();
        QCOMPARE(update.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::InitializeUpdate, Wire::Finish, Wire::ReadStatus}));
        QCOMPARE(update.cells.Changes(), Changes("OperationStatus=2 OperationProgress=0") + AfterTheImage);
        QCOMPARE(Announcements(update.log), QStringList{Initialized});
    }

    void StepUsesTheDataThatItBeganWith()
    {
        Update update(Wire::Sector(0) + Wire::Sector(1));
        QMap<char, QByteArray> answers = Wire::UpdateAnswers(Wire::IdleStatus);
        answers['Z'] = Wire::Refusal;
        update.peer.Answer([&update, answers](const QByteArray& request) {
            update.context.SetUpdate(Wire::Sector(2).repeated(4), Wire::Bytes("0102"));
            return answers.value(request.at(0));
        });
        update.state.OnRunning();
        QCOMPARE(update.peer.RequestBytes(), (QList<QByteArray>{Wire::InitializeUpdate, Wire::SectorFrame(0),
                                                                Wire::SectorFrame(1), Wire::Finish}));
    }

    void InvalidDataSendsNothing_data()
    {
        QTest::addColumn<int>("imageSize");
        QTest::addColumn<int>("confirmationSize");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("text");
        const QString image = QStringLiteral("ErrorCode=301");
        const QString confirmation = QStringLiteral("ErrorCode=302");
        QTest::newRow("image of 1 byte") << 1 << 6 << image << DataInvalid;
        QTest::newRow("image of 511 bytes") << 511 << 6 << image << DataInvalid;
        QTest::newRow("image of 513 bytes") << 513 << 6 << image << DataInvalid;
        QTest::newRow("image of 1000 bytes") << 1000 << 6 << image << DataInvalid;
        QTest::newRow("image of 1000 bytes, confirmation of 1") << 1000 << 1 << image << DataInvalid;
        QTest::newRow("confirmation of 1 byte") << 512 << 1 << confirmation << ConfirmationInvalid;
        QTest::newRow("no confirmation") << 512 << 0 << confirmation << ConfirmationInvalid;
        QTest::newRow("empty image, confirmation of 1 byte") << 0 << 1 << confirmation << ConfirmationInvalid;
    }

    void InvalidDataSendsNothing()
    {
        QFETCH(const int, imageSize);
        QFETCH(const int, confirmationSize);
        QFETCH(const QString, error);
        QFETCH(const QString, text);
        Update update(QByteArray(imageSize, '\x5a'), QByteArray(confirmationSize, '\x5a'));
        update.state.OnRunning();
        QCOMPARE(update.Commands(), QByteArray());
        QCOMPARE(update.cells.Changes(), QStringList{error});
        QCOMPARE(update.log.Texts(), QStringList{text});
    }

    void FailedExchangeEndsTheUpdate_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<QStringList>("changes");
        QTest::addColumn<QStringList>("announcements");
        const QStringList begun = Changes("OperationStatus=2 OperationProgress=0");
        QTest::newRow("initialization")
            << Wire::InitializeUpdate << QByteArray("V") << Changes("CommunicationError=1 ErrorCode=303")
            << QStringList{NotInitialized};
        QTest::newRow("sector") << Wire::SectorFrame(0) << QByteArray("VF")
                                << begun + Changes("CommunicationError=1 ErrorCode=303")
                                << QStringList{Initialized, SectorFailed};
        QTest::newRow("confirmation")
            << Wire::Finish << QByteArray("VFZ")
            << begun + Changes("OperationProgress=100 CommunicationError=1 ErrorCode=304")
            << QStringList{Initialized, Progress(100), NotConfirmed};
    }

    void FailedExchangeEndsTheUpdate()
    {
        QFETCH(const QByteArray, frame);
        QFETCH(const QByteArray, sent);
        QFETCH(const QStringList, changes);
        QFETCH(const QStringList, announcements);
        Update update(Wire::Sector(0));
        update.AnswerInstead(frame, Wire::Refusal);
        update.state.OnRunning();
        QCOMPARE(update.Commands(), sent);
        QCOMPARE(update.cells.Changes(), changes);
        QCOMPARE(Announcements(update.log), announcements);
    }

    void RefusedSectorIsSentThreeTimesAndKeepsTheProgress()
    {
        Update update;
        update.transciever.SetMaxRetransmissions(2);
        update.AnswerInstead(Wire::SectorFrame(1), Wire::Refusal);
        update.state.OnRunning();
        QCOMPARE(update.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::InitializeUpdate, Wire::SectorFrame(0), Wire::SectorFrame(1),
                                    Wire::SectorFrame(1), Wire::SectorFrame(1)}));
        QCOMPARE(update.cells.Changes(), Changes("OperationStatus=2 OperationProgress=0 OperationProgress=33 "
                                                 "CommunicationError=1 ErrorCode=303"));
        QCOMPARE(Announcements(update.log), (QStringList{Initialized, Progress(33), SectorFailed}));
        QCOMPARE(update.context.OperationProgress.Get(), 33);
    }

    void SectorThatIsAcceptedTheSecondTimeIsNoFailure()
    {
        Update update(Wire::Sector(0) + Wire::Sector(1));
        update.transciever.SetMaxRetransmissions(2);
        update.peer.AnswerInTurn({Wire::InitializeAnswer, Wire::Refusal, Wire::Acknowledge, Wire::Acknowledge,
                                  Wire::Acknowledge, Wire::IdleStatus});
        update.state.OnRunning();
        QCOMPARE(update.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::InitializeUpdate, Wire::SectorFrame(0), Wire::SectorFrame(0),
                                    Wire::SectorFrame(1), Wire::Finish, Wire::ReadStatus}));
        QCOMPARE(update.cells.Changes(),
                 Changes("OperationStatus=2 OperationProgress=0 OperationProgress=50 OperationProgress=100") +
                     AfterTheImage);
    }

    void FailureReplacesAnErrorThatIsPending_data()
    {
        QTest::addColumn<int>("imageSize");
        QTest::addColumn<int>("confirmationSize");
        QTest::addColumn<QByteArray>("refused");
        QTest::addColumn<int>("error");
        const QByteArray sector = Wire::SectorFrame(0);
        QTest::newRow("image") << 1000 << 6 << QByteArray() << 301;
        QTest::newRow("confirmation data") << 512 << 1 << QByteArray() << 302;
        QTest::newRow("initialization") << 512 << 6 << Wire::InitializeUpdate << 303;
        QTest::newRow("sector") << 512 << 6 << sector << 303;
        QTest::newRow("confirmation") << 512 << 6 << Wire::Finish << 304;
    }

    void FailureReplacesAnErrorThatIsPending()
    {
        QFETCH(const int, imageSize);
        QFETCH(const int, confirmationSize);
        QFETCH(const QByteArray, refused);
        QFETCH(const int, error);
        Update update(Wire::Image().left(imageSize), Wire::Confirmation.right(confirmationSize));
        update.AnswerInstead(refused, Wire::Refusal);
        update.context.ErrorCode.Set(Error::UpdateModeChangeFailed);
        update.state.OnRunning();
        QCOMPARE(static_cast<int>(update.context.ErrorCode.Get()), error);
    }

    void FailedStatusAtTheEndLeavesTheUpdateFinished()
    {
        Update update(Wire::Sector(0));
        update.AnswerInstead(Wire::ReadStatus, Wire::Refusal);
        update.state.OnRunning();
        QCOMPARE(update.Commands(), QByteArray("VFZs"));
        QCOMPARE(update.cells.Changes(),
                 Changes("OperationStatus=2 OperationProgress=0 OperationProgress=100 "
                         "OperationStatus=3 CommunicationError=1"));
        QCOMPARE(Announcements(update.log), (QStringList{Initialized, Progress(100)}));
    }

    /// This happens as long as no transition leads out of the state.
    void NextStepRunsTheWholeUpdateAgain()
    {
        Update update(Wire::Sector(0));
        update.AnswerInstead(Wire::ReadStatus, Wire::CalibrationModeStatus);
        update.state.OnRunning();
        update.state.OnRunning();
        QCOMPARE(update.Commands(), QByteArray("VFZsVFZs"));
        QCOMPARE(update.cells.Changes(),
                 Changes("OperationStatus=2 OperationProgress=0 OperationProgress=100 OperationStatus=3 "
                         "TesterMode=1 CurrentMeasurementType=0 StartTestStatus=14 "
                         "OperationStatus=2 OperationProgress=0 OperationProgress=100 OperationStatus=3"));
        QVERIFY(update.context.UpdateRequested.Get());
    }

    void ExchangeAcceptsItsOwnAnswerAlone_data()
    {
        QTest::addColumn<Exchange>("exchange");
        QTest::addColumn<bool>("isAnsweredByData");
        QTest::newRow("initialization")
            << Exchange([](UpdatingState& state) { return state.InitializeUpdate(); }) << true;
        QTest::newRow("sector") << Exchange([](UpdatingState& state) {
            return state.ProgramFlashSector(Wire::Sector(0));
        }) << false;
        QTest::newRow("confirmation")
            << Exchange([](UpdatingState& state) { return state.FinishUpdate(); }) << false;
    }

    void ExchangeAcceptsItsOwnAnswerAlone()
    {
        QFETCH(const Exchange, exchange);
        QFETCH(const bool, isAnsweredByData);
        Update update;
        const auto compare = [&](const QByteArray& answer, bool isAccepted) {
            update.peer.AnswerAlways(answer);
            update.context.CommunicationError.Set(false);
            update.cells.Clear();
            QCOMPARE(exchange(update.state), isAccepted);
            QCOMPARE(update.cells.Changes(), isAccepted ? QStringList{} : Changes("CommunicationError=1"));
        };
        compare(Wire::InitializeAnswer, isAnsweredByData);
        compare(Wire::FaultyUpdateModeStatus, isAnsweredByData); // The data are not read.
        compare(Wire::Acknowledge, !isAnsweredByData);
        compare(Wire::Refusal, false);
        compare(Wire::DamagedStatus, false);
        update.transciever.Close();
        update.peer.ClearRequests();
        compare(Wire::Acknowledge, false);
        QCOMPARE(update.Commands(), QByteArray());
    }

    void SectorIsSentAsItIs_data()
    {
        QTest::addColumn<QByteArray>("sector");
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("512 bytes") << Wire::Sector(2) << Wire::SectorFrame(2);
        QTest::newRow("2 bytes") << Wire::Bytes("0102") << Wire::Bytes("4601027ebc");
        QTest::newRow("none") << QByteArray() << Wire::Bytes("460228");
    }

    void SectorIsSentAsItIs()
    {
        QFETCH(const QByteArray, sector);
        QFETCH(const QByteArray, frame);
        Update update;
        QVERIFY(update.state.ProgramFlashSector(sector));
        QCOMPARE(update.peer.RequestBytes(), QList<QByteArray>{frame});
    }

    void LastTwoBytesOfTheConfirmationAreSent_data()
    {
        QTest::addColumn<QByteArray>("confirmation");
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("2 bytes") << Wire::Bytes("1234") << Wire::Bytes("5a1234c98a");
        QTest::newRow("3 bytes, a zero among them") << Wire::Bytes("ff0001") << Wire::Bytes("5a00012e89");
        QTest::newRow("a whole image") << Wire::Image() + Wire::Bytes("abcd") << Wire::Finish;
    }

    void LastTwoBytesOfTheConfirmationAreSent()
    {
        QFETCH(const QByteArray, confirmation);
        QFETCH(const QByteArray, frame);
        Update update({}, confirmation);
        QVERIFY(update.state.FinishUpdate());
        QCOMPARE(update.peer.RequestBytes(), QList<QByteArray>{frame});
    }
};

QTEST_GUILESS_MAIN(TestUpdatingState)
#include "tst_updatingstate.moc"
