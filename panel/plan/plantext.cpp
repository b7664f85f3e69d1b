#include "panel/plan/plantext.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "panel/plan/stepreader.h"

namespace Panel
{

using Path = JsonChecker::Path;

namespace
{

constexpr int Version = 1;
const QLatin1String VersionMember("version");
const QLatin1String Name("name");
const QLatin1String OnFailedStep("onFailedStep");
const QLatin1String Stop("stop");
const QLatin1String Continue("continue");
const QLatin1String Steps("steps");

QString translated(const char* text)
{
    return QCoreApplication::translate("Panel::Plan", text);
}

bool readHead(JsonChecker& checker, const QJsonObject& object, Plan* plan)
{
    if (object.value(VersionMember).toInt() != Version) {
        return checker.refuse(
            {VersionMember},
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "\"version\" has to be %1.")).arg(Version));
    }
    const QJsonValue onFailedStep = object.value(OnFailedStep);
    if (!onFailedStep.isUndefined() && onFailedStep != Stop && onFailedStep != Continue) {
        return checker.refuse({OnFailedStep},
                              translated(QT_TRANSLATE_NOOP(
                                  "Panel::Plan", "\"onFailedStep\" has to be \"stop\" or \"continue\".")));
    }
    plan->name = object.value(Name).toString();
    plan->goesOnAfterFailedStep = onFailedStep == Continue;
    return checker.checkMembers({}, object, {VersionMember, Name, OnFailedStep, Steps}) &&
           checker.checkText({Name}, object.value(Name));
}

bool readSteps(JsonChecker& checker, const QJsonArray& steps, Plan* plan)
{
    if (steps.isEmpty()) {
        return checker.refuse(
            {Steps},
            translated(QT_TRANSLATE_NOOP("Panel::Plan", "\"steps\" has to be a list of at least one step.")));
    }
    for (int i = 0; i < steps.size(); ++i) {
        StepReader reader(checker, {Steps, QString::number(i)});
        if (!reader.read(steps.at(i))) {
            return false;
        }
        plan->steps.append(reader.step());
    }
    return true;
}

} // namespace

PlanText readPlanText(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        return {{}, error.errorString() + QLatin1Char('.'), json.left(error.offset).count('\n') + 1};
    }
    if (!document.isObject()) {
        return {{}, translated(QT_TRANSLATE_NOOP("Panel::Plan", "A plan is an object in braces."))};
    }
    JsonChecker checker(json);
    Plan plan;
    const QJsonObject object = document.object();
    const bool isRead = checker.checkNothingTwice() && readHead(checker, object, &plan) &&
                        readSteps(checker, object.value(Steps).toArray(), &plan);
    return isRead ? PlanText{plan, {}} : PlanText{{}, checker.damage(), checker.line()};
}

} // namespace Panel
