#pragma once

#include <QString>

#include <algorithm>

namespace VesmarClient
{

/// An enumerator and a name of it.
template <typename Enumeration>
struct Named {
    Enumeration value;
    const char* name;
};

/// The row of the value in a table of rows with a `value`; null if there is none.
template <typename Table>
auto FindRow(const Table& table, decltype(table.front().value) value) -> decltype(table.data())
{
    const auto* const row = std::find_if(table.cbegin(), table.cend(),
                                         [value](const auto& candidate) { return candidate.value == value; });
    return row != table.cend() ? row : nullptr;
}

/// The name in the row of the value; empty if the table has no such row.
template <typename Table>
QString NameIn(const Table& table, decltype(table.front().value) value)
{
    const auto* const row = FindRow(table, value);
    return row != nullptr ? QString::fromLatin1(row->name) : QString();
}

} // namespace VesmarClient
