#include <QtTest>

#include "simulator/control/controlcommand.h"
#include "simulator/control/scenarios.h"

using Simulator::ControlCommand;
using Simulator::Fault;
using Simulator::Scenario;

class TestControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("verb");
        QTest::addColumn<int>("number");
        QTest::newRow("mode") << "mode 3" << static_cast<int>(ControlCommand::Verb::Mode) << 3;
        QTest::newRow("restart") << "restart 3" << static_cast<int>(ControlCommand::Verb::Restart) << 3;
        QTest::newRow("error") << "error 15" << static_cast<int>(ControlCommand::Verb::Error) << 15;
        QTest::newRow("function") << "function 31" << static_cast<int>(ControlCommand::Verb::Function) << 31;
        QTest::newRow("blanks") << "  error \t 0 " << static_cast<int>(ControlCommand::Verb::Error) << 0;
    }

    void Numbers()
    {
        QFETCH(QString, text);
        QFETCH(int, verb);
        QFETCH(int, number);
        QString error;
        const auto command = Simulator::ParseControlCommand(text, &error);
        QVERIFY2(command.has_value(), qPrintable(error));
        QCOMPARE(static_cast<int>(command->verb), verb);
        QCOMPARE(command->number, number);
    }

    void Faults_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("delayMs");
        QTest::newRow("fault") << "fault bad-crc" << static_cast<int>(Fault::BadCrc) << 1000;
        QTest::newRow("none") << "fault none" << static_cast<int>(Fault::None) << 1000;
        QTest::newRow("slow") << "fault slow" << static_cast<int>(Fault::Slow) << 1000;
        QTest::newRow("slow by") << "fault slow 250" << static_cast<int>(Fault::Slow) << 250;
        QTest::newRow("as a scenario") << "scenario bad-crc" << static_cast<int>(Fault::BadCrc) << 1000;
        QTest::newRow("slow by as a scenario") << "scenario slow 250" << static_cast<int>(Fault::Slow) << 250;
        QTest::newRow("unplug") << "unplug" << static_cast<int>(Fault::Silent) << 1000;
        QTest::newRow("plug") << "plug" << static_cast<int>(Fault::None) << 1000;
    }

    void Faults()
    {
        QFETCH(QString, text);
        QFETCH(int, fault);
        QFETCH(int, delayMs);
        QString error;
        const auto command = Simulator::ParseControlCommand(text, &error);
        QVERIFY2(command.has_value(), qPrintable(error));
        QCOMPARE(static_cast<int>(command->verb), static_cast<int>(ControlCommand::Verb::Fault));
        QCOMPARE(static_cast<int>(command->fault), fault);
        QCOMPARE(static_cast<int>(command->delay.count()), delayMs);
    }

    void Scenarios_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("scenario");
        QTest::addColumn<int>("number");
        QTest::newRow("none") << "scenario none" << static_cast<int>(Scenario::None) << 0;
        QTest::newRow("one") << "scenario falls-back" << static_cast<int>(Scenario::FallsBack) << 0;
        QTest::newRow("blanks") << " scenario\tstart-error " << static_cast<int>(Scenario::StartError) << 0;
        QTest::newRow("update") << "scenario stays-in-update-mode"
                                << static_cast<int>(Scenario::StaysInUpdateMode) << 0;
        QTest::newRow("sector") << "scenario refuses-sector 3" << static_cast<int>(Scenario::RefusesSector)
                                << 3;
        QTest::newRow("start test") << "scenario start-test 0" << static_cast<int>(Scenario::StartTest) << 0;
        QTest::newRow("check object")
            << "scenario rcd-check 255" << static_cast<int>(Scenario::RcdCheck) << 255;
        QTest::newRow("error") << "scenario rcd-error-once 5" << static_cast<int>(Scenario::RcdErrorOnce)
                               << 5;
        QTest::newRow("last sector") << "scenario loses-sector 65535"
                                     << static_cast<int>(Scenario::LosesSector) << 65535;
    }

    void Scenarios()
    {
        QFETCH(QString, text);
        QFETCH(int, scenario);
        QFETCH(int, number);
        QString error;
        const auto command = Simulator::ParseControlCommand(text, &error);
        QVERIFY2(command.has_value(), qPrintable(error));
        QCOMPARE(static_cast<int>(command->verb), static_cast<int>(ControlCommand::Verb::Scenario));
        QCOMPARE(static_cast<int>(command->scenario), scenario);
        QCOMPARE(command->number, number);
    }

    void Nonsense_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("mentioned");
        QTest::newRow("nothing") << ""
                                 << "no command";
        QTest::newRow("unknown") << "jump"
                                 << "\"jump\"";
        QTest::newRow("no number") << "mode"
                                   << "0 to 3";
        QTest::newRow("no such mode") << "mode 4"
                                      << "0 to 3";
        QTest::newRow("no mode to restart into") << "restart 4"
                                                 << "0 to 3";
        QTest::newRow("negative") << "error -1"
                                  << "0 to 15";
        QTest::newRow("word for a number") << "function rln"
                                           << "0 to 31";
        QTest::newRow("two numbers") << "mode 1 2"
                                     << "0 to 3";
        QTest::newRow("no such fault") << "fault loud"
                                       << "bad-crc";
        QTest::newRow("no fault") << "fault"
                                  << "bad-crc";
        QTest::newRow("no such scenario") << "scenario loud"
                                          << "falls-back";
        QTest::newRow("neither such a fault") << "scenario loud"
                                              << "bad-crc";
        QTest::newRow("no scenario") << "scenario"
                                     << "falls-back";
        QTest::newRow("number behind a scenario") << "scenario falls-back 3"
                                                  << "scenario takes";
        QTest::newRow("number behind a fault's scenario") << "scenario silent 3"
                                                          << "fault slow";
        QTest::newRow("sector missing") << "scenario refuses-sector"
                                        << "from 1 to 65535";
        QTest::newRow("sector 0") << "scenario loses-sector 0"
                                  << "from 1 to 65535";
        QTest::newRow("sector too high") << "scenario loses-sector 65536"
                                         << "from 1 to 65535";
        QTest::newRow("word for a sector") << "scenario refuses-sector first"
                                           << "from 1 to 65535";
        QTest::newRow("two sectors") << "scenario refuses-sector 1 2"
                                     << "from 1 to 65535";
        QTest::newRow("number behind an update's scenario") << "scenario refuses-confirmation 3"
                                                            << "scenario takes";
        QTest::newRow("sectors are announced") << "scenario loud"
                                               << "refuses-sector N";
        QTest::newRow("start test missing") << "scenario start-test"
                                            << "start-test takes the result of the start test, from 0 to 15";
        QTest::newRow("start test too high") << "scenario start-test 16"
                                             << "from 0 to 15";
        QTest::newRow("check object too high") << "scenario rcd-check 256"
                                               << "rcd-check takes a check-object code, from 0 to 255";
        QTest::newRow("no error for an error") << "scenario rcd-error 15"
                                               << "rcd-error takes an error of the RCD test, from 0 to 14";
        QTest::newRow("no pause") << "scenario rcd-pieces 0"
                                  << "rcd-pieces takes a pause in microseconds, from 1 to 50000";
        QTest::newRow("negative code") << "scenario rcd-check-once -1"
                                       << "from 0 to 255";
        QTest::newRow("number behind an RCD test's scenario") << "scenario rcd-silent 3"
                                                              << "scenario takes";
        QTest::newRow("scenario for a fault") << "fault falls-back"
                                              << "bad-crc";
        QTest::newRow("number behind another fault") << "fault silent 3"
                                                     << "fault slow";
        QTest::newRow("word behind slow") << "fault slow down"
                                          << "fault slow";
        QTest::newRow("two numbers behind slow") << "fault slow 1 2"
                                                 << "fault slow";
        QTest::newRow("word behind unplug") << "unplug now"
                                            << "\"unplug now\"";
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
        }
    }

    void EveryScenarioIsFound()
    {
        for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
            const auto found = Simulator::FindScenario(QLatin1String(scenario.name));
            QVERIFY2(found.has_value(), scenario.name);
            QCOMPARE(static_cast<int>(found->scenario), static_cast<int>(scenario.scenario));
            QCOMPARE(found->number.has_value(), scenario.number.has_value());
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

    /// Where either is allowed, only "none" may be both.
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

    void SynopsisTellsOfTheNumber()
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
