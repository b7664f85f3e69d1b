#pragma once

#include <QString>

#include "machine/transitionmap.h"

/// What the tables of docs/statemachine.md should be, according to the tables of the machine.
namespace DocumentTables
{

inline QString NameOf(Vesmar::StateId state)
{
    return QStringLiteral("`%1`").arg(
        QLatin1String(Vesmar::StateTree.at(static_cast<std::size_t>(state)).name));
}

inline QString Tree()
{
    QString text = QStringLiteral("| State | Parent |\n|---|---|\n");
    for (const Vesmar::StateNode& node : Vesmar::StateTree) {
        text +=
            QStringLiteral("| `%1` | %2 |\n")
                .arg(QLatin1String(node.name), node.parent ? NameOf(*node.parent) : QStringLiteral("none"));
    }
    return text + QStringLiteral("\nThe machine starts in %1.\n").arg(NameOf(Vesmar::InitialState));
}

inline QString Transitions()
{
    QString text = QStringLiteral("| # | From | Guard | To | Kind |\n|---|---|---|---|---|\n");
    int number = 0;
    for (const Vesmar::Transition& row : Vesmar::TransitionMap) {
        const bool isExternal = row.kind == Vesmar::TransitionKind::External;
        text += QStringLiteral("| %1 | %2 | `%3` | %4 | %5 |\n")
                    .arg(++number)
                    .arg(NameOf(row.from), QLatin1String(row.guardName), NameOf(row.to),
                         isExternal ? QStringLiteral("external") : QStringLiteral("internal"));
    }
    return text;
}

/// Returns the page with the table between the marks of this name, or nothing if a mark is missing.
inline QString WithTable(const QString& page, const QString& name, const QString& table)
{
    const QString begin = QStringLiteral("<!-- begin %1 -->\n").arg(name);
    const int from = page.indexOf(begin) + begin.size();
    const int to = page.indexOf(QStringLiteral("<!-- end %1 -->\n").arg(name), from);
    return page.contains(begin) && to >= from ? page.left(from) + table + page.mid(to) : QString();
}

/// Returns the page with both tables as they should be, or nothing if a mark is missing.
inline QString UpToDate(const QString& page)
{
    return WithTable(WithTable(page, QStringLiteral("tree"), Tree()), QStringLiteral("transitions"),
                     Transitions());
}

} // namespace DocumentTables
