#pragma once

#include <cstddef>
#include <vector>

/// The alternatives that one step of the machine meets. A step is run again and again until every combination
/// of them has been tried in which at most one is unusual; the first alternative is always the usual one.
class Choices
{
public:
    /// Which of so many alternatives this run is to try.
    std::size_t Choose(std::size_t count)
    {
        if (_position == _made.size()) {
            _made.push_back({0, count});
        }
        return _made[_position++].chosen;
    }

    /// Whether this run has met nothing unusual.
    bool AreUsual() const { return CountUnusual() == 0; }

    /// Goes on to the next combination; false after the last one.
    bool Advance()
    {
        _position = 0;
        for (; !_made.empty(); _made.pop_back()) {
            Choice& last = _made.back();
            const std::size_t unusualOthers = CountUnusual() - (last.chosen != 0 ? 1 : 0);
            if (last.chosen + 1 < last.count && unusualOthers == 0) {
                ++last.chosen;
                return true;
            }
        }
        return false;
    }

private:
    struct Choice {
        std::size_t chosen;
        std::size_t count;
    };

    std::size_t CountUnusual() const
    {
        std::size_t count = 0;
        for (const Choice& choice : _made) {
            count += choice.chosen != 0 ? 1 : 0;
        }
        return count;
    }

    std::vector<Choice> _made;
    std::size_t _position = 0;
};
