#include "storm/plan.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "storm/exchangeround.h"
#include "storm/round.h"

namespace
{

/// One that was not met often enough in these may well be one that cannot be met.
constexpr int RoundsForPair = 100;

template <typename Key>
long CountOf(const std::map<Key, long>& counts, const Key& key)
{
    const auto met = counts.find(key);
    return met != counts.end() ? met->second : 0;
}

const std::vector<std::string>& StatesToMeet()
{
    static const std::vector<std::string> states = [] {
        std::vector<std::string> names{ExchangeRound::State};
        std::transform(AllStates().begin(), AllStates().end(), std::back_inserter(names),
                       [](const QByteArray& state) { return state.toStdString(); });
        return names;
    }();
    return states;
}

} // namespace

Plan::Plan(Goals goals, Aim only) : _goals(goals), _onlyState(std::move(only.state))
{
    for (const Kind& kind : AllKinds()) {
        if (only.kind == nullptr || only.kind == &kind) {
            _kinds.push_back(&kind);
        }
    }
}

std::optional<Aim> Plan::Next(std::uint64_t seed)
{
    if (const auto kinds = KindsNotMet(); !kinds.empty()) {
        return NextKind(seed, kinds);
    }
    return counts.operations < _goals.operations ? NextKind(seed, _kinds) : NextPair();
}

/// Most rounds have one kind of fault, and every fourth of a kind's turns has all of them.
Aim Plan::NextKind(std::uint64_t seed, const std::vector<const Kind*>& kinds) const
{
    constexpr std::uint64_t TurnsWithMixed = 4;
    const bool isMixed = _kinds.size() > 1 && seed / kinds.size() % TurnsWithMixed == TurnsWithMixed - 1;
    return {isMixed ? nullptr : kinds.at(static_cast<std::size_t>(seed % kinds.size())), _onlyState};
}

std::optional<Aim> Plan::NextPair()
{
    for (const Pair& pair : PairsNotMet()) {
        if (AimedRounds(pair) < RoundsForPair) {
            ++_aimedRounds[pair];
            return Aim{&KindNamed(pair.first), QByteArray::fromStdString(pair.second)};
        }
    }
    return std::nullopt;
}

std::vector<const Kind*> Plan::KindsNotMet() const
{
    std::vector<const Kind*> kinds;
    std::copy_if(_kinds.begin(), _kinds.end(), std::back_inserter(kinds), [this](const Kind* kind) {
        return CountOf(counts.kinds, std::string(kind->name)) < _goals.injections;
    });
    return kinds;
}

std::vector<Pair> Plan::PairsNotMet() const
{
    std::vector<Pair> pairs;
    for (const Kind* const kind : _kinds) {
        for (const std::string& state : StatesToMeet()) {
            const bool isLeftOut = !_onlyState.isEmpty() && _onlyState != state.c_str();
            if (const Pair pair{kind->name, state};
                !isLeftOut && CountOf(counts.pairs, pair) < _goals.pairs) {
                pairs.push_back(pair);
            }
        }
    }
    return pairs;
}

int Plan::AimedRounds(const Pair& pair) const
{
    const auto aimed = _aimedRounds.find(pair);
    return aimed != _aimedRounds.end() ? aimed->second : 0;
}
