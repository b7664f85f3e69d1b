#include "explorer/instrumentturns.h"

namespace
{

using namespace Number;

void ChangeTo(InstrumentState& instrument, int functionState, bool hasNew = false)
{
    instrument.functionState = static_cast<std::int8_t>(functionState);
    instrument.isStartPending = false;
    instrument.hasNew = hasNew;
}

void Deselect(InstrumentState& instrument)
{
    instrument.function = 0;
    ChangeTo(instrument, Idle);
}

void RestartInto(InstrumentState& instrument, int mode)
{
    Deselect(instrument);
    instrument.mode = static_cast<std::int8_t>(mode);
}

bool IsRcd(const InstrumentState& instrument)
{
    return instrument.function == RCD || instrument.function == RCDIEC;
}

bool IsUnderWay(const InstrumentState& instrument)
{
    return instrument.isStartPending || instrument.functionState == Starting ||
           instrument.functionState == Running || instrument.functionState == Stopping;
}

const Turn NothingChanges{"", [](InstrumentState&) {}};
const Turn ChangesNothing{"and the instrument gets no further", [](InstrumentState&) {}};
const Turn HasNothingNew{"and nothing new is measured", [](InstrumentState& i) { i.hasNew = false; }};
const Turn LosesFunction{"and the function is gone", Deselect};
const Turn Terminates{"and the function was terminated", [](InstrumentState& i) { ChangeTo(i, Terminated); }};
const Turn FallsIdle{"and the function is idle", [](InstrumentState& i) { ChangeTo(i, Idle); }};
const Turn Completes{"and the function is complete",
                     [](InstrumentState& i) { ChangeTo(i, Completed, true); }};
const Turn BeginsToRun{"", [](InstrumentState& i) { ChangeTo(i, Running); }};

/// What can become of an instrument that no function is active in.
std::vector<Turn> TurnsWithoutFunction(const InstrumentState& state, const Freedom& freedom)
{
    std::vector<Turn> turns{{"", [](InstrumentState& i) { i.hasNew = true; }}, HasNothingNew};
    if (freedom.surprises && state.mode == 0) {
        turns.push_back({"and somebody has started another function", [](InstrumentState& i) {
                             i.function = Foreign;
                             ChangeTo(i, Running);
                         }});
    }
    if (freedom.startTest) {
        turns.push_back({"and the start test turned out otherwise",
                         [](InstrumentState& i) { i.hasPassedStartTest = !i.hasPassedStartTest; }});
    }
    return turns;
}

std::vector<Turn> TurnsWhilePreparing(const InstrumentState& state)
{
    std::vector<Turn> turns{
        {"", [](InstrumentState& i) { ChangeTo(i, Prepared); }},
        ChangesNothing,
        {"and reports a prepare error", [](InstrumentState& i) { ChangeTo(i, PrepareError); }}};
    if (IsRcd(state)) {
        turns.push_back({"and reports a prepare error with a check of the object",
                         [](InstrumentState& i) { ChangeTo(i, PrepareError, true); }});
    }
    return turns;
}

std::vector<Turn> TurnsWhilePrepared(const InstrumentState& state)
{
    if (!state.isStartPending) {
        return {NothingChanges, LosesFunction};
    }
    return {{"", [](InstrumentState& i) { ChangeTo(i, Starting); }}, ChangesNothing, LosesFunction};
}

std::vector<Turn> TurnsWhileStarting()
{
    return {BeginsToRun,
            ChangesNothing,
            {"and reports a start error", [](InstrumentState& i) { ChangeTo(i, StartError); }},
            {"and falls back to prepared", [](InstrumentState& i) { ChangeTo(i, Prepared); }},
            Completes,
            LosesFunction};
}

std::vector<Turn> TurnsWhileRunning(const InstrumentState& state)
{
    if (state.function == RLN) {
        return {{"", Completes.apply}, ChangesNothing, Terminates, FallsIdle, LosesFunction};
    }
    if (state.function == Foreign) {
        return {NothingChanges, LosesFunction};
    }
    if (IsRcd(state)) {
        return {NothingChanges, Completes, Terminates, LosesFunction};
    }
    return {{"", [](InstrumentState& i) { i.hasNew = true; }},
            HasNothingNew,
            Terminates,
            FallsIdle,
            LosesFunction};
}

std::vector<Turn> TurnsOfFunction(const InstrumentState& state)
{
    switch (state.functionState) {
    case Preparing:
        return TurnsWhilePreparing(state);
    case Prepared:
        return TurnsWhilePrepared(state);
    case Starting:
        return TurnsWhileStarting();
    case Running:
        return TurnsWhileRunning(state);
    case Stopping:
        return {{"", Terminates.apply}, ChangesNothing, LosesFunction};
    default:
        return {NothingChanges, LosesFunction};
    }
}

std::vector<Turn> TurnsAtStatus(const InstrumentState& state, const Freedom& freedom)
{
    std::vector<Turn> turns =
        state.function == 0 ? TurnsWithoutFunction(state, freedom) : TurnsOfFunction(state);
    if (freedom.surprises) {
        turns.push_back({"after a restart into mode 0", [](InstrumentState& i) { RestartInto(i, 0); }});
        turns.push_back({"after a restart into mode 1", [](InstrumentState& i) { RestartInto(i, 1); }});
    }
    if (freedom.updateMode) {
        turns.push_back({"after a restart into mode 2", [](InstrumentState& i) { RestartInto(i, 2); }});
        turns.push_back({"after a restart into mode 3", [](InstrumentState& i) { RestartInto(i, 3); }});
    }
    return turns;
}

std::vector<Turn> TurnsAtStart(const InstrumentState& state)
{
    if (state.functionState != Prepared) {
        return {};
    }
    return {{"", [](InstrumentState& i) { ChangeTo(i, Starting); }},
            {"and reports prepared a while longer", [](InstrumentState& i) { i.isStartPending = true; }}};
}

std::vector<Turn> TurnsAtStop(const InstrumentState& state)
{
    if (!IsUnderWay(state) || state.function == Foreign) {
        return {{"", Deselect}};
    }
    if (state.isStartPending) {
        return {{"", [](InstrumentState& i) { i.isStartPending = false; }}};
    }
    return {{"", [](InstrumentState& i) { ChangeTo(i, Stopping); }}, LosesFunction, ChangesNothing};
}

std::vector<Turn> TurnsAtPrepare(const QByteArray& request, const InstrumentState& state)
{
    constexpr int SmallestSize = 10; // Settings without a function make a shorter one.
    if (request.size() < SmallestSize || IsUnderWay(state)) {
        return {};
    }
    return {{"", [](InstrumentState& i) { ChangeTo(i, Preparing); }}};
}

} // namespace

std::vector<Turn> TurnsAt(const QByteArray& request, const InstrumentState& state, const Freedom& freedom)
{
    switch (request.at(0)) {
    case 's':
        return TurnsAtStatus(state, freedom);
    case 'S':
        return TurnsAtStart(state);
    case 'h':
        return TurnsAtStop(state);
    case 'P':
        return TurnsAtPrepare(request, state);
    case 'Z':
        return {{"", [](InstrumentState& i) { RestartInto(i, 0); }},
                {"and the instrument stays in update mode", [](InstrumentState&) {}}};
    default:
        return {NothingChanges};
    }
}
