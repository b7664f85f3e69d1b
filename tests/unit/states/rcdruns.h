#pragma once

#include <array>

#include <QElapsedTimer>
#include <QTest>

#include "states/rcd/rcdiatameasurementrunningstate.h"
#include "states/rcd/rcdieccleanupstate.h"
#include "states/rcd/rcdieciatameasurementrunningstate.h"
#include "states/rcd/rcdubremeasurementrunningstate.h"
#include "unit/states/rcdrun.h"

/// The four runs of an RCD test, and the rows that are the same for all of them.
namespace RCDRuns
{

enum Kind { UbRe, IaTa, IECIaTa, CleanUp };

// The phases, as `MeasurementStatus` has them.
constexpr int Unknown = -1;
constexpr int Idle = 0;
constexpr int Preparing = 1;
constexpr int Prepared = 2;
constexpr int Starting = 3;
constexpr int Running = 4;
constexpr int Measuring = 5;
constexpr int Stopping = 6;
constexpr int Stopped = 7;

inline const QString NoChange;
inline const QString Pause = QStringLiteral("400");
inline const QString NoPause;
const char* const Ended400 = "ErrorCode=400 MeasurementStatus=7";
const char* const Ended200 = "ErrorCode=200 MeasurementStatus=7";
const char* const Ended201 = "ErrorCode=201 MeasurementStatus=7";
const char* const Ended398 = "ErrorCode=398 MeasurementStatus=7";
const char* const Ended401 = "ErrorCode=401 MeasurementStatus=7";

inline QString Text(const char* text)
{
    return QString(QLatin1String(text));
}

struct Fixed {
    const char* name;
    RCDRun::Creator create;
    Vesmar::MeasurementType function;
    int mode;
    QByteArray prepareFrame;
    const char* banner;
};

inline const Fixed& Of(int kind)
{
    using namespace Vesmar;
    static const std::array<Fixed, 4> all = {{
        {"Ub/Re", Create<RCDUbReMeasurementRunningState>, MeasurementType::RCD, 0, RCDWire::PrepareUbRe,
         "RCD UbRe MEASUREMENT STATE "},
        {"Ia/Ta", Create<RCDIaTaMeasurementRunningState>, MeasurementType::RCD, 1, Wire::PrepareIaTa,
         "RCD IaTa MEASUREMENT STATE "},
        {"IEC Ia/Ta", Create<RCDIECIaTaMeasurementRunningState>, MeasurementType::RCDIEC, 1,
         RCDWire::PrepareIECIaTa, "RCD IEC IaTa MEASUREMENT STATE "},
        {"clean-up", Create<RCDIECCleanUpState>, MeasurementType::RCDIEC, 3, Wire::PrepareCleanUp,
         "RCD IEC CleanUp STATE "},
    }};
    return all.at(static_cast<std::size_t>(kind));
}

/// The settings of a run. Those of the Ia/Ta test have a value in every field.
inline Vesmar::MeasurementSettings* SettingsOfRun(int kind)
{
    Vesmar::MeasurementSettings* settings = SettingsOf(static_cast<int>(Of(kind).function), Of(kind).mode);
    if (kind == IaTa) {
        auto* test = static_cast<Vesmar::RCDSettings*>(settings);
        test->SetQuantity(Vesmar::RCDSettings::RCDQuantity::Quantity2);
        test->SetPhase(Vesmar::RCDSettings::RCDPhase::Phase0);
        test->SetCurrent(Vesmar::RCDSettings::RCDCurrent::Current3);
        test->SetType(Vesmar::RCDSettings::RCDType::Type1);
        test->SetRe(100.0F);
    }
    return settings;
}

/// The status of the run's function.
inline QByteArray StatusOf(int kind, int functionState, bool isNewMeasurement = false,
                           int error = Wire::NoError)
{
    return MeasurementEngine::Status(Of(kind).function, functionState, isNewMeasurement, error);
}

class Run : public RCDRun
{
public:
    explicit Run(int kind) : RCDRun(Of(kind).create, SettingsOfRun(kind)), _kind(kind) {}

    QByteArray Status(int functionState, bool isNewMeasurement = false, int error = Wire::NoError) const
    {
        return StatusOf(_kind, functionState, isNewMeasurement, error);
    }

    /// From now on the instrument reports a prepare error, and answers the check of the object so.
    void AnswerCheck(const QByteArray& check) { AnswerByCommand({{'s', Status(3, true)}, {'e', check}}); }

    /// Runs steps that change nothing and send these requests.
    bool StepsInVain(int count, const QByteArray& commands)
    {
        for (int step = 0; step < count; ++step) {
            if (Step() != NoChange || Commands() != commands) {
                return false;
            }
        }
        return true;
    }

    /// Runs a step in which the run waits for results, with these bytes on the line.
    QString StepWithBytes(int phase, const QByteArray& bytes)
    {
        context.StartMeasurementRequested.Set(true);
        context.CurrentMeasurementType.Set(Of(_kind).function);
        peer.Send(bytes);
        return StepIn(phase);
    }

private:
    int _kind;
};

/// Adds a row for each of these runs.
inline void AddRuns(const QList<int>& kinds)
{
    QTest::addColumn<int>("kind");
    for (const int kind : kinds) {
        QTest::newRow(Of(kind).name) << kind;
    }
}

/// Adds a row for each of these runs, once for each of these phases.
inline void AddPhases(const QList<int>& kinds, const QList<int>& phases)
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("phase");
    for (const int kind : kinds) {
        for (const int phase : phases) {
            QTest::addRow("%s, phase %d", Of(kind).name, phase) << kind << phase;
        }
    }
}

/// Rows for single steps: what the instrument answers, and what comes of it.
class StepRows
{
public:
    static void AddColumns()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("phase");
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("pauses");
    }

    StepRows(int kind, int phase, const QByteArray& frame) : _kind(kind), _phase(phase), _frame(frame) {}

    void Add(const QString& name, const QByteArray& answer, const QString& outcome,
             const QString& pauses) const
    {
        QTest::addRow("%s, phase %d: %s", Of(_kind).name, _phase, qPrintable(name))
            << _kind << _phase << _frame << answer << outcome << pauses;
    }

    /// The answers that say nothing, each of which costs an attempt.
    void AddFailures() const
    {
        Add(QStringLiteral("refused"), Wire::Refusal, NoChange, Pause);
        Add(QStringLiteral("damaged"), Wire::DamagedStatus, NoChange, Pause);
    }

private:
    int _kind;
    int _phase;
    QByteArray _frame;
};

/// The body of such rows: one step that sends one request.
inline void StepWithOneRequest(int earlierError = Wire::NoError)
{
    QFETCH(const int, kind);
    QFETCH(const int, phase);
    QFETCH(const QByteArray, frame);
    QFETCH(const QByteArray, answer);
    QFETCH(const QString, outcome);
    QFETCH(const QString, pauses);
    Run run(kind);
    run.peer.AnswerAlways(answer);
    run.SetError(earlierError);
    QCOMPARE(run.StepIn(phase), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{frame});
    QCOMPARE(run.Pauses(), pauses);
}

} // namespace RCDRuns
