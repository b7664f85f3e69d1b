#include "panel/plan/jsonchecker.h"

namespace Panel
{

bool JsonChecker::checkNothingTwice()
{
    const Path& repeated = _places.repeated();
    return repeated.isEmpty() || refuse(repeated, tr("\"%1\" is there twice.").arg(repeated.last()));
}

bool JsonChecker::checkMembers(const Path& path, const QJsonObject& object, const QStringList& known)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!known.contains(member.key())) {
            return refuse(path + Path(member.key()),
                          tr("\"%1\" is not known here; it can be %2.")
                              .arg(member.key(), known.join(QStringLiteral(", "))));
        }
    }
    return true;
}

bool JsonChecker::checkText(const Path& path, const QJsonValue& value)
{
    return !value.toString().isEmpty() ||
           refuse(path, tr("\"%1\" has to be a text that is not empty.").arg(path.last()));
}

bool JsonChecker::checkNumber(const Path& path, const QJsonValue& value)
{
    return value.isDouble() || refuse(path, tr("\"%1\" has to be a number.").arg(path.last()));
}

bool JsonChecker::checkObject(const Path& path, const QJsonValue& value)
{
    return value.isObject() || value.isUndefined() ||
           refuse(path, tr("\"%1\" has to be an object in braces.").arg(path.last()));
}

bool JsonChecker::refuse(Path path, const QString& damage)
{
    while (!path.isEmpty() && !_places.contains(path)) {
        path.removeLast();
    }
    _damage = damage;
    _line = _places.lineOf(path);
    return false;
}

} // namespace Panel
