#include "states/update/updatingstate.h"

#include <QThread>

#include "link/commandbuilder.h"
#include "link/trace.h"

namespace Vesmar
{

namespace
{

constexpr int SectorSize = 512;
constexpr int ConfirmationSize = 2;
constexpr unsigned long SectorPauseMs = 100;
constexpr unsigned long InstallationPauseMs = 2500;

int Percent(int part, int whole)
{
    return static_cast<int>(static_cast<double>(part) / whole * 100);
}

} // namespace

UpdatingState::UpdatingState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "UPDATING STATE ")
{
}

void UpdatingState::OnEntry()
{
    State::OnEntry();
    GetContext()->OperationStatus.Set(OperationState::Started);
}

void UpdatingState::OnExit()
{
    State::OnExit();
    GetContext()->UpdateRequested.Set(false);
    GetContext()->OperationStatus.Set(OperationState::Idle);
}

void UpdatingState::OnRunning()
{
    _update = GetContext()->GetUpdate();
    RunUpdate();
    _update.reset();
}

void UpdatingState::RunUpdate()
{
    if (_update->image.size() % SectorSize != 0) {
        Fail(Error::UpdateDataInvalid, "Update data is invalid.");
        return;
    }
    if (_update->confirmation.size() < ConfirmationSize) {
        Fail(Error::UpdateConfirmationDataInvalid, "Update confirmation data is invalid.");
        return;
    }
    if (!InitializeUpdate()) {
        Fail(Error::UpdateInitializationFailed, "Update initialization error.");
        return;
    }
    Trace::WriteIn(Trace::Colour::Red, "Iinitialization update OK.");
    GetContext()->OperationStatus.Set(OperationState::InProgress);
    if (!ProgramImage(_update->image)) {
        Fail(Error::UpdateInitializationFailed, "Sector data transfer issues.");
        return;
    }
    if (!FinishUpdate()) {
        Fail(Error::UpdateConfirmationFailed, "Confirmation error.");
        return;
    }
    QThread::msleep(InstallationPauseMs);
    GetContext()->OperationStatus.Set(OperationState::Finished);
    RequestStatus(); // Only a status shows the mode in which the instrument has come back.
}

bool UpdatingState::InitializeUpdate()
{
    return Fetch(*GetContext()->GetCommandBuilder()->GetInitializeUpdateFrame());
}

bool UpdatingState::ProgramFlashSector(const QByteArray& sector)
{
    const std::unique_ptr<QByteArray> frame(
        GetContext()->GetCommandBuilder()->CreateProgramFlashSectorFrame(sector));
    return Send(*frame);
}

bool UpdatingState::FinishUpdate()
{
    const QByteArray confirmation = _update.value_or(GetContext()->GetUpdate()).confirmation;
    const std::unique_ptr<QByteArray> frame(
        GetContext()->GetCommandBuilder()->CreateFinishUpdateFrame(confirmation));
    return Send(*frame);
}

/// The progress counts only the sectors that the instrument has acknowledged.
bool UpdatingState::ProgramImage(const QByteArray& image)
{
    GetContext()->OperationProgress.Set(0);
    int offset = 0;
    while (offset < image.size()) {
        if (!ProgramFlashSector(image.mid(offset, SectorSize))) {
            return false;
        }
        QThread::msleep(SectorPauseMs);
        offset += SectorSize;
        const int progress = Percent(offset, image.size());
        GetContext()->OperationProgress.Set(progress);
        Trace::Line() << "Update progress: " << progress;
    }
    return true;
}

void UpdatingState::Fail(Error error, const char* message)
{
    GetContext()->ErrorCode.Set(error);
    Trace::Line() << Trace::Colour::Red << "UPDATE ERROR - " << message << Trace::Colour::None;
}

} // namespace Vesmar
