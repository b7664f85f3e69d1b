#include <functional>
#include <future>
#include <memory>
#include <thread>

#include <QElapsedTimer>
#include <QTest>

#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>

#include "states/rcd/rcdstate.h"
#include "support/serialdevice.h"
#include "unit/states/rcdrun.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::RCDState;

using Request = std::function<int(RCDState&, int timeoutMs, Error* error)>;

Q_DECLARE_METATYPE(Request)

namespace
{

constexpr int Patience = 5000; ///< For what comes.
constexpr int Shortly = 200;   ///< For what never comes.
/// What nothing here writes.
constexpr Error Untouched = Error(77);

const QByteArray Running = RCDWire::Status(7);
const QByteArray Terminated = Wire::Bytes("0af9fd91");
const QByteArray Result = RCDWire::Result;

/// Requests that send one frame once. The error of those that report it elsewhere goes to `error`.
const Request Status = [](RCDState& state, int timeout, Error*) { return state.RequestRCDStatus(timeout); };
const Request StatusElsewhere = [](RCDState& state, int timeout, Error* error) {
    return state.RequestRCDStatus(timeout, error);
};
const Request Prepare = [](RCDState& state, int timeout, Error*) {
    Vesmar::RCDSettings settings;
    settings.SetMode(Vesmar::RCDSettings::RCDMode::IaTa1);
    settings.SetQuantity(Vesmar::RCDSettings::RCDQuantity::Quantity2);
    settings.SetPhase(Vesmar::RCDSettings::RCDPhase::Phase0);
    settings.SetCurrent(Vesmar::RCDSettings::RCDCurrent::Current3);
    settings.SetType(Vesmar::RCDSettings::RCDType::Type1);
    settings.SetRe(100.0F);
    return state.PrepareRCDMeasurement(settings, timeout);
};
const Request Start = [](RCDState& state, int timeout, Error*) { return state.StartRCDMeasurement(timeout); };
const Request ObjectCheck = [](RCDState& state, int timeout, Error*) {
    return state.RequestRCDCheckObjectError(timeout);
};
const Request ObjectCheckElsewhere = [](RCDState& state, int timeout, Error* error) {
    return state.RequestRCDCheckObjectError(timeout, error);
};

/// A base state, and an instrument that is asked once for everything.
struct Base : MeasurementEngine {
    RCDState state{&context, nullptr, nullptr};
};

/// What the base makes of pieces that arrive 50 ms after each other, and then of silence.
struct Wait : Base {
    std::unique_ptr<QByteArray> Await(const QList<QByteArray>& pieces, int timeoutMs = Patience)
    {
        Restart();
        peer.Send(pieces.constFirst());
        auto sender = std::async(std::launch::async, [this, later = pieces.mid(1)] {
            for (const QByteArray& piece : later) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                peer.Send(piece);
            }
        });
        return std::unique_ptr<QByteArray>(state.AwaitResults(timeoutMs));
    }

    bool AwaitsInVain(const QList<QByteArray>& pieces) { return Await(pieces, Shortly)->isEmpty(); }
};

} // namespace

class TestRCDState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KeepsContextAndParents()
    {
        Engine engine;
        QObject owner;
        RCDState parent(&engine.context, nullptr, nullptr);
        const auto* child = new RCDState(&engine.context, &parent, &owner);
        QCOMPARE(child->GetContext(), &engine.context);
        QCOMPARE(child->GetParentState(), &parent);
        QCOMPARE(child->parent(), &owner);
        QCOMPARE(parent.GetParentState(), nullptr);
    }

    void HooksOfTheBaseWriteTheirBannersAlone()
    {
        Base base;
        CompareHook(
            base, [&base]() { base.state.OnEntry(); }, "ENTERING RCDState ");
        CompareHook(
            base, [&base]() { base.state.OnExit(); }, "LEAVING RCDState ");
        base.Restart();
        base.state.OnRunning();
        QCOMPARE(base.log.Texts(), QStringList());
        QCOMPARE(base.cells.Changes(), QStringList());
        QCOMPARE(base.Commands(), QByteArray());
    }

    void HasTheBudgetsAndTimesOfTheTest()
    {
        struct Limits : RCDState {
            using RCDState::_lsaap;
            using RCDState::_maxPrepareAttempts;
            using RCDState::_maxStartAttempts;
            using RCDState::_maxStatusAttempts;
            using RCDState::_requestTimeout;
            using RCDState::_resultTimeout;
            using RCDState::_retryDelay;
            using RCDState::RCDState;
        };
        Engine engine;
        const Limits limits(&engine.context, nullptr, nullptr);
        QCOMPARE(limits._maxStatusAttempts, 9);
        QCOMPARE(limits._maxPrepareAttempts, 3);
        QCOMPARE(limits._lsaap, 5);
        QCOMPARE(limits._maxStartAttempts, 3);
        QCOMPARE(limits._requestTimeout, 500);
        QCOMPARE(limits._retryDelay, 400);
        QCOMPARE(limits._resultTimeout, 1000);
    }

    void RequestReturnsWhatBecameOfIt_data()
    {
        QTest::addColumn<Request>("request");
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("result");
        const auto rows = [](const char* name, const Request& request, const QByteArray& frame) {
            const auto row = [&](const char* answerName, const QByteArray& answer, int result) {
                QTest::addRow("%s, %s", name, answerName) << request << frame << answer << result;
            };
            row("acknowledged", Wire::Acknowledge, 1);
            row("refused", Wire::Refusal, 2);
            row("silence", Wire::Silence, 3);
            row("damaged", Wire::DamagedStatus, 4);
        };
        rows("status", Status, Wire::ReadStatus);
        rows("status with the error elsewhere", StatusElsewhere, Wire::ReadStatus);
        rows("prepare", Prepare, Wire::PrepareIaTa);
        rows("start", Start, Wire::StartMeasurement);
        rows("object check", ObjectCheck, Wire::ReadMeasurement);
        rows("object check with the error elsewhere", ObjectCheckElsewhere, Wire::ReadMeasurement);
    }

    void RequestReturnsWhatBecameOfIt()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, frame);
        QFETCH(const QByteArray, answer);
        QFETCH(const int, result);
        Base base;
        base.transciever.SetMaxRetransmissions(2); // Of no concern to a request that is sent once.
        base.peer.AnswerAlways(answer);
        Error error = Untouched;
        QElapsedTimer time;
        time.start();
        QCOMPARE(request(base.state, 300, &error), result);
        QCOMPARE(time.elapsed(), 10 + (answer.isEmpty() ? 300 : 4) + (result > 1 ? 200 : 0));
        QCOMPARE(base.peer.RequestBytes(), QList<QByteArray>{frame});
        base.transciever.Close();
        QCOMPARE(request(base.state, Patience, &error), 3);
        QCOMPARE(base.cells.Changes(), QStringList());
        QCOMPARE(error, Untouched);
    }

    void DataGoToTheCells_data()
    {
        QTest::addColumn<Request>("request");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char* name, const Request& request, const QByteArray& answer, int result,
                            int error, const char* changes) {
            QTest::newRow(name) << request << answer << result << error << QString::fromLatin1(changes);
        };
        const QByteArray status = Wire::Bytes("8a37e7b2");
        const QByteArray tooLong = Wire::Bytes("31323334356c54"); // Intact, and of function 17.
        const int untouched = static_cast<int>(Untouched);
        row("status", Status, status, 0, untouched,
            "NewMeasurement=1 CurrentMeasurementType=10 MeasurementFunctionStatus=7 ErrorCode=523");
        row("status with the error elsewhere", StatusElsewhere, status, 0, 523,
            "NewMeasurement=1 CurrentMeasurementType=10 MeasurementFunctionStatus=7");
        row("status without a function", StatusElsewhere, RCDWire::StartTest(14, false, 3), 0, untouched,
            "CurrentMeasurementType=0 ErrorCode=3 StartTestStatus=14");
        row("status that no parser accepts", Status, tooLong, 0, untouched, "");
        row("the same with the error elsewhere", StatusElsewhere, tooLong, 0, untouched, "");
        row("prepare", Prepare, status, 0, untouched, "");
        row("start", Start, status, 0, untouched, "");
        row("object check", ObjectCheck, RCDWire::ObjectCheck(3), 0, untouched, "ErrorCode=502");
        row("clean object", ObjectCheck, RCDWire::ObjectCheck(0), 0, untouched, "ErrorCode=15");
        row("object check with the error elsewhere", ObjectCheckElsewhere, RCDWire::ObjectCheck(10), 1, 507,
            "");
        row("clean object with the error elsewhere", ObjectCheckElsewhere, RCDWire::ObjectCheck(0), 1, 15,
            "");
    }

    void DataGoToTheCells()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, answer);
        Base base;
        base.context.ErrorCode.Set(Error::RCDCheckObject2);
        base.Restart();
        base.peer.AnswerAlways(answer);
        Error error = Untouched;
        QTEST(request(base.state, Patience, &error), "result");
        QTEST(static_cast<int>(error), "error");
        QTEST(base.cells.Changes().join(QLatin1Char(' ')), "changes");
    }

    void AwaitReturnsTheFrameThatEndsTheTest_data()
    {
        QTest::addColumn<QList<QByteArray>>("pieces");
        QTest::addColumn<QByteArray>("frame");
        const QByteArray none;
        const QByteArray damagedResult = Result.left(25) + '\x00';
        const QByteArray garbage("\x55\xAA\x55", 3);
        const auto row = [](const char* name, const QList<QByteArray>& pieces, const QByteArray& frame) {
            QTest::newRow(name) << pieces << frame;
        };
        row("result", {Result}, Result);
        row("result of zeros", {QByteArray(26, '\0')}, QByteArray(26, '\0'));
        row("terminated", {Terminated}, Terminated);
        row("terminated, IEC", {Wire::Bytes("0bf9cca2")}, Wire::Bytes("0bf9cca2"));
        row("running", {Running}, none);
        row("status frames alone", {Running + Running + Running}, none);

        row("glued: two status frames, result", {Running + RCDWire::Status(8) + Result}, Result);
        row("glued: many status frames, result", {Running.repeated(9) + Result}, Result);
        row("glued: 5 KiB of status frames, result", {Running.repeated(1280) + Result}, Result);
        row("glued: status, terminated", {Running + Terminated}, Terminated);
        row("glued: terminated, result", {Terminated + Result}, Terminated);
        row("glued: many status frames, terminated, result", {Running.repeated(9) + Terminated + Result},
            Terminated);
        row("glued: result, terminated", {Result + Terminated}, Result);
        row("glued: two results", {Result + RCDWire::ObjectCheck(3)}, Result);

        row("pieces: a result in two", {Result.left(10), Result.mid(10)}, Result);
        row("pieces: a result by bytes",
            {Result.left(1), Result.mid(1, 1), Result.mid(2, 22), Result.mid(24, 1), Result.mid(25)}, Result);
        row("pieces: a termination in two", {Terminated.left(2), Terminated.mid(2)}, Terminated);
        row("pieces: status frames, then the result", {Running, Running + Running, Result}, Result);
        row("pieces: cut within frames", {Running.left(3), Running.mid(3) + Result.left(20), Result.mid(20)},
            Result);
        row("pieces: half a result, then nothing", {Result.left(13)}, none);
        row("pieces: all but one byte", {Running + Result.left(25)}, none);

        row("garbage before a result", {garbage + Result}, none);
        row("garbage before a termination", {garbage + Terminated}, none);
        row("garbage between", {Running + garbage + Result}, none);
        row("garbage behind a result", {Result + garbage}, Result);
        row("garbage behind a termination", {Terminated + garbage}, Terminated);
        row("garbage behind a long row of status frames", {Running.repeated(8) + Terminated + garbage},
            Terminated);
        row("garbage alone", {garbage}, none);
        row("garbage as long as a result", {QByteArray(26, '\x55')}, none);
        row("damaged result", {damagedResult}, none);
        row("damaged result, result", {damagedResult, Result}, none);
        row("damaged termination", {Wire::Bytes("0af9fd90")}, none);
    }

    void AwaitReturnsTheFrameThatEndsTheTest()
    {
        QFETCH(const QList<QByteArray>, pieces);
        QFETCH(const QByteArray, frame);
        Wait wait;
        QCOMPARE(wait.Await(pieces, frame.isEmpty() ? Shortly : Patience)->toHex(), frame.toHex());
    }

    void AwaitParsesStatusFramesInOrder()
    {
        Wait wait;
        wait.Await({RCDWire::Status(5, false, 3) + RCDWire::Status(7, true, 4) + Result});
        QCOMPARE(wait.cells.Changes().join(QLatin1Char(' ')),
                 QStringLiteral("CurrentMeasurementType=10 MeasurementFunctionStatus=5 ErrorCode=523 "
                                "NewMeasurement=1 MeasurementFunctionStatus=7 ErrorCode=524"));
    }

    void AwaitParsesNothingThatIsDamaged()
    {
        Wait wait;
        QVERIFY(wait.AwaitsInVain({Wire::Bytes("0af9fd90"), Running, QByteArray(26, '\x55')}));
        QCOMPARE(wait.cells.Changes(), QStringList());
    }

    void AwaitParsesAStatusInFrontOfPartOfAResult()
    {
        Wait wait;
        QVERIFY(wait.AwaitsInVain({Running + Result.left(25)}));
        QCOMPARE(wait.context.MeasurementFunctionStatus.Get(), FunctionState::Running);
        QCOMPARE(wait.Await({RCDWire::Status(8) + Result.left(5), Result.mid(5)})->toHex(), Result.toHex());
        QCOMPARE(wait.context.MeasurementFunctionStatus.Get(), FunctionState::Stopping);
    }

    /// Such a status says nothing about the function, which keeps the state that it had.
    void AwaitEndsAtAStatusWithoutAFunctionAfterATermination()
    {
        Wait wait;
        wait.context.MeasurementFunctionStatus.Set(FunctionState::Terminated);
        QCOMPARE(wait.Await({Wire::IdleStatus})->toHex(), Wire::IdleStatus.toHex());
        QVERIFY(wait.AwaitsInVain({Running}));
        QVERIFY(wait.AwaitsInVain({Wire::IdleStatus}));
    }

    void AwaitReturnsNothingAfterItsTime()
    {
        Base base;
        QElapsedTimer time;
        time.start();
        const std::unique_ptr<QByteArray> result(base.state.AwaitResults(300));
        QVERIFY(result->isEmpty());
        QCOMPARE(time.elapsed(), 300);
        QCOMPARE(base.cells.Changes(), QStringList());
    }

    void AwaitBeginsEachTimeWithNothing()
    {
        Wait wait;
        QVERIFY(wait.AwaitsInVain({Result.left(10)}));
        QVERIFY(wait.AwaitsInVain({Result.mid(10)}));
        QCOMPARE(wait.Await({Result})->toHex(), Result.toHex());
    }

    void AwaitSendsNothing()
    {
        Wait wait;
        wait.Await({Running, Result});
        QCOMPARE(wait.Commands(), QByteArray());
    }

    void AwaitGivesABabblingLineUp()
    {
        Base base;
        LetSerialDeviceBabble();
        const std::unique_ptr<QByteArray> result(base.state.AwaitResults(Patience));
        QVERIFY(result->isEmpty());
        QCOMPARE(base.cells.Changes(), QStringList());
    }

    void AwaitedResultsAreParsed_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("isOfTheTest");
        QTest::addColumn<bool>("received");
        QTest::addColumn<bool>("parsed");
        QTest::newRow("result") << Result << true << true << true;
        QTest::newRow("result of another test") << Result << false << true << false;
        QTest::newRow("terminated") << Terminated << true << true << false;
        QTest::newRow("silence") << Wire::Silence << true << false << false;
        QTest::newRow("running, then silence") << Running << true << false << false;
    }

    void AwaitedResultsAreParsed()
    {
        QFETCH(const QByteArray, frame);
        QFETCH(const bool, isOfTheTest);
        QFETCH(const bool, received);
        QFETCH(const bool, parsed);
        for (const bool isUbRe : {true, false}) {
            Base base;
            base.Settings(isOfTheTest ? RCDSettingsOfMode(0)
                                      : new MeasurementSettings(MeasurementType::RLN, nullptr));
            base.context.CurrentMeasurementType.Set(isOfTheTest ? MeasurementType::RCD
                                                                : MeasurementType::RLN);
            base.Restart();
            base.peer.Send(frame);
            const int timeout = received ? Patience : Shortly;
            bool isReceived = !received;
            const bool isParsed = isUbRe ? base.state.AwaitUbReResults(timeout, &isReceived)
                                         : base.state.AwaitIaTaResults(timeout, &isReceived);
            QCOMPARE(isParsed, parsed);
            QCOMPARE(isReceived, received);
            QCOMPARE(base.cells.Changes().contains(QStringLiteral("TestResults")), parsed);
        }
    }

    void AwaitedUbReResultsHaveRe()
    {
        Base base;
        base.Settings(RCDSettingsOfMode(0));
        base.peer.Send(Running + Result);
        bool received = false;
        QVERIFY(base.state.AwaitUbReResults(Patience, &received));
        const auto* results = dynamic_cast<Vesmar::RCDResults*>(base.context.TestResults.Get());
        QVERIFY(results != nullptr);
        QCOMPARE(results->_re, 0.5F);
        QVERIFY(results->_ia == 3.4028235e38F);
    }

    void AwaitedIaTaResultsHaveIaAndTa()
    {
        Base base;
        base.peer.Send(RCDWire::IECStatus(7) + Result);
        bool received = false;
        QVERIFY(base.state.AwaitIaTaResults(Patience, &received));
        const auto* results = dynamic_cast<Vesmar::RCDIECResults*>(base.context.TestResults.Get());
        QVERIFY(results != nullptr);
        QCOMPARE(results->_ia, 1.0F);
        QCOMPARE(results->_ta, 2.5F);
    }

    void ClearCheckObjectErrorClears500To507Alone_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("left");
        for (const int error : {0, 14, 15, 398, 401, 499, 508, 520, 521}) {
            QTest::addRow("%d", error) << error << error;
        }
        for (int error = 500; error <= 507; ++error) {
            QTest::addRow("%d", error) << error << 15;
        }
    }

    void ClearCheckObjectErrorClears500To507Alone()
    {
        QFETCH(const int, error);
        QFETCH(const int, left);
        Base base;
        base.context.ErrorCode.Set(static_cast<Error>(error));
        base.Restart();
        base.state.ClearCheckObjectError();
        QCOMPARE(static_cast<int>(base.context.ErrorCode.Get()), left);
        QCOMPARE(base.cells.Changes().size(), error == left ? 0 : 1);
    }
};

QTEST_GUILESS_MAIN(TestRCDState)
#include "tst_rcdstate.moc"
