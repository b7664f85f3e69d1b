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
    /// From here on counts the time, unless it does already.
    void BeginTime();
    /// Events, for programs.
    void ShowStatus(Vesmar::MeasurementState status);
    void ShowError(Vesmar::Error error);
    void ShowResults(const Vesmar::MeasurementResults& results);
    /// A sentence for the person who watches, on the error output.
    void Say(const QString& text);
    /// The program's exit status. Nothing is shown after it but what is said. The error is the library's.
    int ShowEnd(const VesmarClient::MeasurementSession& session, Vesmar::Error presentError);

    /// Writes what is left. False if not everything could be shown.
    bool Finish();

Q_SIGNALS:
    /// Nobody sees any more what goes on.
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
    QVector<VesmarClient::Reading> _readings;
    bool _isEnded = false; ///< A change that was on its way may still arrive.
};

} // namespace Cli
