#pragma once

#include <array>
#include <string>
#include <vector>

#include <Vesmar/tester.h>

#include "context/statemachinecontext.h"
#include "explorer/choices.h"
#include "explorer/configuration.h"
#include "explorer/instrument.h"
#include "machine/statemachinerunner.h"
#include "machine/transitionmap.h"

/// What the application can put into the machine.
struct Settings {
    const char* name;
    std::unique_ptr<Vesmar::MeasurementSettings> (*create)();
};

extern const std::array<Settings, 10> AllSettings;

class Machine;

/// One thing that can happen between two steps, or in the middle of an exchange: a call of the application,
/// or the passing of time.
struct Operation {
    std::string name;
    std::function<void(Machine&)> perform;
};

/// What happened in one step.
struct StepRecord {
    std::string story;             ///< What was unusual, in words.
    std::string frames;            ///< The command letters that were sent.
    std::vector<std::string> sins; ///< The rules that were broken.
    int row = -1;                  ///< The row of the transition map that was taken.
};

/// The driver and an instrument, at a configuration that can be read and written.
class Machine
{
public:
    Machine();

    Configuration Save() const;
    void Restore(const Configuration& configuration);

    /// Makes one step of the runner. Where an exchange begins, one of the operations may be called.
    StepRecord Step(Choices& choices, const std::vector<Operation>& interference);

    void SetFreedom(const Freedom& freedom) { _instrument.freedom = freedom; }

    // What the application calls.
    Vesmar::Tester& GetTester() { return _tester; }
    void Prepare(std::size_t settings);
    /// In the middle of a step, the machine is disabled, and enabled again once the step is over.
    void DisableAndEnable();
    /// Lets the time of the measurement pass, if one is measured.
    void LetTimePass();

private:
    void Reenable();
    void Watch(const QByteArray& request, StepRecord& record);
    void Interfere(Choices& choices, const std::vector<Operation>& interference);
    void ForgetNeedlessAttempts();
    void CheckStart(StepRecord& record) const;
    std::size_t CurrentState() const;
    void RestoreRunner(const Configuration& configuration);
    void RestoreRequests(const Configuration& configuration);
    void RestoreMeasurement(const Configuration& configuration);
    void RestoreKnowledge(const Configuration& configuration);
    void RestoreInstrument(const Configuration& configuration);

    Vesmar::Tester _tester;
    Vesmar::StateMachineContext& _context;
    Vesmar::StateMachineRunner _runner;
    Instrument _instrument;
    std::size_t _settings = 0;
    int _timeLimit = 0;
    bool _isStepping = false;
    bool _isDisabled = false; ///< The application has disabled the machine in the middle of the step.
};
