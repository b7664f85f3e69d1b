#pragma once

#include <memory>

#include <QMap>
#include <QStringList>
#include <QTest>

#include <Vesmar/functionstate.h>
#include <Vesmar/measurementtype.h>

#include "context/replaceowned.h"
#include "unit/states/enginefixture.h"

/// An engine whose instrument has a function selected.
class MeasurementEngine : public Engine
{
public:
    static constexpr int NoError = 15;
    static constexpr int FunctionStateCount = 16;

    /// Every request is tried once.
    MeasurementEngine() { transciever.SetMaxRetransmissions(0); }

    /// The status from now on; every other request is served.
    void Report(int functionState, bool isNewMeasurement = false, int error = NoError)
    {
        AnswerByCommand(
            WithService('s', Status(Vesmar::MeasurementType::RPE, functionState, isNewMeasurement, error)));
    }

    /// As above, but this command is refused.
    void RefuseWhileReporting(char command, int functionState, bool isNewMeasurement = false)
    {
        QMap<char, QByteArray> answers =
            WithService('s', Status(Vesmar::MeasurementType::RPE, functionState, isNewMeasurement, NoError));
        answers.insert(command, Wire::Refusal);
        AnswerByCommand(answers);
    }

    void Settings(Vesmar::MeasurementSettings* settings)
    {
        Vesmar::ReplaceOwned(context.TestSettings, settings);
    }

    /// The application prepares these settings while the first frame that prepares others is on the line.
    /// Every request is acknowledged.
    void PrepareWhilePreparing(Vesmar::MeasurementSettings* settings)
    {
        _next.reset(settings);
        peer.Answer([this](const QByteArray& request) {
            if (request.startsWith('P') && _next != nullptr) {
                _previous = Vesmar::ReplaceOwned(context.TestSettings, _next.release());
                context.PrepareMeasurementRequested.Set(true);
            }
            return Wire::AnswerTo(request);
        });
    }

    /// Forgets what has happened so far.
    void Restart()
    {
        cells.Clear();
        log.Clear();
        peer.ClearRequests();
    }

    /// The changes of cells, blank between them, but for those that every status makes.
    QString Outcome() const
    {
        QStringList changes = cells.Changes();
        for (const char* part : {"NewMeasurement=", "CurrentMeasurementType=", "MeasurementFunctionStatus=",
                                 "StartTestStatus="}) {
            changes = Without(QLatin1String(part), changes);
        }
        return changes.join(QLatin1Char(' '));
    }

    static QByteArray Status(Vesmar::MeasurementType function, int functionState, bool isNewMeasurement,
                             int error)
    {
        return Wire::Status(static_cast<int>(function), functionState, isNewMeasurement, error);
    }

private:
    // Those that are replaced on the peer's thread outlive the step.
    std::unique_ptr<Vesmar::MeasurementSettings> _next;
    std::unique_ptr<Vesmar::MeasurementSettings> _previous;

    static QMap<char, QByteArray> WithService(char command, const QByteArray& answer)
    {
        QMap<char, QByteArray> answers{{'P', Wire::Acknowledge},
                                       {'S', Wire::Acknowledge},
                                       {'h', Wire::Acknowledge},
                                       {'e', Wire::SixReadings}};
        answers.insert(command, answer);
        return answers;
    }

    static QStringList Without(const QLatin1String& beginning, const QStringList& changes)
    {
        QStringList others;
        for (const QString& change : changes) {
            if (!change.startsWith(beginning)) {
                others.append(change);
            }
        }
        return others;
    }
};

/// Rows for the function states 0 to 15: what each makes of the cells, nothing where it is not in the map.
inline void AddFunctionStateRows(const QMap<int, const char*>& outcomes)
{
    QTest::addColumn<int>("functionState");
    QTest::addColumn<QString>("outcome");
    for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
        QTest::addRow("function state %d", state) << state << QString(QLatin1String(outcomes.value(state)));
    }
}
