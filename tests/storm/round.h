#pragma once

#include <memory>
#include <string>

#include <QByteArray>

#include <Vesmar/tester.h>

#include "storm/checks.h"
#include "storm/counts.h"
#include "storm/kinds.h"

/// One life of the library: it is enabled, the application does what comes to its mind while the line does
/// its worst, and then the line is faultless and everything must come to rest. The seed decides about all.
class Round
{
public:
    /// Every fault is of this kind; of any where it is null.
    Round(std::uint64_t seed, const Kind* kind, Counts& counts);
    ~Round();

    /// What did not hold; empty if all did.
    std::string Run();
    std::string LastLines() const { return _checks.LastLines(); }

private:
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
    void Wait(Nanoseconds time, bool isBlocked = false);
    Nanoseconds SomeTime();
    void CheckWhileDisabled();
    void CheckSilence();
    bool IsAtRest() const;
    bool AwaitRest();
    void ComeToRest();

    Counts& _counts;
    const Kind* _kind;
    Random _random;
    Instrument _instrument{_random};
    Checks _checks{_instrument};
    std::unique_ptr<Vesmar::Tester> _tester;
    QByteArray _target; ///< The one state in which faults happen; empty if it may be any.
    bool _isArmed = false;
    int _oneIn = 1;
    int _timeWhenDisabled = 0;
    Nanoseconds _enabledSince{0};
};
