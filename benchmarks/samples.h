#pragma once

#include <chrono>
#include <vector>

/// What was measured again and again.
class Samples
{
public:
    void Add(double sample) { _samples.push_back(sample); }
    void Add(const Samples& others);
    bool IsEmpty() const { return _samples.empty(); }
    /// The sample below which this share of them is, from 0 to 1.
    double Quantile(double share) const;
    double Median() const { return Quantile(0.5); }
    double Largest() const { return Quantile(1); }

private:
    std::vector<double> _samples;
};

using Microseconds = std::chrono::duration<double, std::micro>;

/// How long a call takes, in microseconds.
template <typename Call>
double TimeOf(const Call& call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return Microseconds(std::chrono::steady_clock::now() - start).count();
}

/// What was measured of the library and of what stands beside it.
struct Pair {
    Samples ours;
    Samples beside;
};

/// Measures both in turn, in blocks. Of each block, the first call, which finds everything rested, does not
/// count.
template <typename Ours, typename Beside>
Pair MeasureInTurn(int blocks, int blockSize, const Ours& ours, const Beside& beside)
{
    Pair pair;
    for (int block = 0; block < blocks; ++block) {
        ours();
        for (int count = 0; count < blockSize; ++count) {
            pair.ours.Add(TimeOf(ours));
        }
        beside();
        for (int count = 0; count < blockSize; ++count) {
            pair.beside.Add(TimeOf(beside));
        }
    }
    return pair;
}
