#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <VesmarClient/functions.h>

#include "panel/kit/files.h"
#include "panel/plan/planreader.h"
#include "panel/plan/planrecord.h"
#include "panel/plan/plantext.h"

using namespace Panel;
using VesmarClient::Reading;

namespace
{

const QByteArray Good = R"({
  "version": 1,
  "name": "Two steps",
  "onFailedStep": "continue",
  "steps": [
    {
      "name": "Earth",
      "function": "rpe",
      "options": {"current": 2, "time": 3},
      "criteria": {"resistance": {"max": 0.3}, "current": {"min": 0.1, "max": 0.4}}
    },
    {"name": "RLN", "function": "rln"}
  ]
})";

void AddDamage(const char* name, const char* good, const char* damaged, int line, const char* reason)
{
    QByteArray json = Good;
    QTest::newRow(name) << json.replace(good, damaged) << line << QString::fromLatin1(reason);
}

VesmarClient::Result ResultWith(double resistance)
{
    Reading reading;
    reading.name = QStringLiteral("resistance");
    reading.value = resistance;
    reading.isPresent = true;
    return {VesmarClient::Function::RPE, {reading}, {}};
}

} // namespace

/// Test plans as they are read, and what criteria decide.
class TestPanelPlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void APlanIsRead();
    void ADamagedPlanIsRefused_data();
    void ADamagedPlanIsRefused();
    void AFileIsToldWithItsLine();
    void ThePlansOfTheProgramDifferByTheirLanguage();
    void TheSchemaKnowsEveryFunction();
    void CriteriaDecide();
};

void TestPanelPlan::APlanIsRead()
{
    QByteArray json = Good;
    const PlanText text = readPlanText(json.replace("Earth", "Earth [1], \\\"PE\\\" {"));
    QCOMPARE(text.damage, QString());
    QCOMPARE(text.plan.name, QStringLiteral("Two steps"));
    QVERIFY(text.plan.goesOnAfterFailedStep);
    QCOMPARE(text.plan.steps.size(), 2);
    const PlanStep& first = text.plan.steps.first();
    QCOMPARE(first.name, QStringLiteral("Earth [1], \"PE\" {"));
    QCOMPARE(first.settings.function(), QStringLiteral("rpe"));
    QCOMPARE(first.settings.value(QStringLiteral("current")).toInt(), 2);
    QCOMPARE(first.criteria.size(), 2);
    QCOMPARE(first.criteria.at(0).reading, QStringLiteral("resistance"));
    QVERIFY(!first.criteria.at(0).minimum);
    QCOMPARE(*first.criteria.at(1).minimum, 0.1);
    QVERIFY(text.plan.steps.last().criteria.isEmpty());
}

void TestPanelPlan::ADamagedPlanIsRefused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("reason");
    AddDamage("no JSON", "\"rpe\",", "\"rpe\"", 9, "unterminated object.");
    AddDamage("no object", Good.constData(), "[]", 1, "A plan is an object in braces.");
    AddDamage("another version", "\"version\": 1", "\"version\": 2", 2, "\"version\" has to be 1.");
    AddDamage("no name", "\"name\": \"Two steps\",", "", 1, "\"name\" has to be a text that is not empty.");
    AddDamage("a wrong word", "\"continue\"", "\"go on\"", 4,
              "\"onFailedStep\" has to be \"stop\" or \"continue\".");
    AddDamage("no steps", "\"steps\": [", "\"steps\": [], \"more\": [", 5,
              "\"more\" is not known here; it can be version, name, onFailedStep, steps.");
    AddDamage("a step without a name", "\"name\": \"RLN\", ", "", 12,
              "\"name\" has to be a text that is not empty.");
    AddDamage("an unknown member", "\"criteria\"", "\"limits\"", 10,
              "\"limits\" is not known here; it can be name, function, options, criteria.");
    AddDamage("a member twice", "\"function\": \"rln\"", "\"function\": \"rln\", \"function\": \"it\"", 12,
              "\"function\" is there twice.");
    AddDamage("an unknown function", "\"rln\"", "\"rlm\"", 12,
              "There is no function \"rlm\"; it is one of rln, iec, rpe, riso, isub, ipe, idelta, it, power, "
              "hv, rcd, rcd-iec.");
    AddDamage("an unknown option", "\"time\"", "\"tiem\"", 9,
              "\"tiem\": rpe has no such option; it has time, current, method.");
    AddDamage("an option that is wrong", "\"current\": 2", "\"current\": 5", 9,
              "\"current\": It is one of 0, 1, 2, 3.");
    AddDamage("no end", "\"time\": 3", "\"time\": \"unlimited\"", 9,
              "A step of a plan has to end by itself: give \"time\" a number.");
    AddDamage("options that are a list", "{\"current\": 2, \"time\": 3}", "[2, 3]", 9,
              "\"options\" has to be an object in braces.");
    AddDamage("an unknown reading", "\"resistance\"", "\"resistence\"", 10,
              "\"resistence\" is not known here; it can be resistance, voltage, current.");
    AddDamage("a criterion that is a number", "{\"max\": 0.3}", "0.3", 10,
              "\"resistance\" has to be an object in braces.");
    AddDamage("a criterion that says nothing", "{\"max\": 0.3}", "{}", 10,
              "\"resistance\" needs \"min\", \"max\" or both.");
    AddDamage("a limit that is a text", "\"max\": 0.3", "\"max\": \"0.3\"", 10,
              "\"max\" has to be a number.");
    AddDamage("an empty range", "\"max\": 0.4", "\"max\": 0.01", 10, "\"min\" is greater than \"max\".");
}

void TestPanelPlan::ADamagedPlanIsRefused()
{
    QFETCH(QByteArray, json);
    QFETCH(int, line);
    QFETCH(QString, reason);
    QVERIFY(json != Good);
    const PlanText text = readPlanText(json);
    QCOMPARE(text.damage, reason);
    QCOMPARE(text.line, line);
    QVERIFY(text.plan.steps.isEmpty());
}

void TestPanelPlan::AFileIsToldWithItsLine()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("plan.json"));
    QByteArray damaged = Good;
    QVERIFY(!writeNewFile(path, damaged.replace("rln", "rlm")).isFailure());
    const PlanFile file = readPlan(path);
    QCOMPARE(file.failure.name, QStringLiteral("plan-damaged"));
    QVERIFY2(file.failure.whatHappened.contains(QStringLiteral("plan.json is damaged, line 12: There is no")),
             qPrintable(file.failure.whatHappened));
    QCOMPARE(readPlan(folder.path()).failure.name, QStringLiteral("plan-unreadable"));
    QCOMPARE(writeNewFile(path, {}).name, QStringLiteral("file-not-written"));
    QCOMPARE(readFile(path, 1000).bytes, damaged);
}

void TestPanelPlan::ThePlansOfTheProgramDifferByTheirLanguage()
{
    const PlanFile english = readPlan(QStringLiteral(PLAN_FOLDER "/appliance-test.json"));
    const PlanFile german = readPlan(QStringLiteral(PLAN_FOLDER "/appliance-test_de.json"));
    QVERIFY2(!english.failure.isFailure(), qPrintable(english.failure.whatHappened));
    QVERIFY2(!german.failure.isFailure(), qPrintable(german.failure.whatHappened));
    QCOMPARE(english.plan.steps.size(), 7);
    QCOMPARE(german.plan.steps.size(), 7);
    for (int i = 0; i < 7; ++i) {
        QCOMPARE(german.plan.steps.at(i).settings, english.plan.steps.at(i).settings);
        QCOMPARE(german.plan.steps.at(i).criteria.size(), english.plan.steps.at(i).criteria.size());
    }
}

void TestPanelPlan::TheSchemaKnowsEveryFunction()
{
    const QByteArray text = readFile(QStringLiteral(PLAN_SCHEMA), 100000).bytes;
    const QVariantMap schema = QJsonDocument::fromJson(text).object().toVariantMap();
    const QVariantMap step = schema[QStringLiteral("definitions")].toMap()[QStringLiteral("step")].toMap();
    const QVariantMap members = step[QStringLiteral("properties")].toMap();
    QStringList functions;
    for (const auto& function : VesmarClient::Functions::all()) {
        functions.append(function.identifier);
    }
    QCOMPARE(members[QStringLiteral("function")].toMap()[QStringLiteral("enum")].toStringList(), functions);
}

void TestPanelPlan::CriteriaDecide()
{
    const QString resistance = QStringLiteral("resistance");
    const PlanStep atMost{{}, VesmarClient::Settings("rpe"), {{resistance, {}, 0.3}}};
    const PlanStep between{{}, VesmarClient::Settings("rpe"), {{resistance, 0.1, 0.3}}};
    QCOMPARE(missesOf(atMost, ResultWith(0.3)), QStringList());
    QCOMPARE(missesOf(atMost, ResultWith(0.31)),
             QStringList(QStringLiteral("Resistance is 0.31 and has to be at most 0.3.")));
    QCOMPARE(missesOf(between, ResultWith(0.05)),
             QStringList(QStringLiteral("Resistance is 0.05 and has to be 0.1 to 0.3.")));
    QCOMPARE(missesOf(atMost, {}),
             QStringList(QStringLiteral("Resistance is missing and has to be at most 0.3.")));
}

QTEST_GUILESS_MAIN(TestPanelPlan)

#include "tst_panelplan.moc"
