#pragma once

#include <initializer_list>
#include <type_traits>

#include <QVector>

/// The numbers behind the names of an enumeration, which is a scoped one of integers.
template <typename Enumeration>
QVector<int> Numbers(std::initializer_list<Enumeration> names)
{
    static_assert(std::is_same_v<std::underlying_type_t<Enumeration>, int>);
    static_assert(!std::is_convertible_v<Enumeration, int>, "the enumeration is not scoped");
    QVector<int> numbers;
    for (const Enumeration name : names) {
        numbers.append(static_cast<int>(name));
    }
    return numbers;
}

/// The whole numbers from the first to the last.
inline QVector<int> Range(int first, int last)
{
    QVector<int> range;
    for (int number = first; number <= last; ++number) {
        range.append(number);
    }
    return range;
}
