#pragma once

#include <type_traits>

#include <QMutex>
#include <QObject>
#include <QString>
#include <QStringList>

#include "support/cells.h"

/// Every change of every cell of a context in the order in which they happen, as "Name=value". Numbers stand
/// for enumerators and flags; a cell of pointers shows its name alone. Writes of any thread are seen.
class CellLog
{
public:
    explicit CellLog(Vesmar::StateMachineContext& context)
    {
        ForEachCell(context, [this](const char* name, auto& cell) { Watch(name, cell); });
    }

    QStringList Changes() const
    {
        const QMutexLocker lock(&_mutex);
        return _changes;
    }

    void Clear()
    {
        const QMutexLocker lock(&_mutex);
        _changes.clear();
    }

private:
    template <typename T>
    void Watch(const char* name, Vesmar::ThreadSafeProperty<T>& cell)
    {
        QObject::connect(
            &cell, &Vesmar::Notifible::ValueChanged, &_receiver,
            [this, name, &cell]() { Append(QLatin1String(name) + ValueText(cell.Get())); },
            Qt::DirectConnection);
    }

    template <typename T>
    static QString ValueText(const T& value)
    {
        if constexpr (std::is_pointer_v<T>) {
            return {};
        } else if constexpr (std::is_same_v<T, QDateTime>) {
            return QLatin1Char('=') + value.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
        } else {
            return QLatin1Char('=') + QString::number(static_cast<int>(value));
        }
    }

    void Append(const QString& change)
    {
        const QMutexLocker lock(&_mutex);
        _changes.append(change);
    }

    mutable QMutex _mutex;
    QStringList _changes;
    QObject _receiver;
};

/// Such changes, written as one text with a blank between two of them.
inline QStringList Changes(const char* text)
{
    return QString(QLatin1String(text)).split(QLatin1Char(' '));
}
