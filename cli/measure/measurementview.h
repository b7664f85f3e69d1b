#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <VesmarClient/enumerations.h>
#include <VesmarClient/settings.h>

#include "cli/measure/measurementend.h"
#include "cli/measure/measurementformat.h"
#include "cli/measure/readingsfile.h"
#include "cli/output/livescreen.h"
#include "cli/words/format.h"

namespace Cli
{

/// Shows a measurement while it goes on, and its end.
class MeasurementView : public QObject
{
    Q_OBJECT

public:
    /// What the standard output is for: people, programs, or the readings alone.
    enum class Form { Text, Json, Csv };

    /// The file may be null.
    MeasurementView(const VesmarClient::Settings& settings, Form form, ReadingsFile* file);

    LiveScreen& Screen() { return _screen; }

    /// Warns of a dangerous voltage where there is going to be one.
    void WarnOfDanger();
    /// One of the measurement's tests begins; its mode distinguishes it.
    void BeginTest(const QString& mode);
    void ShowPhase(VesmarClient::Phase phase);
    void ShowError(VesmarClient::Error error);
    void ShowResult(const VesmarClient::Result& result);
    /// Shows the present gap, whose times count from the beginning of the measurement.
    void ShowGap(const VesmarClient::Gap& gap);
    /// Writes a sentence for the person who watches to the error output.
    void Say(const QString& text);
    /// Shows the end, and returns the program's exit status.
    int ShowEnd(const MeasurementEnd& end);

    /// Writes what is left. Returns the exit status, given that of a measurement whose output is complete.
    int Finish(int exitStatus);
    QString OutputLoss() const { return _screen.Loss(); }

Q_SIGNALS:
    /// The output is lost: nobody sees any more what goes on.
    void OutputLost();

private:
    std::chrono::milliseconds Elapsed() const;
    void BeginTime();
    void ShowStatus(Vesmar::MeasurementState status);
    void ShowEvent(const char* event, const QJsonObject& fields);
    void ShowLine(const QString& shown);
    QString PhaseText() const;
    bool IsDangerous() const;
    QString LiveText() const;
    Ending EndingWithFile(const MeasurementEnd& end) const;

    VesmarClient::FunctionInfo _function;
    std::optional<std::chrono::milliseconds> _total; ///< How long the function runs.
    QString _mode;                                   ///< Empty for a function that has only one test.
    VesmarClient::Phase _phase = VesmarClient::Phase::Waiting;
    Form _form;
    ReadingsFile* _file;
    LiveScreen _screen;
    QTimer _redraw;
    QElapsedTimer _time;
    QVector<VesmarClient::Reading> _readings;
    std::optional<VesmarClient::Gap> _gap;                                ///< Since the last reading.
    Vesmar::MeasurementState _status = Vesmar::MeasurementState::Stopped; ///< What was told last.
};

} // namespace Cli
