#pragma once

#include <chrono>
#include <vector>

/// What threads that step have used of the machine. In a program with these functions, a thread leaves a mark
/// when it begins the pause of 100 ms or more that ends a step.
namespace StepMarks
{

/// What the thread has used by then.
struct Mark {
    std::chrono::steady_clock::time_point time;
    double processorUs;
    long wakeUps;
    long allocations;
};

/// The marks of the driver's worker, and those of the bare machine.
std::vector<Mark> OfDriver();
std::vector<Mark> OfBareMachine();

/// Says that the calling thread is that of the bare machine.
void MarkAsBare();

/// How often the calling thread has waited so far.
long WakeUps();

} // namespace StepMarks
