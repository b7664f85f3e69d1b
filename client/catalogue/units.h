#pragma once

#include <mutex>

#include <QHash>
#include <QPair>
#include <QString>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// The unit of a reading, and how many decimals are shown; empty and -1 where it is not known.
struct ReadingUnit {
    QString unit;
    int decimals = -1;
};

/// The units by the number of the function and the identifier of the reading.
using Units = QHash<QPair<int, QString>, ReadingUnit>;

/// The units that are in use. Any thread may ask for them.
class UnitsStore
{
public:
    /// Reads the file, if it is there.
    explicit UnitsStore(const QString& defaultPath);

    Units Current() const;
    /// Replaces the units by those of a file, unless it tells a failure.
    Failure Replace(const QString& path);
    /// Why the default file was not used.
    const Failure& DefaultFailure() const { return _defaultFailure; }

private:
    mutable std::mutex _mutex;
    Units _units;
    Failure _defaultFailure;
};

/// The units of this process. The default file is read when they are first used.
UnitsStore& UnitsInUse();

} // namespace VesmarClient
