#include "samples.h"

#include <algorithm>

void Samples::Add(const Samples& others)
{
    _samples.insert(_samples.end(), others._samples.begin(), others._samples.end());
}

double Samples::Quantile(double share) const
{
    std::vector<double> sorted = _samples;
    std::sort(sorted.begin(), sorted.end());
    const auto last = static_cast<double>(sorted.size() - 1);
    return sorted.at(static_cast<size_t>(share * last + 0.5));
}
