#pragma once

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

#include <Vesmar/tester.h>

#include <VesmarClient/identity.h>
#include <VesmarClient/result.h>

#include "client/driver/run.h"
#include "client/line/serialline.h"
#include "client/sessions/linksession.h"

namespace VesmarClient
{

/// Has the tester on the driver's thread, on which all of this is called, opens and closes the line, and
/// carries out one run at a time. What it tells is delivered to the application's thread by queued
/// connections.
class Host : public QObject
{
    Q_OBJECT

public:
    Host();
    ~Host() override;

    /// Takes the line, and enables the driver.
    void Open();
    /// Aborts the run that is under way, disables the driver once it has finished, and gives the line back.
    void Close();
    /// Closes the line, and then ends the thread.
    void Quit();
    /// Begins the run. Where the link does not allow it, the run is told as failed at once.
    void Begin(std::unique_ptr<Run> run);
    /// Aborts the run under way and begins this one after it.
    void BeginAfterAbort(std::unique_ptr<Run> run);

Q_SIGNALS:
    void OpenFailed(const VesmarClient::Failure& failure);
    void LinkStateChanged(VesmarClient::LinkState state);
    void IdentityChanged(const VesmarClient::Identity& identity);
    void ModeChanged(VesmarClient::Mode mode);
    /// The fields are the instrument's, as a time in UTC.
    void ClockChanged(const QDateTime& value);
    void CalibrationDateChanged(const QDateTime& value);
    void ErrorChanged(VesmarClient::Error error);
    void ActiveFunctionChanged(VesmarClient::Function function);
    void FunctionStateChanged(VesmarClient::FunctionState state);
    void StartTestResultChanged(VesmarClient::StartTestResult result);
    void MainsChanged(const VesmarClient::Result& result);
    void UnattendedChanged(bool isUnattended);

private:
    LinkState State() const;
    void StartDriver();
    void StopDriver();
    void AwaitQuietLine() const;
    void TellNothingKnown();
    void WatchTester();
    void WatchLink();
    void ReceiveIdentity();
    void TellLinkState();
    void TellClock();
    void TellCalibrationDate();
    bool AreDatesRead() const;
    void TellUnattended();
    void TellFunctionState();
    void Await(std::unique_ptr<Run> next);
    void Watch(Run& run);
    void EndRun();
    void GoOn();
    void EndClosing();
    void ReopenReplacedDevice();

    SerialLine _line;
    std::unique_ptr<Vesmar::Tester> _tester; ///< Null while the line is closed.
    LinkSession _link;
    LinkState _told = LinkState::Closed;
    bool _isUnattended = false;
    std::unique_ptr<Run> _run;  ///< The run under way.
    std::unique_ptr<Run> _next; ///< The run that begins after it.
    Phase _phase = Phase::Waiting;
    QTimer _reopening;
    QElapsedTimer _sinceStop; ///< Valid once the driver was stopped.
    bool _isGoingOn = false;  ///< A run has ended, and what comes next has not begun.
    bool _isClosing = false;
    bool _isOpenedAgain = false; ///< Once it has been closed.
    bool _isQuitting = false;
};

} // namespace VesmarClient
