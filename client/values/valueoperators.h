#pragma once

#include <QMetaType>

namespace VesmarClient
{

/// Lets a `QVariant` compare and print values of this type, which Qt 6 does by itself.
template <typename Value>
void RegisterOperators()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QMetaType::registerEqualsComparator<Value>();
    QMetaType::registerDebugStreamOperator<Value>();
#endif
}

} // namespace VesmarClient
