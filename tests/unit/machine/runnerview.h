#pragma once

#include <boost/core/demangle.hpp>

#include <algorithm>
#include <typeinfo>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include "machine/statemachinerunner.h"
#include "states/state.h"
#include "unit/machine/guardtable.h"

/// The states and transitions of a runner by their names.
namespace RunnerView
{

/// One transition, as "`Guard` to `State`, kind".
inline QString TransitionText(const QString& guard, const QString& to, const QString& kind)
{
    return QStringLiteral("%1 to %2, %3").arg(guard, to, kind);
}

/// The class name of a state; "none" for null.
inline QString NameOf(const Vesmar::State* state)
{
    if (state == nullptr) {
        return QStringLiteral("none");
    }
    const QString name = QString::fromStdString(boost::core::demangle(typeid(*state).name()));
    return name.section(QStringLiteral("::"), -1);
}

/// Every state that the current state, the transitions and the parents lead to, by its name.
inline QMap<QString, Vesmar::State*> StatesOf(const Vesmar::StateMachineRunner& runner)
{
    QMap<QString, Vesmar::State*> states;
    const auto add = [&states](Vesmar::State* state) {
        for (; state != nullptr; state = state->GetParentState()) {
            states.insert(NameOf(state), state);
        }
    };
    add(runner.GetCurrentState());
    for (const auto* map : {&runner.GetExternalTransitions(), &runner.GetInternalTransitions()}) {
        for (auto row = map->cbegin(); row != map->cend(); ++row) {
            add(row.key());
            for (const Vesmar::StateTransition& transition : row.value()) {
                add(transition.target);
            }
        }
    }
    return states;
}

/// The name of every state with that of its parent.
inline QMap<QString, QString> TreeOf(const Vesmar::StateMachineRunner& runner)
{
    QMap<QString, QString> tree;
    for (const Vesmar::State* state : StatesOf(runner)) {
        tree.insert(NameOf(state), NameOf(state->GetParentState()));
    }
    return tree;
}

/// The transitions that leave a state: the external ones in their order, then the internal ones.
inline QStringList TransitionsOf(const Vesmar::StateMachineRunner& runner, Vesmar::State* state)
{
    QStringList texts;
    for (const Vesmar::StateTransition& transition : runner.GetExternalTransitions().value(state)) {
        texts += TransitionText(NameOfGuard(transition.guard), NameOf(transition.target),
                                QStringLiteral("external"));
    }
    for (const Vesmar::StateTransition& transition : runner.GetInternalTransitions().value(state)) {
        texts += TransitionText(NameOfGuard(transition.guard), NameOf(transition.target),
                                QStringLiteral("internal"));
    }
    return texts;
}

} // namespace RunnerView
