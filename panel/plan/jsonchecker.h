#pragma once

#include <QCoreApplication>
#include <QJsonObject>

#include "panel/plan/jsonplaces.h"

namespace Panel
{

/// Finds the first thing that is wrong with a JSON text, and its line. Each check returns whether it has
/// found nothing.
class JsonChecker
{
    Q_DECLARE_TR_FUNCTIONS(Panel::Plan)

public:
    using Path = QStringList; ///< As in JsonPlaces.

    explicit JsonChecker(const QByteArray& json) : _places(json) {}

    bool checkNothingTwice();
    /// The object has no other members than these.
    bool checkMembers(const Path& path, const QJsonObject& object, const QStringList& known);
    /// The value is a text that is not empty.
    bool checkText(const Path& path, const QJsonValue& value);
    bool checkNumber(const Path& path, const QJsonValue& value);
    /// The value is an object, or is not there.
    bool checkObject(const Path& path, const QJsonValue& value);
    /// Tells the damage at its line, or at that of the object that something is missing in. Returns false.
    bool refuse(Path path, const QString& damage);

    QString damage() const { return _damage; } ///< A sentence.
    int line() const { return _line; }

private:
    JsonPlaces _places;
    QString _damage;
    int _line = 1;
};

} // namespace Panel
