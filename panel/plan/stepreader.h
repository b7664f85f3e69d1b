#pragma once

#include <QJsonValue>

#include "panel/plan/jsonchecker.h"
#include "panel/plan/plan.h"

namespace Panel
{

/// Reads a step of a plan. Each function returns whether nothing is wrong; what is, the checker knows.
class StepReader
{
    Q_DECLARE_TR_FUNCTIONS(Panel::Plan)

public:
    StepReader(JsonChecker& checker, const JsonChecker::Path& path) : _checker(checker), _path(path) {}

    bool read(const QJsonValue& value);
    const PlanStep& step() const { return _step; }

private:
    bool readSettings(const QJsonObject& step);
    bool refuseOption(const VesmarClient::SettingsProblem& problem);
    bool checkEnd();
    bool readCriteria(const QJsonObject& criteria);
    bool readCriterion(const JsonChecker::Path& path, const QJsonObject& limits);
    JsonChecker::Path at(const QString& member) const { return _path + JsonChecker::Path(member); }

    JsonChecker& _checker;
    JsonChecker::Path _path;
    PlanStep _step;
};

} // namespace Panel
