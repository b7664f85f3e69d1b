#include <memory>

#include <QDir>
#include <QTest>

#include "support/serialdevice.h"
#include "unit/facade/facadefixture.h"
#include "unit/states/pauselog.h"
#include "unit/states/updatewire.h"

using Vesmar::Error;
using Vesmar::FirmwareUpdate;
using Vesmar::Tester;

namespace
{

const QByteArray OneByte("\xcd");

/// A tester, disabled at first, with an instrument at the other end of its line. The instrument answers with
/// these statuses one after the other, and from then on with the last; it refuses one frame and accepts all
/// others. No pause of this thread is waited for.
struct Bench {
    explicit Bench(const QList<QByteArray>& statuses, const QByteArray& refused = {})
    {
        const auto left = std::make_shared<QList<QByteArray>>(statuses);
        const QMap<char, QByteArray> answers = Wire::UpdateAnswers({});
        peer.Answer([=](const QByteArray& request) {
            if (request == Wire::ReadStatus) {
                return left->size() > 1 ? left->takeFirst() : left->constFirst();
            }
            return request == refused ? Wire::Refusal : answers.value(request.at(0));
        });
    }

    QByteArray Commands() const { return CommandsOf(peer); }

    /// Whether the library has the line open. The peer always has it open.
    bool IsLineOpen() const
    {
        const QString device = QString::fromLatin1(peer.DevicePath());
        const QDir descriptors(QStringLiteral("/proc/self/fd"));
        int count = 0;
        for (const QFileInfo& descriptor : descriptors.entryInfoList(QDir::Files | QDir::System)) {
            count += descriptor.symLinkTarget() == device ? 1 : 0;
        }
        return count > 1;
    }

    ScriptedPeer peer; // It is the first member, because the line is its pseudo-terminal.
    Facade facade;
    PauseLog pauses;
};

} // namespace

class TestTesterUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EmptyArraysAreRefused_data()
    {
        QTest::addColumn<QByteArray>("image");
        QTest::addColumn<QByteArray>("confirmation");
        QTest::newRow("no image") << QByteArray() << Wire::Confirmation;
        QTest::newRow("no confirmation") << Wire::Image() << QByteArray();
        QTest::newRow("neither") << QByteArray() << QByteArray();
    }

    void EmptyArraysAreRefused()
    {
        QFETCH(const QByteArray, image);
        QFETCH(const QByteArray, confirmation);
        Bench bench({Wire::UpdateModeStatus});
        bench.facade.context.SetUpdate("earlier image", "earlier confirmation");
        bench.facade.context.ErrorCode.Set(Error::UpdateConfirmationFailed);
        QCOMPARE(bench.facade.ChangesOf(
                     [&](Tester& tester) { QVERIFY(!tester.UpdateTester(image, confirmation)); }),
                 QStringList{});
        QCOMPARE(bench.facade.log.Texts(), QStringList{});
        const FirmwareUpdate kept = bench.facade.context.GetUpdate();
        QCOMPARE(kept.image, QByteArray("earlier image"));
        QCOMPARE(kept.confirmation, QByteArray("earlier confirmation"));
        QCOMPARE(RecordedSerialDevice().opens, 0);
        QCOMPARE(bench.Commands(), QByteArray());
    }

    void WhileEnabledItIsRequestedAtOnce()
    {
        Bench bench({Wire::Silence}); // The first query waits during the whole test.
        Facade& facade = bench.facade;
        facade.context.ErrorCode.Set(Error::UpdateConfirmationFailed);
        facade.tester->Enable();
        QVERIFY(bench.peer.WaitForRequests(1));
        const QByteArray image = Wire::Image();
        QCOMPARE(facade.ChangesOf(
                     [&](Tester& tester) { QVERIFY(tester.UpdateTester(image, Wire::Confirmation)); }),
                 Changes("UpdateRequested=1"));
        QCOMPARE(facade.log.Texts(), QStringList{});
        QCOMPARE(facade.context.GetUpdate().image, image);
        QCOMPARE(facade.context.GetUpdate().confirmation, Wire::Confirmation);

        const Operation again = [](Tester& tester) {
            QVERIFY(tester.UpdateTester(Wire::Sector(1), OneByte));
        };
        QCOMPARE(facade.ChangesOf(again), QStringList{});
        QCOMPARE(facade.context.GetUpdate().image, Wire::Sector(1));
        QCOMPARE(facade.context.GetUpdate().confirmation, OneByte);
    }

    void WhileEnabledTheDataIsThereBeforeTheRequest()
    {
        const Bench bench({Wire::Silence});
        bench.facade.tester->Enable();
        QVERIFY(bench.peer.WaitForRequests(1));
        FirmwareUpdate atTheRequest;
        QObject::connect(&bench.facade.context.UpdateRequested, &Vesmar::Notifible::ValueChanged,
                         bench.facade.tester.get(),
                         [&]() { atTheRequest = bench.facade.context.GetUpdate(); });
        bench.facade.tester->UpdateTester(Wire::Image(), Wire::Confirmation);
        QCOMPARE(atTheRequest.image, Wire::Image());
        QCOMPARE(atTheRequest.confirmation, Wire::Confirmation);
    }

    void WhileEnabledAnEmptyArrayChangesNothing()
    {
        Bench bench({Wire::Silence});
        bench.facade.tester->Enable();
        QVERIFY(bench.peer.WaitForRequests(1));
        QCOMPARE(bench.facade.ChangesOf(
                     [](Tester& tester) { QVERIFY(!tester.UpdateTester(Wire::Image(), QByteArray())); }),
                 QStringList{});
        QCOMPARE(bench.facade.context.GetUpdate().image, QByteArray());
    }

    void WhileDisabledItIsDoneBeforeTheCallReturns()
    {
        Bench bench({Wire::IdleStatus});
        Facade& facade = bench.facade;
        facade.context.ErrorCode.Set(Error::UpdateConfirmationFailed);
        const SignalLog changes(*facade.tester);
        const QStringList expected =
            Changes("ErrorCode=15 CurrentMeasurementType=0 StartTestStatus=14 OperationStatus=2 "
                    "OperationProgress=33 OperationProgress=66 OperationProgress=100 OperationStatus=3");
        QCOMPARE(facade.ChangesOf(
                     [](Tester& tester) { QVERIFY(tester.UpdateTester(Wire::Image(), Wire::Confirmation)); }),
                 expected);
        QCOMPARE(changes.Signals(), expected);
        QCOMPARE(bench.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::ChangeToUpdateMode, Wire::InitializeUpdate,
                                    Wire::SectorFrame(0), Wire::SectorFrame(1), Wire::SectorFrame(2),
                                    Wire::Finish, Wire::ReadStatus}));
        QCOMPARE(bench.pauses.Text(), QStringLiteral("2000 100 100 100 2500"));
        QCOMPARE(Banners(facade.log), QStringList{});
        QCOMPARE(facade.context.GetUpdate().image, Wire::Image());
        QCOMPARE(facade.context.GetUpdate().confirmation, Wire::Confirmation);
        QCOMPARE(RecordedSerialDevice().opens, 1);
        QVERIFY(!bench.IsLineOpen());
        QVERIFY(!facade.tester->IsEnabled());
    }

    void SlotCanNeitherEnableNorUpdateUntilItHasReturned()
    {
        Bench bench({Wire::UpdateModeStatus});
        Tester& tester = *bench.facade.tester;
        int calls = 0;
        const auto reenter = [&] {
            ++calls;
            tester.Enable();
            QVERIFY(!tester.IsEnabled());
            QVERIFY(!tester.UpdateTester(OneByte, OneByte));
        };
        const auto connections = {connect(&tester, &Tester::TesterModeChanged, this, reenter),
                                  connect(&tester, &Tester::OperationStatusChanged, this, reenter)};
        QVERIFY(tester.UpdateTester(Wire::Sector(0), Wire::Confirmation));
        QCOMPARE(calls, 3); // The mode, and the update in progress and finished.
        QCOMPARE(bench.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::InitializeUpdate, Wire::SectorFrame(0),
                                    Wire::Finish, Wire::ReadStatus}));
        QCOMPARE(bench.facade.context.GetUpdate().image, Wire::Sector(0));
        QCOMPARE(RecordedSerialDevice().opens, 1);
        for (const QMetaObject::Connection& connection : connections) {
            disconnect(connection);
        }
        QVERIFY(!tester.UpdateTester(OneByte, Wire::Confirmation));
        QCOMPARE(static_cast<int>(tester.ErrorCode()), 301); // This one was begun.
        tester.Enable();
        QVERIFY(tester.IsEnabled());
    }

    void WorksBetweenTwoLinks()
    {
        Bench bench({Wire::UpdateModeStatus});
        bench.facade.tester->Enable();
        QVERIFY(bench.peer.WaitForRequests(1));
        bench.facade.tester->Disable();
        bench.peer.ClearRequests();

        QVERIFY(bench.facade.tester->UpdateTester(Wire::Sector(0), Wire::Confirmation));
        QCOMPARE(bench.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::InitializeUpdate, Wire::SectorFrame(0),
                                    Wire::Finish, Wire::ReadStatus}));
        QVERIFY(!bench.IsLineOpen());

        bench.facade.tester->Enable();
        QVERIFY(bench.IsLineOpen());
        QVERIFY(bench.peer.WaitForRequests(6));
        bench.facade.tester->Disable();
        QVERIFY(!bench.IsLineOpen());
    }

    void FailureReturnsFalse_data()
    {
        QTest::addColumn<QByteArray>("status");
        QTest::addColumn<QByteArray>("refused");
        QTest::addColumn<int>("imageSize");
        QTest::addColumn<int>("confirmationSize");
        QTest::addColumn<QByteArray>("sent");
        QTest::addColumn<int>("error");
        const QByteArray none;
        const QByteArray& waiting = Wire::UpdateModeStatus;
        QTest::newRow("update mode refused")
            << Wire::IdleStatus << Wire::ChangeToUpdateMode << 1536 << 6 << QByteArray("sxxx") << 300;
        QTest::newRow("image of 1000 bytes")
            << Wire::IdleStatus << none << 1000 << 6 << QByteArray("sx") << 301;
        QTest::newRow("image of 1000 bytes, in update mode")
            << waiting << none << 1000 << 6 << QByteArray("s") << 301;
        QTest::newRow("confirmation of 1 byte, in update mode")
            << waiting << none << 1536 << 1 << QByteArray("s") << 302;
        QTest::newRow("initialization refused")
            << waiting << Wire::InitializeUpdate << 1536 << 6 << QByteArray("sVVV") << 303;
        QTest::newRow("second sector refused")
            << waiting << Wire::SectorFrame(1) << 1536 << 6 << QByteArray("sVFFFF") << 303;
        QTest::newRow("confirmation refused")
            << waiting << Wire::Finish << 512 << 6 << QByteArray("sVFZZZ") << 304;
    }

    void FailureReturnsFalse()
    {
        QFETCH(const QByteArray, status);
        QFETCH(const QByteArray, refused);
        QFETCH(const int, imageSize);
        QFETCH(const int, confirmationSize);
        QFETCH(const QByteArray, sent);
        QFETCH(const int, error);
        const Bench bench({status}, refused);
        QVERIFY(!bench.facade.tester->UpdateTester(Wire::Image().left(imageSize),
                                                   Wire::Confirmation.right(confirmationSize)));
        QCOMPARE(bench.Commands(), sent);
        QCOMPARE(static_cast<int>(bench.facade.tester->ErrorCode()), error);
        QCOMPARE(Banners(bench.facade.log), QStringList{});
        QVERIFY(!bench.facade.context.UpdateRequested.Get());
        const bool wasModeRefused = error == 300;
        QCOMPARE(bench.IsLineOpen(), wasModeRefused);
    }

    void FailedModeChangeLeavesTheLineOpenForTheNextUpdate()
    {
        const Bench bench({Wire::IdleStatus, Wire::UpdateModeStatus}, Wire::ChangeToUpdateMode);
        Tester& tester = *bench.facade.tester;
        QVERIFY(!tester.UpdateTester(Wire::Image(), Wire::Confirmation));
        QVERIFY(!tester.IsEnabled());
        QVERIFY(bench.IsLineOpen());
        // The instrument is in update mode by now, so that the image is checked.
        QVERIFY(!tester.UpdateTester(OneByte, Wire::Confirmation));
        QCOMPARE(bench.Commands(), QByteArray("sxxxs"));
        QCOMPARE(RecordedSerialDevice().opens, 1);
        QVERIFY(!bench.IsLineOpen());
    }

    void FailedModeChangeLeavesTheLineOpenForALink()
    {
        const Bench bench({Wire::IdleStatus}, Wire::ChangeToUpdateMode);
        Tester& tester = *bench.facade.tester;
        QVERIFY(!tester.UpdateTester(Wire::Image(), Wire::Confirmation));
        tester.Enable();
        QVERIFY(tester.IsEnabled());
        QVERIFY(bench.peer.WaitForRequests(5)); // The fifth request comes after "sxxx".
        tester.Disable();
        QVERIFY(!bench.IsLineOpen());
    }

    void FailedStatusDoesNotEndTheUpdate()
    {
        Bench bench({Wire::Refusal, Wire::Refusal, Wire::Refusal, Wire::IdleStatus});
        QCOMPARE(bench.facade.ChangesOf([](Tester& tester) {
            QVERIFY(tester.UpdateTester(Wire::Sector(0), Wire::Confirmation));
        }),
                 Changes("CommunicationError=1 OperationStatus=2 OperationProgress=100 OperationStatus=3 "
                         "CurrentMeasurementType=0 StartTestStatus=14"));
        QCOMPARE(bench.Commands(), QByteArray("sssVFZs"));
        QVERIFY(!bench.IsLineOpen());
    }

    void ResultIsTheErrorAtTheEnd_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<bool>("isUpdated");
        QTest::newRow("none before, error 5 after") << Wire::UpdateModeStatus << Wire::FaultyStatus << false;
        QTest::newRow("error 5 before, no status after")
            << Wire::FaultyUpdateModeStatus << Wire::Refusal << true;
    }

    void ResultIsTheErrorAtTheEnd()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        QFETCH(const bool, isUpdated);
        const Bench bench({before, after});
        QCOMPARE(bench.facade.tester->UpdateTester(Wire::Sector(0), Wire::Confirmation), isUpdated);
        QCOMPARE(bench.facade.tester->OperationStatus(), Vesmar::OperationState::Finished);
        QCOMPARE(bench.facade.tester->OperationProgress(), 100);
        QVERIFY(!bench.IsLineOpen());
    }

    void MissingDeviceFailsTheInitialization()
    {
        Bench bench({Wire::UpdateModeStatus});
        RedirectSerialDevice({});
        QCOMPARE(bench.facade.ChangesOf([](Tester& tester) {
            QVERIFY(!tester.UpdateTester(Wire::Image(), Wire::Confirmation));
        }),
                 Changes("CommunicationError=1 ErrorCode=303"));
        QCOMPARE(RecordedSerialDevice().opens, 1);

        RedirectSerialDevice(bench.peer.DevicePath());
        QVERIFY(!bench.facade.tester->UpdateTester(OneByte, Wire::Confirmation));
        QCOMPARE(static_cast<int>(bench.facade.tester->ErrorCode()), 301);
        QCOMPARE(bench.Commands(), QByteArray("s"));
        QVERIFY(!bench.IsLineOpen());
    }
};

QTEST_GUILESS_MAIN(TestTesterUpdate)
#include "tst_testerupdate.moc"
