#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Sends the firmware image in sectors and closes with the confirmation, all in one step.
///
/// Works on copies of the image and of the confirmation, taken at the start of the step. Sends initialize
/// update, program sector, finish update and, after a success, status. Reports 301 or 302 for data that
/// cannot be sent, 303 when the initialization or a sector fails, 304 when the confirmation does; what failed
/// is not repeated. Clears `UpdateRequested` on exit. Left for initialization when the instrument reports the
/// normal mode, for the waiting state when it still is in update mode.
class UpdatingState : public State
{
public:
    UpdatingState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

    bool InitializeUpdate();
    bool ProgramFlashSector(const QByteArray& sector);
    /// Sends the last two bytes of `confirmation`, which must have two.
    bool FinishUpdate(const QByteArray& confirmation);

private:
    bool ProgramImage(const QByteArray& image);
    void Fail(Error error, const char* message);
};

} // namespace Vesmar
