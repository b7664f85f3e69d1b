#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QByteArray>

#include <Vesmar/tester.h>

#include "storm/checks.h"
#include "storm/counts.h"
#include "storm/kinds.h"

/// What a round brings upon the library.
struct Faults {
    const Kind* kind = nullptr; ///< Every fault is of this kind; of any where it is null.
    int steadyOneIn = 0;        ///< As many exchanges have one, all the time; 0 leaves that to the seed.
    QByteArray state = {};      ///< They happen in this one only; empty leaves that to the seed.
};

/// The states in which requests are made, as their banners name them, and the update while disabled.
const std::vector<QByteArray>& AllStates();

/// One life of the library: it is enabled, the application does what comes to its mind while the line does
/// its worst, and then the line is faultless and everything must come to rest. The seed decides about all.
class Round
{
public:
    Round(std::uint64_t seed, Faults faults, Slack slack, Counts& counts);
    ~Round();

    /// What did not hold; empty if all did.
    std::string Run();
    std::string LastLines() const { return _checks.LastLines(); }

private:
    bool IsSteady() const { return _faults.steadyOneIn > 0; }
    bool IsHeld() const;
    bool InjectInto(Exchange& exchange);
    void Operate();
    void OperateMeasurement(int choice);
    void OperateTester(int choice);
    void Toggle();
    void Enable();
    void Disable();
    void Prepare();
    void Abort();
    void Start();
    void StartAnew();
    void Update();
    void UpdateWhileDisabled();
    void ReenterUpdate();
    void WatchSettings();
    void Wait(Nanoseconds time, bool isBlocked = false);
    Nanoseconds SomeTime();
    void CheckWhileDisabled();
    void CheckSilence();
    bool IsAtRest() const;
    bool AwaitRest();
    bool IsStuckByOddity() const;
    void EndTrouble();
    void ComeToRest();

    Counts& _counts;
    Faults _faults;
    Random _random;     ///< The application's.
    Random _lineRandom; ///< The worker's thread uses it.
    Instrument _instrument{_lineRandom};
    Checks _checks;
    std::unique_ptr<Vesmar::Tester> _tester;
    QByteArray _target; ///< The one state in which faults happen; empty if it may be any.
    bool _isArmed = false;
    int _oneIn = 1;
    int _timeWhenDisabled = 0;
    Nanoseconds _enabledSince{0};
};
