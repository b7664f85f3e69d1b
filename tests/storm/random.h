#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include <QByteArray>

/// Random numbers that are the same for a seed everywhere: the distributions of the C++ library are not.
class Random
{
public:
    explicit Random(std::uint64_t seed) : _engine(seed) {}

    /// From 0 to one below the count.
    int Below(int count) { return static_cast<int>(_engine() % static_cast<std::uint64_t>(count)); }
    /// From the first to the last, both included.
    int Between(int first, int last) { return first + Below(last - first + 1); }
    bool IsOneIn(int count) { return Below(count) == 0; }

    QByteArray Bytes(int count)
    {
        QByteArray bytes;
        for (int index = 0; index < count; ++index) {
            bytes.append(static_cast<char>(Below(256)));
        }
        return bytes;
    }

private:
    std::mt19937_64 _engine;
};

/// One of the values.
template <typename Value>
const Value& Pick(const std::vector<Value>& values, Random& random)
{
    return values.at(static_cast<std::size_t>(random.Below(static_cast<int>(values.size()))));
}
