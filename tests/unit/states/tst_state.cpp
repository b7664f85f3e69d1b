#include <functional>
#include <memory>

#include <QElapsedTimer>
#include <QTest>

#include <Vesmar/rlnresults.h>
#include <Vesmar/rlnsettings.h>

#include "states/connection/monitoringstate.h"
#include "states/state.h"
#include "unit/states/enginefixture.h"

using Vesmar::Error;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::State;

using Request = std::function<bool(State&)>;

Q_DECLARE_METATYPE(Request)

namespace
{

/// A request method: what it sends, what counts as success, and what the success changes.
struct Method {
    const char* name;
    Request request;
    QByteArray frame;
    QByteArray success;
    QStringList changes;
};

const QByteArray SixValues = Wire::SixReadings;

const QList<Method>& Reads()
{
    static const QList<Method> reads = {
        {"RequestStatus", [](State& state) { return state.RequestStatus(); }, Wire::ReadStatus,
         Wire::Bytes("a3529a32"),
         Changes("NewMeasurement=1 TesterMode=1 CurrentMeasurementType=3 ErrorCode=5 "
                 "MeasurementFunctionStatus=2")},
        {"RequestVersion", [](State& state) { return state.RequestVersion(); }, Wire::ReadVersion,
         Wire::Bytes("50415431323334353637383931303541424344323031361fe6"), Changes("DeviceInformation")},
        {"RequestCurrentDateTime",
         [](State& state) { return state.RequestCurrentDateTime(); },
         Wire::ReadCurrentDate,
         Wire::Bytes("2412312359586199"),
         {QStringLiteral("CurrentDateTime=2024-12-31 23:59:58")}},
        {"RequestCalibrationDateTime",
         [](State& state) { return state.RequestCalibrationDateTime(); },
         Wire::ReadCalibrationDate,
         Wire::Bytes("2412312359586199"),
         {QStringLiteral("CalibrationDateTime=2024-12-31 23:59:58")}},
        {"RequestMeasurementResults",
         [](State& state) { return state.RequestMeasurementResults(MeasurementType::RLN); },
         Wire::ReadMeasurement, SixValues, Changes("TestResults")},
    };
    return reads;
}

const QList<Method>& Commands()
{
    static const QDateTime dateTime({2024, 3, 7}, {14, 5, 9});
    static const QList<Method> commands = {
        {"ConfigureCurrentDateTime",
         [](State& state) { return state.ConfigureCurrentDateTime(dateTime); },
         Wire::Bytes("72240307140509ab99"),
         Wire::Acknowledge,
         {}},
        {"ConfigureCalibrationDateTime",
         [](State& state) { return state.ConfigureCalibrationDateTime(dateTime); },
         Wire::Bytes("74240307000000f1c9"),
         Wire::Acknowledge,
         {}},
        {"ChangeTesterMode",
         [](State& state) { return state.ChangeTesterMode(OperationMode::Update); },
         Wire::Bytes("780393b1"),
         Wire::Acknowledge,
         {}},
        {"PrepareMeasurement",
         [](State& state) {
             Vesmar::RLNSettings settings;
             return state.PrepareMeasurement(settings);
         },
         Wire::Bytes("5001ff0100ffffffffea32"),
         Wire::Acknowledge,
         {}},
        {"StartMeasurement",
         [](State& state) { return state.StartMeasurement(); },
         Wire::StartMeasurement,
         Wire::Acknowledge,
         {}},
        {"StopMeasurement",
         [](State& state) { return state.StopMeasurement(); },
         Wire::StopMeasurement,
         Wire::Acknowledge,
         {}},
    };
    return commands;
}

void AddRequestColumns()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("changes");
}

void AddFailureRow(const Method& method, const char* failure, const QByteArray& answer)
{
    QTest::addRow("%s, %s", method.name, failure)
        << method.request << method.frame << answer << Changes("CommunicationError=1");
}

} // namespace

class TestState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The checksum of zeros is zero.
    void ZerosPassAsAStatus()
    {
        Engine engine;
        engine.peer.AnswerAlways(QByteArray(4, '\0'));
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(state.RequestStatus());
        QCOMPARE(engine.cells.Changes(), Changes("CurrentMeasurementType=0 ErrorCode=0 StartTestStatus=0"));
    }

    void KeepsContextAndParents()
    {
        Engine engine;
        QObject owner;
        State parent(&engine.context, nullptr, nullptr);
        auto* child = new State(&engine.context, &parent, &owner);
        QCOMPARE(parent.GetContext(), &engine.context);
        QCOMPARE(parent.GetParentState(), nullptr);
        QCOMPARE(parent.parent(), nullptr);
        QCOMPARE(child->GetContext(), &engine.context);
        QCOMPARE(child->GetParentState(), &parent);
        QCOMPARE(child->parent(), &owner);
    }

    void HooksOfTheBaseDoNothing()
    {
        Engine engine;
        State state(&engine.context, nullptr, nullptr);
        engine.log.Clear();
        state.OnEntry();
        state.OnRunning();
        state.OnExit();
        QCOMPARE(engine.log.Texts(), QStringList{});
        QCOMPARE(engine.cells.Changes(), QStringList{});
        QCOMPARE(engine.Commands(), QByteArray{});
    }

    void HasAMetaObjectWithoutMembersWhichConcreteStatesShare()
    {
        Engine engine;
        const Vesmar::MonitoringState concrete(&engine.context, nullptr);
        const QMetaObject& meta = State::staticMetaObject;
        QCOMPARE(concrete.metaObject(), &meta);
        QCOMPARE(meta.className(), "Vesmar::State");
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void SuccessfulRequestSendsItsFrameAndPublishesTheAnswer_data()
    {
        AddRequestColumns();
        for (const Method& method : Reads() + Commands()) {
            QTest::newRow(method.name) << method.request << method.frame << method.success << method.changes;
        }
    }

    void SuccessfulRequestSendsItsFrameAndPublishesTheAnswer()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, frame);
        QFETCH(const QByteArray, answer);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.peer.AnswerAlways(answer);
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(request(state));
        QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{frame});
        QCOMPARE(engine.cells.Changes(), changes);
        QVERIFY(request(state));
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{frame, frame}));
    }

    void SuccessLeavesARaisedCommunicationErrorRaised_data()
    {
        SuccessfulRequestSendsItsFrameAndPublishesTheAnswer_data();
    }

    void SuccessLeavesARaisedCommunicationErrorRaised()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, answer);
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.peer.AnswerAlways(answer);
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(request(state));
        QVERIFY(engine.context.CommunicationError.Get());
    }

    void FailedRequestRaisesCommunicationErrorOnce_data()
    {
        AddRequestColumns();
        for (const Method& read : Reads()) {
            AddFailureRow(read, "acknowledged", Wire::Acknowledge);
            AddFailureRow(read, "refused", Wire::Refusal);
            AddFailureRow(read, "damaged", Wire::DamagedStatus);
            AddFailureRow(read, "rejected by its parser", Wire::Bytes("31323334356c54"));
        }
        for (const Method& command : Commands()) {
            AddFailureRow(command, "answered with data", Wire::StartTest0Status);
            AddFailureRow(command, "refused", Wire::Refusal);
            AddFailureRow(command, "damaged", Wire::DamagedStatus);
        }
    }

    void FailedRequestRaisesCommunicationErrorOnce()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, frame);
        QFETCH(const QByteArray, answer);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.peer.AnswerAlways(answer);
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(!request(state));
        QVERIFY(!request(state));
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{frame, frame}));
        QCOMPARE(engine.cells.Changes(), changes);
        QVERIFY(engine.context.CommunicationError.Get());
    }

    void RequestOnAClosedPortRaisesCommunicationError_data()
    {
        AddRequestColumns();
        for (const Method& method : Reads() + Commands()) {
            AddFailureRow(method, "closed", Wire::Silence);
        }
    }

    void RequestOnAClosedPortRaisesCommunicationError()
    {
        QFETCH(const Request, request);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.transciever.Close();
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(!request(state));
        QCOMPARE(engine.cells.Changes(), changes);
        QCOMPARE(engine.Commands(), QByteArray{});
    }

    void UnansweredRequestRaisesCommunicationErrorAfterTheTimeLimit_data()
    {
        AddRequestColumns();
        AddFailureRow(Reads().constFirst(), "silence", Wire::Silence);
        AddFailureRow(Commands().constLast(), "silence", Wire::Silence);
    }

    void UnansweredRequestRaisesCommunicationErrorAfterTheTimeLimit()
    {
        QFETCH(const Request, request);
        QFETCH(const QByteArray, frame);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        State state(&engine.context, nullptr, nullptr);
        QElapsedTimer time;
        time.start();
        QVERIFY(!request(state));
        QCOMPARE(time.elapsed(), 10 + 4000 + 200);
        QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{frame});
        QCOMPARE(engine.cells.Changes(), changes);
    }

    void RejectedStatusCountsLikeATimeOut()
    {
        Engine engine;
        engine.peer.AnswerAlways(Wire::Bytes("31323334356c54")); // Intact, but too long for a status.
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(!state.RequestStatus());
        QCOMPARE(engine.Commands(),
                 QByteArray("s")); // Nothing failed on the line, so nothing was sent again.
        QCOMPARE(engine.cells.Changes(), Changes("CommunicationError=1"));
    }

    void RetransmissionsAreTheTransceiversAlone()
    {
        Engine engine;
        engine.peer.AnswerAlways(Wire::Refusal);
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(!state.StopMeasurement());
        QCOMPARE(engine.Commands(), QByteArray("hhh"));
        engine.peer.ClearRequests();
        engine.peer.AnswerInTurn({Wire::Refusal, Wire::DamagedStatus, Wire::Acknowledge});
        QVERIFY(state.StopMeasurement());
        QCOMPARE(engine.Commands(), QByteArray("hhh"));
    }

    void ResultsAreOfTheTypeAskedFor()
    {
        Engine engine;
        engine.peer.AnswerAlways(SixValues);
        engine.context.CurrentMeasurementType.Set(MeasurementType::RPE);
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(state.RequestMeasurementResults(MeasurementType::RLN));
        const auto* results = dynamic_cast<Vesmar::RLNResults*>(engine.context.TestResults.Get());
        QVERIFY(results != nullptr);
        QCOMPARE(results->_resistance, 1.0F);
        QCOMPARE(results->_isubVoltage, 4.0F);
        QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F}));
    }

    void VersionFillsANewRecord()
    {
        Engine engine;
        engine.peer.AnswerAlways(Wire::Bytes("50415431323334353637383931303541424344323031361fe6"));
        State state(&engine.context, nullptr, nullptr);
        QVERIFY(state.RequestVersion());
        const Vesmar::TesterInformation* information = engine.context.DeviceInformation.Get();
        QCOMPARE(information->DeviceName, QStringLiteral("PAT"));
        QCOMPARE(information->SerialNumber, QStringLiteral("456789"));
        QCOMPARE(information->Version, QStringLiteral("1.05"));
        QCOMPARE(information->BuildNumber, QStringLiteral("2016"));
    }

    void ReportErrorStoresTheFirstErrorOnly_data()
    {
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("reported");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("no error stored") << 15 << 202 << Changes("ErrorCode=202");
        QTest::newRow("no error reported over none") << 15 << 15 << QStringList{};
        QTest::newRow("the instrument's error 0 stored") << 0 << 202 << QStringList{};
        QTest::newRow("the instrument's error 14 stored") << 14 << 200 << QStringList{};
        QTest::newRow("link recovery stored") << 103 << 201 << QStringList{};
        QTest::newRow("another error stored") << 200 << 202 << QStringList{};
        QTest::newRow("the same error stored") << 202 << 202 << QStringList{};
        QTest::newRow("no error reported over one") << 200 << 15 << QStringList{};
    }

    void ReportErrorStoresTheFirstErrorOnly()
    {
        QFETCH(const int, stored);
        QFETCH(const int, reported);
        QFETCH(const QStringList, changes);
        Engine engine;
        engine.context.ErrorCode.Set(static_cast<Error>(stored));
        engine.cells.Clear();
        State state(&engine.context, nullptr, nullptr);
        state.ReportError(static_cast<Error>(reported));
        state.ReportError(static_cast<Error>(reported));
        QCOMPARE(engine.cells.Changes(), changes);
        QCOMPARE(static_cast<int>(engine.context.ErrorCode.Get()), changes.isEmpty() ? stored : reported);
    }
};

QTEST_GUILESS_MAIN(TestState)
#include "tst_state.moc"
