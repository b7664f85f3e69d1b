#include "states/rcd/rcdtrace.h"

#include "link/trace.h"

namespace Vesmar::RCDTrace
{

namespace
{

const char* NameOf(MeasurementState phase)
{
    switch (phase) {
    case MeasurementState::Idle:
        return "IDLE";
    case MeasurementState::Preparing:
        return "PREPARING";
    case MeasurementState::Prepared:
        return "PREPARED";
    case MeasurementState::Starting:
        return "STARTING";
    case MeasurementState::Running:
    case MeasurementState::Measuring:
        return "RUNNING";
    case MeasurementState::Stopping:
        return "STOPING";
    case MeasurementState::Stopped:
        return "STOPED";
    case MeasurementState::Unknown:
        break;
    }
    return "UNKNOWN";
}

/// The clean-up has a name for some phases only, and calls two of them by the name of another.
const char* NameInCleanUp(MeasurementState phase)
{
    switch (phase) {
    case MeasurementState::Unknown:
        return "Unknown...";
    case MeasurementState::Idle:
        return "Idle";
    case MeasurementState::Preparing:
        return "Preparing";
    case MeasurementState::Measuring:
    case MeasurementState::Stopping:
        return "Starting...";
    case MeasurementState::Stopped:
        return "Stopped...";
    default:
        return nullptr;
    }
}

void Indented(Trace::Colour colour, const char* text)
{
    Trace::Line() << colour << "       " << text << Trace::Colour::None;
}

void CleanUpPhase(MeasurementState phase)
{
    if (const char* name = NameInCleanUp(phase)) {
        Trace::Line() << "<<< MeasurementState::" << name;
    }
}

} // namespace

void Phase(RCDRules::PhaseWords words, MeasurementState phase)
{
    const bool isEarly = phase == MeasurementState::Idle || phase == MeasurementState::Preparing;
    switch (words) {
    case RCDRules::PhaseWords::None:
        break;
    case RCDRules::PhaseWords::Green:
        Indented(Trace::Colour::Green, NameOf(phase));
        break;
    case RCDRules::PhaseWords::BlackThenGreen:
        Indented(isEarly ? Trace::Colour::Black : Trace::Colour::Green, NameOf(phase));
        break;
    case RCDRules::PhaseWords::CleanUp:
        CleanUpPhase(phase);
        break;
    }
}

void Poll(int result, Error savedCheckObjectError)
{
    Trace::Line() << "<<< MeasurementState::Prepared: operationResult=" << result;
    if (savedCheckObjectError == Error::NoErrors) {
        Trace::Line() << "<<< MeasurementState::Prepared: _savedCheckObjectError==Error::NoErrors";
    }
}

void InvalidVoltage()
{
    Indented(Trace::Colour::Green, "PREPARED raport: RCD_CheckObject_ULNIECInvalid");
}

} // namespace Vesmar::RCDTrace
