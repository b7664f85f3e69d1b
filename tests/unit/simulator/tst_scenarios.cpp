#include <QtTest>

#include "simulator/control/scenarios.h"

class TestScenarios : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryFaultIsFound();
    void EveryScenarioIsFound();
    void UnknownNames();
    void ANameMeansOneThing();
    void NumbersHaveALowestAndAHighest();
    void SynopsisTellsOfTheNumber();
};

void TestScenarios::EveryFaultIsFound()
{
    for (const Simulator::NamedFault& fault : Simulator::Faults) {
        const auto found = Simulator::FindFault(QLatin1String(fault.name));
        QVERIFY2(found.has_value(), fault.name);
        QCOMPARE(static_cast<int>(*found), static_cast<int>(fault.fault));
    }
}

void TestScenarios::EveryScenarioIsFound()
{
    for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
        const auto found = Simulator::FindScenario(QLatin1String(scenario.name));
        QVERIFY2(found.has_value(), scenario.name);
        QCOMPARE(static_cast<int>(found->scenario), static_cast<int>(scenario.scenario));
        QCOMPARE(found->number.has_value(), scenario.number.has_value());
    }
}

void TestScenarios::UnknownNames()
{
    QVERIFY(!Simulator::FindFault(QStringLiteral("Silent")).has_value());
    QVERIFY(!Simulator::FindFault(QStringLiteral("falls-back")).has_value());
    QVERIFY(!Simulator::FindFault(QString()).has_value());
    QVERIFY(!Simulator::FindScenario(QStringLiteral("Falls-Back")).has_value());
    QVERIFY(!Simulator::FindScenario(QStringLiteral("silent")).has_value());
    QVERIFY(!Simulator::FindScenario(QString()).has_value());
}

/// Where either is allowed, only "none" may be both.
void TestScenarios::ANameMeansOneThing()
{
    for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
        const auto fault = Simulator::FindFault(QLatin1String(scenario.name));
        QVERIFY2(scenario.scenario == Simulator::Scenario::None || !fault.has_value(), scenario.name);
    }
}

void TestScenarios::NumbersHaveALowestAndAHighest()
{
    const auto limits = [](const char* name) {
        const auto number = Simulator::FindScenario(QLatin1String(name))->number;
        return number ? qMakePair(number->lowest, number->highest) : qMakePair(0, 0);
    };
    QCOMPARE(limits("falls-back"), qMakePair(0, 0));
    QCOMPARE(limits("start-test"), qMakePair(0, 15));
    QCOMPARE(limits("rcd-check"), qMakePair(0, 255));
    QCOMPARE(limits("rcd-check-once"), qMakePair(0, 255));
    QCOMPARE(limits("rcd-error"), qMakePair(0, 14));
    QCOMPARE(limits("rcd-error-once"), qMakePair(0, 14));
    QCOMPARE(limits("rcd-pieces"), qMakePair(1, 50000));
    QCOMPARE(limits("refuses-sector"), qMakePair(1, 65535));
    QCOMPARE(limits("loses-sector"), qMakePair(1, 65535));
}

void TestScenarios::SynopsisTellsOfTheNumber()
{
    QCOMPARE(Simulator::Synopsis(Simulator::Scenarios.at(0)), QStringLiteral("none"));
    const auto losesSector = Simulator::FindScenario(QStringLiteral("loses-sector"));
    QVERIFY(losesSector.has_value());
    QCOMPARE(Simulator::Synopsis(*losesSector), QStringLiteral("loses-sector N"));
    QCOMPARE(Simulator::Synopsis(Simulator::Faults.at(1)), QStringLiteral("silent"));
}

QTEST_APPLESS_MAIN(TestScenarios)
#include "tst_scenarios.moc"
