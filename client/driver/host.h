#pragma once

#include <QDateTime>
#include <QObject>

#include <memory>

#include <Vesmar/tester.h>

#include <VesmarClient/identity.h>
#include <VesmarClient/result.h>

#include "client/driver/run.h"

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
    /// Begins the run. Where the link does not allow it, the run is told as failed at once.
    void Begin(std::unique_ptr<Run> run);
    /// Aborts the run under way and begins this one after it.
    void BeginAfterAbort(std::unique_ptr<Run> run);

Q_SIGNALS:
    void OpenFailed(const VesmarClient::Failure& failure);
    void LinkStateChanged(VesmarClient::LinkState state);
    void IdentityChanged(const VesmarClient::Identity& identity);
    void ModeChanged(VesmarClient::Mode mode);
    void ClockChanged(const QDateTime& value);
    void CalibrationDateChanged(const QDateTime& value);
    void ErrorChanged(VesmarClient::Error error);
    void ActiveFunctionChanged(VesmarClient::Function function);
    void MainsChanged(const VesmarClient::Result& result);
    void UnattendedChanged(bool isUnattended);
};

} // namespace VesmarClient
