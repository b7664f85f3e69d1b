#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QByteArray>

#include "storm/counts.h"
#include "storm/kinds.h"

/// What a storm goes on for.
struct Goals {
    long injections = 0; ///< So many faults of each kind.
    long pairs = 0;      ///< So many of each kind in each state, as far as rounds about them bring any.
    long operations = 0; ///< So much that the application does.
};

/// What a round is about: faults of any kind where there is none, and in any state where that is empty.
struct Aim {
    const Kind* kind = nullptr;
    QByteArray state;
};

/// Decides what the rounds are about, by what the goals still lack.
class Plan
{
public:
    /// With a kind or a state, there are no others.
    Plan(Goals goals, Aim only);

    /// The seed decides between equals. Nothing if there were enough rounds.
    std::optional<Aim> Next(std::uint64_t seed);

    std::vector<const Kind*> KindsNotMet() const;
    /// Each kind together with each state, and with the single exchanges.
    std::vector<Pair> PairsNotMet() const;
    /// How many rounds were about a pair alone.
    int AimedRounds(const Pair& pair) const;

    Counts counts; ///< The rounds add to it.

private:
    std::optional<Aim> NextPair();
    Aim NextKind(std::uint64_t seed, const std::vector<const Kind*>& kinds) const;

    Goals _goals;
    QByteArray _onlyState;
    std::vector<const Kind*> _kinds;
    std::map<Pair, int> _aimedRounds;
};
