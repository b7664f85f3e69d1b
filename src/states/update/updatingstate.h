#pragma once

#include <optional>

#include "context/statemachinecontext.h"
#include "states/state.h"

namespace Vesmar
{

/// Sends the firmware image in sectors and closes with the confirmation, all in one step.
///
/// The step works on the data that the context holds at its start. It sends initialize update, program
/// sector, finish update and, after a success, status. It reports 301 or 302 for data that cannot be sent,
/// 303 when the initialization or a sector fails, and 304 when the confirmation fails; no failed exchange is
/// repeated here. The exit clears `UpdateRequested`. The state is left for initialization when the instrument
/// reports the normal mode, and for the waiting state when the instrument is still in update mode.
class UpdatingState : public State
{
public:
    UpdatingState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

    bool InitializeUpdate();
    bool ProgramFlashSector(const QByteArray& sector);
    /// Sends the last two bytes of the confirmation: that of the step, or outside of a step that of the
    /// context.
    bool FinishUpdate();

private:
    void RunUpdate();
    bool ProgramImage(const QByteArray& image);
    void Fail(Error error, const char* message);

    std::optional<FirmwareUpdate> _update; ///< The data of the step under way.
};

} // namespace Vesmar
