#include "explorer/scopes.h"

#include "explorer/rules.h"

namespace
{

/// The first are in the order of `Rules::Always`.
std::vector<Operation> CommonOperations()
{
    return {{"lets time pass", [](Machine& m) { m.LetTimePass(); }},
            {"aborts", [](Machine& m) { m.GetTester().AbortMeasurement(); }},
            {"disables and enables the machine", [](Machine& m) { m.DisableAndEnable(); }}};
}

Operation Restarts()
{
    return {"restarts the instrument", [](Machine& m) { m.GetTester().RestartTester(); }};
}

std::vector<Operation> With(std::vector<Operation> operations, const std::vector<Operation>& others)
{
    operations.insert(operations.end(), others.begin(), others.end());
    return operations;
}

Operation Prepares(std::size_t settings)
{
    return {std::string("prepares ") + AllSettings.at(settings).name,
            [settings](Machine& machine) { machine.Prepare(settings); }};
}

/// Without a start, the function can only be changed.
std::vector<Operation> PreparingOperations(const std::vector<std::size_t>& settings)
{
    std::vector<Operation> operations = With(
        CommonOperations(),
        {{"enters measurement mode", [](Machine& m) { m.GetTester().SetIsMeasurementModeActive(true); }},
         {"leaves measurement mode", [](Machine& m) { m.GetTester().SetIsMeasurementModeActive(false); }}});
    for (const std::size_t each : settings) {
        operations.push_back(Prepares(each));
    }
    return operations;
}

std::vector<Operation> MeasuringOperations(const std::vector<std::size_t>& settings)
{
    return With(PreparingOperations(settings),
                {{"starts", [](Machine& m) { m.GetTester().StartMeasurement(); }}});
}

void Update(Machine& machine)
{
    constexpr int OneSector = 512;
    constexpr int ConfirmationSize = 2;
    machine.GetTester().UpdateTester(QByteArray(OneSector, '\0'), QByteArray(ConfirmationSize, '\0'));
}

std::vector<Operation> DateOperations()
{
    return {
        {"asks for the date", [](Machine& m) { m.GetTester().RetrieveCurrentDateTime(); }},
        {"asks for the calibration date", [](Machine& m) { m.GetTester().RetrieveCalibrationDateTime(); }},
        {"sets the date", [](Machine& m) { m.GetTester().ConfigureCurrentDateTime(QDateTime()); }},
        {"sets the calibration date",
         [](Machine& m) { m.GetTester().ConfigureCalibrationDateTime(QDateTime()); }}};
}

} // namespace

std::vector<Scope> Scopes(bool isWhole)
{
    Freedom faultyLine;
    faultyLine.faults = true;
    faultyLine.surprises = true;
    faultyLine.updateMode = true;
    Freedom ordinary;
    ordinary.faults = isWhole;
    ordinary.surprises = isWhole;
    Freedom surprising = ordinary;
    surprising.surprises = true;
    Freedom rcd = ordinary;
    rcd.startTest = true;
    rcd.errors = isWhole;
    const Operation asksForIdentity{"asks for the identity",
                                    [](Machine& m) { m.GetTester().RetrieveDeviceInformation(); }};
    std::vector<Scope> scopes{
        {"update", faultyLine, With(CommonOperations(), {Restarts(), asksForIdentity, {"updates", Update}})},
        {"dates", ordinary, With(With(CommonOperations(), DateOperations()), {Restarts(), asksForIdentity})},
        {"RLN", surprising, MeasuringOperations({1})},
        {"endless RPE", ordinary, MeasuringOperations({3})},
        {"RPE of a second", ordinary, MeasuringOperations({9})},
        {"high voltage", ordinary, MeasuringOperations({4})},
        {"Ub/Re", rcd, MeasuringOperations({5})},
        {"Ia/Ta", rcd, MeasuringOperations({6})},
        {"IEC Ia/Ta", rcd, MeasuringOperations({7})},
        {"clean-up", rcd, MeasuringOperations({8})},
        {"change of the function", ordinary, PreparingOperations({1, 8})}};
    if (isWhole) {
        scopes.push_back({"IEC", ordinary, With(MeasuringOperations({2}), {Restarts()})});
        scopes.push_back({"RLN and high voltage", ordinary, MeasuringOperations({1, 4})});
        scopes.push_back({"RPE and Ub/Re", rcd, MeasuringOperations({3, 5})});
    }
    return scopes;
}
