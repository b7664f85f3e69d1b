#include <QtTest>

#include <Vesmar/hvtestsettings.h>

#include <VesmarClient/settings.h>

#include "client/catalogue/driversettings.h"

using VesmarClient::CreateDriverSettings;
using VesmarClient::Functions;
using VesmarClient::Settings;
using VesmarClient::SettingsProblem;

namespace
{

/// The settings in words: "rpe time=3 method=2".
Settings Parsed(const QString& words)
{
    QStringList parts = words.split(QLatin1Char(' '));
    Settings settings(parts.takeFirst());
    for (const QString& part : parts) {
        settings.set(part.section(QLatin1Char('='), 0, 0), part.section(QLatin1Char('='), 1));
    }
    return settings;
}

QStringList Problems(const Settings& settings)
{
    QStringList problems;
    for (const SettingsProblem& problem : settings.validate()) {
        problems.append(problem.option + QStringLiteral(": ") + problem.message);
    }
    return problems;
}

void AddRow(const char* settings, const char* payload)
{
    QTest::newRow(settings) << QByteArray(payload).toLower();
}

void AddProblem(const char* settings, const char* problem)
{
    QTest::newRow(settings) << QString::fromLatin1(problem);
}

int TimeOf(const Settings& settings)
{
    const auto driver = CreateDriverSettings(settings);
    return static_cast<Vesmar::ContinuousMeasurementSettings&>(*driver).GetTime();
}

float TimeOffsetOf(const Settings& settings)
{
    const auto driver = CreateDriverSettings(settings);
    return static_cast<Vesmar::HVTestSettings&>(*driver).GetMeasurementTimeOffset();
}

} // namespace

class TestClientSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryOptionReachesTheDriver_data();
    void EveryOptionReachesTheDriver();
    void TimesReachTheDriver();
    void WrongOptionIsTold_data();
    void WrongOptionIsTold();
    void EveryProblemIsTold();
    void NumbersAreAccepted_data();
    void NumbersAreAccepted();
    void DefaultsAreTheDrivers();
    void ValueFallsBackToItsDefault();
    void NullIsNotSet();
};

void TestClientSettings::EveryOptionReachesTheDriver_data()
{
    QTest::addColumn<QByteArray>("payload");
    AddRow("rln", "01 FF 01 00 FF FF FF FF");
    AddRow("iec", "01 FF 02 00 FF FF FF FF");
    AddRow("rpe", "02 05 00 00 FF FF FF FF");
    AddRow("rpe time=unlimited", "02 FF 00 00 FF FF FF FF");
    AddRow("rpe method=2 current=3", "02 05 07 00 FF FF FF FF");
    AddRow("rpe method=3", "02 05 08 00 FF FF FF FF");
    AddRow("riso", "03 05 00 00 FF FF FF FF");
    AddRow("riso voltage=3 mode=4", "03 05 13 00 FF FF FF FF");
    AddRow("riso mode=1", "03 05 04 00 FF FF FF FF");
    AddRow("isub", "04 05 00 00 FF FF FF FF");
    AddRow("isub time=unlimited", "04 FF 00 00 FF FF FF FF");
    AddRow("ipe mode=2", "05 05 01 00 FF FF FF FF");
    AddRow("ipe configuration=2", "05 05 04 00 FF FF FF FF");
    AddRow("idelta mode=2", "06 05 01 00 FF FF FF FF");
    AddRow("idelta configuration=2", "06 05 04 00 FF FF FF FF");
    AddRow("it configuration=2", "07 05 04 00 FF FF FF FF");
    AddRow("power mode=2", "08 05 01 00 FF FF FF FF");
    AddRow("hv", "09 05 02 00 FF FF FF FF");
    AddRow("hv mode=2", "09 05 05 00 FF FF FF FF");
    AddRow("rcd mode=ub-re", "0A 00 00 00 FF FF FF FF");
    AddRow("rcd mode=ia-ta-1 re=100", "0A 00 00 40 00 00 C8 42");
    AddRow("rcd mode=ia-ta-2 quantity=2 phase=3 current=1 type=1", "0A 00 40 B9 00 00 00 00");
    AddRow("rcd mode=ia-ta-1 with-ub-re=true", "0A 00 00 40 00 00 00 00");
    AddRow("rcd-iec mode=ia-ta-1", "0B 00 00 40 00 00 00 00");
    AddRow("rcd-iec mode=ia-ta-2 quantity=1 phase=1 current=1 type=3", "0B 00 C0 95 00 00 00 00");
    AddRow("rcd-iec mode=clean-up swap-ln=true clean-up-time=2", "0B 00 80 C0 00 00 00 00");
}

void TestClientSettings::EveryOptionReachesTheDriver()
{
    QFETCH(const QByteArray, payload);
    const auto driver = CreateDriverSettings(Parsed(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(driver != nullptr);
    const std::unique_ptr<QByteArray> frame(driver->CreateMeasurementFrame());
    QCOMPARE(frame->toHex(' '), payload);
}

void TestClientSettings::TimesReachTheDriver()
{
    QCOMPARE(TimeOf(Settings("it").set("time", 86400)), 86400);
    QCOMPARE(TimeOf(Settings("power").set("time", QStringLiteral("unlimited"))), -1);
    QCOMPARE(TimeOf(Settings("hv").set("time", QStringLiteral("7"))), 7);
    QCOMPARE(TimeOffsetOf(Settings("hv").set("time-offset", 12.25)), 12.25F);
}

void TestClientSettings::WrongOptionIsTold_data()
{
    QTest::addColumn<QString>("problem");
    AddProblem("abc",
               ": There is no function \"abc\"; it is one of rln, iec, rpe, riso, isub, ipe, idelta, it, "
               "power, hv, rcd, rcd-iec.");
    AddProblem("monitoring", ": There is no function \"monitoring\"; it is one of rln, iec, rpe, riso, isub, "
                             "ipe, idelta, it, power, hv, rcd, rcd-iec.");
    AddProblem("rln time=3", "time: rln has no options.");
    AddProblem("rpe mode=1", "mode: rpe has no such option; it has time, current, method.");
    AddProblem("rpe method=4", "method: It is one of 0, 1, 2, 3.");
    AddProblem("riso mode=3", "mode: It is one of 1, 2, 4.");
    for (const char* time : {"rpe time=0", "rpe time=86401", "rpe time=3.5", "rpe time=", "rpe time=true"}) {
        AddProblem(time, "time: It is a whole number from 1 to 86400 s, or \"unlimited\".");
    }
    for (const char* offset : {"hv time-offset=-0.1", "hv time-offset=600.1", "hv time-offset=nan",
                               "hv time-offset=x", "hv time-offset=unlimited"}) {
        AddProblem(offset, "time-offset: It is a number from 0 to 600 s.");
    }
    AddProblem("rcd", "mode: It has to be given. It is one of ub-re, ia-ta-1, ia-ta-2.");
    AddProblem("rcd mode=clean-up", "mode: It is one of ub-re, ia-ta-1, ia-ta-2.");
    AddProblem("rcd mode=ia-ta-1 re=1000001", "re: It is a number from 0 to 1000000.");
    AddProblem("rcd mode=ia-ta-1 with-ub-re=maybe", "with-ub-re: It is true or false.");
    AddProblem("rcd mode=ub-re re=1", "re: The test ub-re measures Re itself; leave this option out.");
    AddProblem("rcd mode=ub-re with-ub-re=true",
               "with-ub-re: The test ub-re measures Re itself; leave this option out.");
    AddProblem("rcd mode=ia-ta-1 re=1 with-ub-re=true",
               "re: Not together with with-ub-re, which measures Re.");
    AddProblem("rcd-iec mode=clean-up clean-up-time=0", "clean-up-time: It is a number from 0.1 to 86400 s.");
}

void TestClientSettings::WrongOptionIsTold()
{
    QFETCH(const QString, problem);
    const Settings settings = Parsed(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(Problems(settings), QStringList(problem));
    QVERIFY(!settings.isValid());
    QVERIFY(CreateDriverSettings(settings) == nullptr);
}

void TestClientSettings::EveryProblemIsTold()
{
    QCOMPARE(Problems(Parsed(QStringLiteral("rcd volts=3 phase=9"))).size(), 3);
}

void TestClientSettings::NumbersAreAccepted_data()
{
    QTest::addColumn<Settings>("settings");
    QTest::newRow("whole number") << Settings("rpe").set("time", 3).set("method", 2);
    QTest::newRow("whole number as QML has it") << Settings("rpe").set("time", 3.0).set("method", 2.0);
    QTest::newRow("text") << Settings("rpe").set("time", QStringLiteral("3")).set("method", QByteArray("2"));
    QTest::newRow("fraction") << Settings("hv").set("time-offset", 0.5F);
    QTest::newRow("large") << Settings("rcd").set("mode", QStringLiteral("ia-ta-1")).set("re", 1e6);
    QTest::newRow("truth") << Settings("rcd-iec").set("mode", QStringLiteral("ia-ta-1")).set("swap-ln", true);
    QTest::newRow("flag that is off")
        << Settings("rcd").set("mode", QStringLiteral("ub-re")).set("with-ub-re", false);
}

void TestClientSettings::NumbersAreAccepted()
{
    QFETCH(const Settings, settings);
    QCOMPARE(Problems(settings), QStringList());
}

void TestClientSettings::DefaultsAreTheDrivers()
{
    for (const VesmarClient::FunctionInfo& function : Functions::all()) {
        Settings plain(function.function);
        if (!function.option(QStringLiteral("mode")).mayStayUnset) {
            plain.set("mode", QStringLiteral("ia-ta-1"));
        }
        Settings explicitly = plain;
        for (const VesmarClient::Option& option : function.options) {
            if (option.defaultValue.isValid() && option.kind != VesmarClient::OptionKind::Flag) {
                explicitly.set(option.identifier, option.defaultValue);
            }
        }
        QCOMPARE(Problems(explicitly), QStringList());
        const std::unique_ptr<QByteArray> frame(CreateDriverSettings(plain)->CreateMeasurementFrame());
        const std::unique_ptr<QByteArray> same(CreateDriverSettings(explicitly)->CreateMeasurementFrame());
        QCOMPARE(*same, *frame);
    }
    const Vesmar::HVTestSettings driver;
    QCOMPARE(Settings("hv").value(QStringLiteral("time")).toInt(), driver.GetTime());
    QCOMPARE(Settings("hv").value(QStringLiteral("time-offset")).toFloat(),
             driver.GetMeasurementTimeOffset());
}

void TestClientSettings::ValueFallsBackToItsDefault()
{
    const Settings settings = Settings("rpe").set("method", 2);
    QCOMPARE(settings.value(QStringLiteral("method")), QVariant(2));
    QCOMPARE(settings.value(QStringLiteral("time")), QVariant(5));
    QVERIFY(!Settings("ipe").value(QStringLiteral("mode")).isValid());
    QVERIFY(!settings.value(QStringLiteral("volts")).isValid());
}

void TestClientSettings::NullIsNotSet()
{
    const Settings settings(QStringLiteral("rpe"), {{QStringLiteral("time"), QVariant::fromValue(nullptr)},
                                                    {QStringLiteral("method"), QVariant()}});
    QVERIFY(settings.options().isEmpty());
    QVERIFY(settings.isValid());
}

QTEST_GUILESS_MAIN(TestClientSettings)
#include "tst_clientsettings.moc"
