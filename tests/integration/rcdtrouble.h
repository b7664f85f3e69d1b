#pragma once

#include <vector>

/// What goes wrong in tests of residual-current devices, for whoever has to survive it. The words are those
/// of `vesmar measure`; the command is one that the simulator carries out before anything else, or empty.

namespace RcdWords
{

constexpr char UbRe[] = "rcd --mode ub-re";
constexpr char IaTa[] = "rcd --mode ia-ta-1";
constexpr char IecIaTa[] = "rcd-iec --mode ia-ta-2";
constexpr char CleanUp[] = "rcd-iec --mode clean-up";

} // namespace RcdWords

constexpr int NoRcdError = -1;

/// A test that fails.
struct RcdTrouble {
    const char* words;
    const char* command;
    int error = NoRcdError; ///< The error that is told.
    bool isLate = false;    ///< Whoever asked for the test gives it up, and not the library.
};

inline std::vector<RcdTrouble> RcdCheckFailures()
{
    return {
        {RcdWords::UbRe, "scenario rcd-check 1", 500},
        {RcdWords::UbRe, "scenario rcd-check 2", 501},
        {RcdWords::UbRe, "scenario rcd-check 3", 502},
        {RcdWords::UbRe, "scenario rcd-check 4", 503},
        {RcdWords::UbRe, "scenario rcd-check 7", 504},
        {RcdWords::UbRe, "scenario rcd-check 8", 505},
        {RcdWords::UbRe, "scenario rcd-check 9", 506},
        {RcdWords::UbRe, "scenario rcd-check 10", 507},
        {RcdWords::IaTa, "scenario rcd-check 3", 401},
        {RcdWords::IecIaTa, "scenario rcd-check 3", 502},
        {RcdWords::IecIaTa, "scenario rcd-check-lost", 500},
        {RcdWords::UbRe, "scenario rcd-check-lost", 401},
        {"rcd --mode ia-ta-2 --with-ub-re", "scenario rcd-check 9", 506},
    };
}

inline std::vector<RcdTrouble> RcdPreparationFailures()
{
    return {
        {RcdWords::UbRe, "scenario refuses-prepare", 200},
        {RcdWords::IaTa, "scenario refuses-prepare", 200},
        {RcdWords::CleanUp, "scenario refuses-prepare", 200},
        {RcdWords::UbRe, "scenario rcd-other-function", 398},
        {RcdWords::IaTa, "scenario rcd-other-function", 398},
        {RcdWords::IecIaTa, "scenario rcd-other-function", 398},
        {RcdWords::UbRe, "scenario start-test 3", 400},
        {RcdWords::IaTa, "scenario start-test 3", 400},
        {RcdWords::CleanUp, "scenario start-test 3", 400},
        {RcdWords::UbRe, "scenario prepare-error", 401},
        {RcdWords::IaTa, "scenario never-prepared", 401},
        {RcdWords::IecIaTa, "scenario prepare-error", 401},
        {"rcd --mode ub-re --prepare-timeout 2", "scenario never-prepared", NoRcdError, true},
        {"rcd-iec --mode clean-up --prepare-timeout 3", "scenario rcd-check 3", NoRcdError, true},
    };
}

inline std::vector<RcdTrouble> RcdRunFailures()
{
    return {
        {RcdWords::UbRe, "scenario start-error", 201},
        {RcdWords::IaTa, "scenario start-error", 201},
        {RcdWords::IecIaTa, "scenario rcd-silent", 201},
        {RcdWords::CleanUp, "scenario start-error", 201},
        {RcdWords::UbRe, "scenario rcd-silent", 520},
        {RcdWords::IaTa, "scenario rcd-silent", 201},
        {RcdWords::UbRe, "scenario rcd-garbage", 520},
        {RcdWords::UbRe, "scenario ends-without-result", 521},
        {RcdWords::IaTa, "scenario ends-without-result", 521},
        {RcdWords::IecIaTa, "scenario rcd-error-once 7", 521},
        {RcdWords::IaTa, "scenario rcd-error 0", 520},
        {RcdWords::UbRe, "scenario rcd-error 14", 534},
        {RcdWords::IecIaTa, "scenario rcd-error 4"},
        {RcdWords::CleanUp, "scenario rcd-error 4"},
        {RcdWords::UbRe, "error 6", 6},
        {RcdWords::IaTa, "error 0", 0},
    };
}

/// Trouble that ends, so that the test is completed.
inline std::vector<RcdTrouble> RcdTroubleThatEnds()
{
    return {
        {RcdWords::UbRe, "scenario rcd-check 0"},         {RcdWords::UbRe, "scenario rcd-check-once 3"},
        {RcdWords::IaTa, "scenario rcd-check-once 3"},    {RcdWords::IaTa, "scenario rcd-silent-once"},
        {RcdWords::IecIaTa, "scenario rcd-silent-once"},  {RcdWords::IecIaTa, "scenario rcd-check-once 4"},
        {RcdWords::IecIaTa, "scenario rcd-error-once 5"}, {RcdWords::CleanUp, "scenario rcd-check-once 3"},
        {RcdWords::UbRe, "scenario rcd-glued"},           {RcdWords::IaTa, "scenario rcd-pieces 2000"},
    };
}

/// A moment at which a test is aborted.
struct RcdInterruption {
    const char* words;
    const char* command;
    const char* moment; ///< A line of the simulator's log.
};

inline std::vector<RcdInterruption> RcdInterruptions()
{
    return {
        {RcdWords::UbRe, "scenario never-prepared", "function 10 preparing"},
        {RcdWords::UbRe, "scenario rcd-check 3", "function 10 checked: 3"},
        {RcdWords::UbRe, "", "function 10 running"},
        {RcdWords::IaTa, "", "function 10 prepared"},
        {RcdWords::IaTa, "", "function 10 running"},
        {RcdWords::IaTa, "scenario rcd-silent", "function 10 does not start"},
        {RcdWords::IecIaTa, "", "function 11 running"},
        {RcdWords::IecIaTa, "scenario rcd-check 10", "function 11 checked: 10"},
        {RcdWords::CleanUp, "", "function 11 running"},
        {"rcd --mode ia-ta-1 --with-ub-re", "", "function 10 running"},
    };
}
