#include "explorer/members.h"

#include <cstring>

#include "states/connection/communicationrecoverystate.h"
#include "states/measurement/abortingmeasurementstate.h"
#include "states/measurement/preparingmeasurementstate.h"
#include "states/measurement/startingmeasurementstate.h"
#include "states/measurement/stoppingmeasurementstate.h"
#include "states/rcd/rcdiatameasurementrunningstate.h"
#include "states/rcd/rcdieccleanupstate.h"
#include "states/rcd/rcdieciatameasurementrunningstate.h"
#include "states/rcd/rcdmonitoringstate.h"
#include "states/rcd/rcdubremeasurementrunningstate.h"

namespace
{

using namespace Vesmar;

template <typename ConcreteState>
constexpr std::size_t SizeOf()
{
    constexpr std::size_t Size = sizeof(ConcreteState) - sizeof(State);
    static_assert(Size <= Members::Bytes().size(), "the members fit into a configuration");
    return Size;
}

/// Of the classes without an entry, the updating state keeps its data for one step only; the others have no
/// members.
std::size_t SizeOf(StateId id)
{
    switch (id) {
    case StateId::CommunicationRecovery:
        return SizeOf<CommunicationRecoveryState>();
    case StateId::PreparingMeasurement:
        return SizeOf<PreparingMeasurementState>();
    case StateId::StartingMeasurement:
        return SizeOf<StartingMeasurementState>();
    case StateId::StoppingMeasurement:
        return SizeOf<StoppingMeasurementState>();
    case StateId::AbortingMeasurement:
        return SizeOf<AbortingMeasurementState>();
    case StateId::RCDMonitoring:
        return SizeOf<RCDMonitoringState>();
    case StateId::RCDUbReMeasurementRunning:
        return SizeOf<RCDUbReMeasurementRunningState>();
    case StateId::RCDIaTaMeasurementRunning:
        return SizeOf<RCDIaTaMeasurementRunningState>();
    case StateId::RCDIECIaTaMeasurementRunning:
        return SizeOf<RCDIECIaTaMeasurementRunningState>();
    case StateId::RCDIECCleanUp:
        return SizeOf<RCDIECCleanUpState>();
    default:
        return 0;
    }
}

} // namespace

namespace Members
{

Bytes Of(StateId id, const State& state)
{
    Bytes bytes{};
    std::memcpy(bytes.data(), reinterpret_cast<const unsigned char*>(&state) + sizeof(State), SizeOf(id));
    return bytes;
}

void WriteBack(const Bytes& bytes, StateId id, State& state)
{
    std::memcpy(reinterpret_cast<unsigned char*>(&state) + sizeof(State), bytes.data(), SizeOf(id));
}

} // namespace Members
