#include <QtTest>

#include "simulator/control/controlcommand.h"
#include "simulator/control/scenarios.h"

using Simulator::ControlCommand;
using Simulator::Fault;
using Simulator::Scenario;

Q_DECLARE_METATYPE(ControlCommand)

class TestControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Commands_data()
    {
        using Verb = ControlCommand::Verb;
        QTest::addColumn<ControlCommand>("command");
        const auto numbered = [](const char* text, Verb verb, int value) {
            QTest::newRow(text) << ControlCommand{verb, value};
        };
        numbered("mode 3", Verb::Mode, 3);
        numbered("restart 3", Verb::Restart, 3);
        numbered("error 15", Verb::Error, 15);
        numbered("function 31", Verb::Function, 31);
        numbered("  error \t 0 ", Verb::Error, 0);
        const auto faulty = [](const char* text, Fault fault, int delay = 1000) {
            QTest::newRow(text) << ControlCommand{Verb::Fault, 0, fault, Scenario::None,
                                                  std::chrono::milliseconds(delay)};
        };
        faulty("fault bad-crc", Fault::BadCrc);
        faulty("fault none", Fault::None);
        faulty("fault slow", Fault::Slow);
        faulty("fault slow 250", Fault::Slow, 250);
        faulty("scenario bad-crc", Fault::BadCrc);
        faulty("scenario slow 250", Fault::Slow, 250);
        faulty("unplug", Fault::Silent);
        faulty("plug", Fault::None);
        const auto staged = [](const char* text, Scenario scenario, int value = 0) {
            QTest::newRow(text) << ControlCommand{Verb::Scenario, value, Fault::None, scenario};
        };
        staged("scenario none", Scenario::None);
        staged("scenario falls-back", Scenario::FallsBack);
        staged(" scenario\tstart-error ", Scenario::StartError);
        staged("scenario stays-in-update-mode", Scenario::StaysInUpdateMode);
        staged("scenario refuses-sector 3", Scenario::RefusesSector, 3);
        staged("scenario start-test 0", Scenario::StartTest, 0);
        staged("scenario rcd-check 255", Scenario::RcdCheck, 255);
        staged("scenario rcd-error-once 5", Scenario::RcdErrorOnce, 5);
        staged("scenario loses-sector 65535", Scenario::LosesSector, 65535);
    }

    void Commands()
    {
        QFETCH(ControlCommand, command);
        QString error;
        const auto parsed =
            Simulator::ParseControlCommand(QString::fromLatin1(QTest::currentDataTag()), &error);
        QVERIFY2(parsed.has_value(), qPrintable(error));
        QVERIFY(parsed->verb == command.verb);
        QCOMPARE(parsed->number, command.number);
        QVERIFY(parsed->fault == command.fault);
        QVERIFY(parsed->scenario == command.scenario);
        QVERIFY(parsed->delay == command.delay);
    }

    void Nonsense_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mentioned");
        const auto row = [](const char* name, const char* text, const char* mentioned) {
            QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(mentioned);
        };
        row("nothing", "", "no command");
        row("unknown", "jump", "\"jump\"");
        row("no number", "mode", "0 to 3");
        row("no such mode", "mode 4", "0 to 3");
        row("no mode to restart into", "restart 4", "0 to 3");
        row("negative", "error -1", "0 to 15");
        row("word for a number", "function rln", "0 to 31");
        row("two numbers", "mode 1 2", "0 to 3");
        row("no such fault", "fault loud", "bad-crc");
        row("no fault", "fault", "bad-crc");
        row("no such scenario", "scenario loud", "falls-back");
        row("neither such a fault", "scenario loud", "bad-crc");
        row("no scenario", "scenario", "falls-back");
        row("number behind a scenario", "scenario falls-back 3", "scenario takes");
        row("number behind a fault's scenario", "scenario silent 3", "fault slow");
        row("sector missing", "scenario refuses-sector", "from 1 to 65535");
        row("sector 0", "scenario loses-sector 0", "from 1 to 65535");
        row("sector too high", "scenario loses-sector 65536", "from 1 to 65535");
        row("word for a sector", "scenario refuses-sector first", "from 1 to 65535");
        row("two sectors", "scenario refuses-sector 1 2", "from 1 to 65535");
        row("number behind an update's scenario", "scenario refuses-confirmation 3", "scenario takes");
        row("sectors are announced", "scenario loud", "refuses-sector N");
        row("start test missing", "scenario start-test",
            "start-test takes the result of the start test, from 0 to 15");
        row("start test too high", "scenario start-test 16", "from 0 to 15");
        row("check object too high", "scenario rcd-check 256",
            "rcd-check takes a check-object code, from 0 to 255");
        row("no error for an error", "scenario rcd-error 15",
            "rcd-error takes an error of the RCD test, from 0 to 14");
        row("no pause", "scenario rcd-pieces 0", "rcd-pieces takes a pause in microseconds, from 1 to 50000");
        row("negative code", "scenario rcd-check-once -1", "from 0 to 255");
        row("number behind an RCD test's scenario", "scenario rcd-silent 3", "scenario takes");
        row("scenario for a fault", "fault falls-back", "bad-crc");
        row("number behind another fault", "fault silent 3", "fault slow");
        row("word behind slow", "fault slow down", "fault slow");
        row("two numbers behind slow", "fault slow 1 2", "fault slow");
        row("word behind unplug", "unplug now", "\"unplug now\"");
    }

    void Nonsense()
    {
        QFETCH(QString, text);
        QFETCH(QString, mentioned);
        QString error;
        QVERIFY(!Simulator::ParseControlCommand(text, &error).has_value());
        QVERIFY2(error.contains(mentioned), qPrintable(error));
        QVERIFY(!error.contains(QLatin1Char('\n')));
    }

    void EveryFaultIsFound()
    {
        for (const Simulator::NamedFault& fault : Simulator::Faults) {
            const auto found = Simulator::FindFault(QLatin1String(fault.name));
            QVERIFY2(found.has_value(), fault.name);
            QCOMPARE(static_cast<int>(*found), static_cast<int>(fault.fault));
            QString error;
            const QString text = QStringLiteral("scenario ") + QLatin1String(fault.name);
            QVERIFY2(Simulator::ParseControlCommand(text, &error).has_value(), qPrintable(error));
        }
    }

    void EveryScenarioIsFound()
    {
        for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
            const auto found = Simulator::FindScenario(QLatin1String(scenario.name));
            QVERIFY2(found.has_value(), scenario.name);
            QCOMPARE(static_cast<int>(found->scenario), static_cast<int>(scenario.scenario));
            QCOMPARE(found->number.has_value(), scenario.number.has_value());
            QString error;
            const QString text = QStringLiteral("scenario ") + QLatin1String(scenario.name) +
                                 QLatin1String(scenario.number ? " 2" : "");
            QVERIFY2(Simulator::ParseControlCommand(text, &error).has_value(), qPrintable(error));
        }
    }

    void UnknownNames()
    {
        QVERIFY(!Simulator::FindFault(QStringLiteral("Silent")).has_value());
        QVERIFY(!Simulator::FindFault(QStringLiteral("falls-back")).has_value());
        QVERIFY(!Simulator::FindFault(QString()).has_value());
        QVERIFY(!Simulator::FindScenario(QStringLiteral("Falls-Back")).has_value());
        QVERIFY(!Simulator::FindScenario(QStringLiteral("silent")).has_value());
        QVERIFY(!Simulator::FindScenario(QString()).has_value());
    }

    /// A command may name a scenario or a fault, so that only "none" may be the name of both.
    void ANameMeansOneThing()
    {
        for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
            const auto fault = Simulator::FindFault(QLatin1String(scenario.name));
            QVERIFY2(scenario.scenario == Simulator::Scenario::None || !fault.has_value(), scenario.name);
        }
    }

    void NumbersHaveALowestAndAHighest()
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

    void SynopsisNamesTheNumber()
    {
        QCOMPARE(Simulator::Synopsis(Simulator::Scenarios.at(0)), QStringLiteral("none"));
        const auto losesSector = Simulator::FindScenario(QStringLiteral("loses-sector"));
        QVERIFY(losesSector.has_value());
        QCOMPARE(Simulator::Synopsis(*losesSector), QStringLiteral("loses-sector N"));
        QCOMPARE(Simulator::Synopsis(Simulator::Faults.at(1)), QStringLiteral("silent"));
    }
};

QTEST_APPLESS_MAIN(TestControl)
#include "tst_control.moc"
