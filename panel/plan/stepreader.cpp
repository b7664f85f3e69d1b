#include "panel/plan/stepreader.h"

namespace Panel
{

using VesmarClient::Functions;
using VesmarClient::Option;
using VesmarClient::ReadingInfo;
using VesmarClient::Settings;
using VesmarClient::SettingsProblem;
using Path = JsonChecker::Path;

namespace
{

const QLatin1String Name("name");
const QLatin1String Function("function");
const QLatin1String Options("options");
const QLatin1String Criteria("criteria");
const QLatin1String Minimum("min");
const QLatin1String Maximum("max");

} // namespace

bool StepReader::read(const QJsonValue& value)
{
    const QJsonObject object = value.toObject();
    const bool isRead = _checker.checkObject(_path, value) &&
                        _checker.checkMembers(_path, object, {Name, Function, Options, Criteria}) &&
                        _checker.checkText(at(Name), object.value(Name)) &&
                        _checker.checkText(at(Function), object.value(Function)) &&
                        _checker.checkObject(at(Options), object.value(Options)) && readSettings(object) &&
                        _checker.checkObject(at(Criteria), object.value(Criteria)) &&
                        readCriteria(object.value(Criteria).toObject());
    _step.name = object.value(Name).toString();
    return isRead;
}

bool StepReader::readSettings(const QJsonObject& step)
{
    _step.settings = Settings(step.value(Function).toString(), step.value(Options).toObject().toVariantMap());
    const QVector<SettingsProblem> problems = _step.settings.validate();
    return problems.isEmpty() ? checkEnd() : refuseOption(problems.first());
}

bool StepReader::refuseOption(const SettingsProblem& problem)
{
    return problem.option.isEmpty()
               ? _checker.refuse(at(Function), problem.message)
               : _checker.refuse(at(Options) + Path(problem.option),
                                 QStringLiteral("\"%1\": %2").arg(problem.option, problem.message));
}

/// A step that goes on until somebody stops it would be the last one.
bool StepReader::checkEnd()
{
    const QString function = _step.settings.function();
    for (const Option& option : Functions::find(function).options) {
        if (!option.special.isEmpty() &&
            _step.settings.value(option.identifier).toString() == option.special) {
            return _checker.refuse(
                at(Options) + Path(option.identifier),
                tr("A step of a plan has to end by itself: give \"%1\" a number.").arg(option.identifier));
        }
    }
    return true;
}

bool StepReader::readCriteria(const QJsonObject& criteria)
{
    QStringList known;
    for (const ReadingInfo& reading : Functions::find(_step.settings.function()).readings) {
        known.append(reading.identifier);
    }
    bool isRead = _checker.checkMembers(at(Criteria), criteria, known);
    for (int i = 0; isRead && i < known.size(); ++i) {
        const QJsonValue limits = criteria.value(known.at(i));
        const Path path = at(Criteria) + Path(known.at(i));
        isRead = limits.isUndefined() ||
                 (_checker.checkObject(path, limits) && readCriterion(path, limits.toObject()));
    }
    return isRead;
}

bool StepReader::readCriterion(const Path& path, const QJsonObject& limits)
{
    if (limits.isEmpty()) {
        return _checker.refuse(path, tr("\"%1\" needs \"min\", \"max\" or both.").arg(path.last()));
    }
    if (!_checker.checkMembers(path, limits, {Minimum, Maximum})) {
        return false;
    }
    Criterion criterion{path.last(), {}, {}};
    for (auto limit = limits.begin(); limit != limits.end(); ++limit) {
        if (!_checker.checkNumber(path + Path(limit.key()), limit.value())) {
            return false;
        }
        (limit.key() == Minimum ? criterion.minimum : criterion.maximum) = limit.value().toDouble();
    }
    if (criterion.minimum && criterion.maximum && *criterion.minimum > *criterion.maximum) {
        return _checker.refuse(path, tr("\"min\" is greater than \"max\"."));
    }
    _step.criteria.append(criterion);
    return true;
}

} // namespace Panel
