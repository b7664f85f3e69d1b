#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/measurementstate.h>

#include "cli/measure/measurefunctions.h"
#include "cli/measure/measurementformat.h"
#include "cli/measure/readingsfile.h"
#include "cli/output/livescreen.h"

namespace Cli
{

/// Shows a measurement while it runs, and its end.
class MeasurementView : public QObject
{
    Q_OBJECT

public:
    /// The file may be null.
    MeasurementView(const MeasureFunction& function, bool isJson, ReadingsFile* file);

    /// One of the measurement's tests begins; its mode distinguishes it, and its phases are shown.
    void BeginTest(const QString& mode);
    void ShowPhase(VesmarClient::MeasurementSession::Phase phase);
    /// Begins to count the time, unless that has begun already.
    void BeginTime();
    /// Shows an event, for programs only.
    void ShowStatus(Vesmar::MeasurementState status);
    void ShowError(Vesmar::Error error);
    void ShowResults(const Vesmar::MeasurementResults& results);
    /// Writes a sentence for the person who watches to the error output.
    void Say(const QString& text);
    /// Shows the end, with the library's present error, and returns the program's exit status. After that,
    /// nothing is shown but sentences.
    int ShowEnd(const VesmarClient::MeasurementSession& session, Vesmar::Error presentError);

    /// Writes what is left. False if not everything could be shown.
    bool Finish();

Q_SIGNALS:
    /// The output is lost: nobody sees any more what goes on.
    void OutputLost();

private:
    std::chrono::milliseconds Elapsed() const;
    void ShowEvent(const char* event, const QJsonValue& value);
    Ending EndingWithFile(const VesmarClient::MeasurementSession& session, Vesmar::Error presentError) const;
    void DrawLiveLine();
    QString LiveText() const;

    const MeasureFunction& _function;
    QString _mode;
    QString _phase;
    bool _isJson;
    ReadingsFile* _file;
    LiveScreen _screen;
    QTimer _redraw;
    QElapsedTimer _time;
    std::optional<std::chrono::milliseconds> _total;
    QVector<VesmarClient::DriverReading> _readings;
    bool _isEnded = false; ///< A change that was on its way may still arrive.
};

} // namespace Cli
