#include "explorer/oddities.h"

#include "explorer/instrumentturns.h"

using Vesmar::StateId;

namespace
{

constexpr const char* NeverEnds = "a measurement never ends";
constexpr const char* StaysPending = "a request stays pending";
constexpr const char* AbortFails = "an abort does not stop the instrument";
constexpr const char* StartsInSpite = "a start goes out although an abort is pending";

constexpr bool TakesTwoFunctions = true;

constexpr const char* SendsNoStop = "An abort sends no stop. To stop the instrument, leave measurement mode";
constexpr const char* IgnoresAborts = "The clean-up ignores aborts";
constexpr const char* CountsForeign = "Another function that is started at the instrument counts as the one";
constexpr const char* HoldsNoStart = "**A preparation that comes when the start is decided, or while it is "
                                     "carried out, does not hold that start.**";
constexpr const char* WaitsForItsOwn =
    "An RCD test whose start was decided upon does nothing while the settings are those of another function";
constexpr const char* EntersAgain = "Measurement mode that is left and entered again";
constexpr const char* IsOverAtOnce = "**An abort right after an acknowledged start is over at once";

bool IsIn(const Configuration& configuration, StateId state)
{
    return configuration.state == static_cast<int>(state);
}

bool HasSettings(const Configuration& configuration, std::string_view name)
{
    return AllSettings.at(static_cast<std::size_t>(configuration.settings)).name == name;
}

bool IsStopped(const Configuration& configuration)
{
    return configuration.measurementStatus == static_cast<int>(Vesmar::MeasurementState::Stopped);
}

bool IsCleanUpLeftBehind(const Configuration& /*begin*/, const Configuration& end)
{
    return IsIn(end, StateId::RCDMonitoring) && HasSettings(end, "a clean-up");
}

bool IsTestLeftBehind(const Configuration& /*begin*/, const Configuration& end)
{
    return IsIn(end, StateId::RCDMonitoring) && !HasSettings(end, "a clean-up");
}

bool IsForeignMeasured(const Configuration& /*begin*/, const Configuration& end)
{
    return end.instrumentFunction == Number::Foreign &&
           (IsIn(end, StateId::StartingMeasurement) || IsIn(end, StateId::SingleMeasurementRunning));
}

bool IsRunningInPreparing(const Configuration& /*begin*/, const Configuration& end)
{
    return IsIn(end, StateId::PreparingMeasurement);
}

/// An abort has just ended in measurement mode, before the start showed.
bool IsAbortedBeforeItShows(const Configuration& begin, const Configuration& end)
{
    return IsIn(begin, StateId::MeasurementMode) && IsStopped(begin) && IsRunningInPreparing(begin, end);
}

bool HasRcdSettings(const Configuration& configuration)
{
    return HasSettings(configuration, "Ub/Re") || HasSettings(configuration, "Ia/Ta") ||
           HasSettings(configuration, "IEC Ia/Ta") || HasSettings(configuration, "a clean-up");
}

bool IsWaitingUnderOtherSettings(const Configuration& /*begin*/, const Configuration& end)
{
    const bool isInTest =
        IsIn(end, StateId::RCDUbReMeasurementRunning) || IsIn(end, StateId::RCDIaTaMeasurementRunning) ||
        IsIn(end, StateId::RCDIECIaTaMeasurementRunning) || IsIn(end, StateId::RCDIECCleanUp);
    return isInTest && !HasRcdSettings(end);
}

bool IsFormerMeasured(const Configuration& /*begin*/, const Configuration& end)
{
    constexpr int Single = 1; // RLN, and IEC as the instrument reports it
    return IsIn(end, StateId::SingleMeasurementRunning) && end.instrumentFunction != 0 &&
           end.instrumentFunction != Single;
}

} // namespace

const std::vector<Oddity> Oddities{
    {NeverEnds, "The clean-up is over for the library as soon as it is started", IsCleanUpLeftBehind},
    {NeverEnds, "A silent Ub/Re test ends at once",
     [](const Configuration& begin, const Configuration& end) {
         return IsIn(end, StateId::RCDMonitoring) && HasSettings(end, "Ub/Re") &&
                begin.isAbortRequested == 0 && end.isAbortRequested == 0;
     }},
    {NeverEnds, SendsNoStop, IsTestLeftBehind},
    {NeverEnds, CountsForeign, IsForeignMeasured},
    {NeverEnds, IsOverAtOnce, IsAbortedBeforeItShows},
    {NeverEnds, EntersAgain, IsRunningInPreparing},
    {NeverEnds, HoldsNoStart, IsFormerMeasured, TakesTwoFunctions},
    {NeverEnds, WaitsForItsOwn, IsWaitingUnderOtherSettings, TakesTwoFunctions},
    {AbortFails, IgnoresAborts, IsCleanUpLeftBehind},
    {AbortFails, SendsNoStop, IsTestLeftBehind},
    {AbortFails, IsOverAtOnce, IsAbortedBeforeItShows},
    {AbortFails, EntersAgain, IsRunningInPreparing},
    {AbortFails, WaitsForItsOwn, IsWaitingUnderOtherSettings, TakesTwoFunctions},
    {StartsInSpite, IgnoresAborts,
     [](const Configuration& begin, const Configuration&) { return IsIn(begin, StateId::RCDIECCleanUp); }},
    {StartsInSpite, "The Ia/Ta tests send their start although an abort is pending",
     [](const Configuration& begin, const Configuration&) {
         return IsIn(begin, StateId::RCDIaTaMeasurementRunning) ||
                IsIn(begin, StateId::RCDIECIaTaMeasurementRunning);
     }},
    {StaysPending,
     "An abort in measurement mode, with nothing prepared on an instrument that has not measured",
     [](const Configuration&, const Configuration& end) {
         constexpr int NeverReported = -1;
         return IsIn(end, StateId::AbortingMeasurement) && end.functionState == NeverReported;
     }},
    {StaysPending, CountsForeign, IsForeignMeasured},
    {StaysPending, HoldsNoStart, IsFormerMeasured, TakesTwoFunctions},
    {StaysPending, WaitsForItsOwn, IsWaitingUnderOtherSettings, TakesTwoFunctions},
    {StaysPending, "**An abort withdraws a preparation that is still pending, but its settings stay",
     [](const Configuration&, const Configuration& end) {
         return IsIn(end, StateId::RCDMonitoring) && end.isAbortRequested == 0 && !HasRcdSettings(end);
     },
     TakesTwoFunctions},
    {StaysPending, "An abort that finds the function stopping",
     [](const Configuration&, const Configuration& end) {
         constexpr int Stopping = 8;
         return IsIn(end, StateId::AbortingMeasurement) && end.functionState == Stopping;
     }},
    {StaysPending, "An abort while a measurement is prepared and not started changes nothing",
     [](const Configuration&, const Configuration& end) {
         return IsIn(end, StateId::PreparingMeasurement) && end.isAbortRequested != 0;
     }},
    {StaysPending,
     "**A running measurement goes on reading whatever is new, even when another function is active.**",
     [](const Configuration&, const Configuration& end) {
         return IsIn(end, StateId::SingleMeasurementRunning) && end.instrumentFunction == 0;
     }},
    {StaysPending, "Before the start, an abort without a preparation under way stays pending",
     [](const Configuration&, const Configuration& end) {
         return IsIn(end, StateId::RCDMonitoring) && end.isAbortRequested != 0;
     }},
    {StaysPending, "A function that falls back to prepared before a status has reported it starting",
     [](const Configuration&, const Configuration& end) { return IsIn(end, StateId::StartingMeasurement); }},
    {StaysPending, "A continuous measurement whose function is gone when its time has elapsed",
     [](const Configuration&, const Configuration& end) {
         return IsIn(end, StateId::StoppingMeasurement) && end.instrumentFunction == 0;
     }},
};
