#include "cli/verbs/measureverb.h"

#include <QtTest>

#include <memory>

#include <Vesmar/hvtestsettings.h>

#include "unit/cli/program/parsedline.h"

namespace
{

/// A command line `vesmar measure ...` that has been parsed.
struct Measure : ParsedLine {
    explicit Measure(const QString& arguments)
        : ParsedLine(QStringLiteral("measure ") + arguments), measure(dynamic_cast<Cli::MeasureVerb*>(verb))
    {
    }
    const Cli::MeasureFunction& Function() const { return *measure->Functions().Chosen(); }

    Cli::MeasureVerb* measure;
};

constexpr char Usage[] = "Usage: vesmar measure FUNCTION [OPTIONS]\n"
                         "       vesmar measure FUNCTION --help\n";

} // namespace

class TestCliMeasureFunctions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Payloads_data();
    void Payloads();
    void Refused_data();
    void Refused();
    void TimeOffset();
    void ReMeasuredBefore();
    void CommonOptions();
    void Help();
};

void TestCliMeasureFunctions::Payloads_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<int>("seconds"); // -1: not known
    const auto row = [](const char* arguments, const char* payload, int seconds) {
        QTest::newRow(arguments) << QByteArray::fromHex(payload) << seconds;
    };
    row("rln", "01FF0100FFFFFFFF", -1);
    row("iec", "01FF0200FFFFFFFF", -1);
    row("rpe", "02050000FFFFFFFF", 5);
    row("rpe --time 86400", "02050000FFFFFFFF", 86400);
    row("rpe --time unlimited", "02FF0000FFFFFFFF", -1);
    row("rpe --method 1 --current 2", "02050400FFFFFFFF", 5);
    row("rpe --method 1 --current 3", "02050600FFFFFFFF", 5);
    row("rpe --method 2 --current 0", "02050100FFFFFFFF", 5);
    row("rpe --method 3 --current 1", "02050800FFFFFFFF", 5);
    row("rpe --method 0 --current 3", "02050000FFFFFFFF", 5);
    row("riso", "03050000FFFFFFFF", 5);
    row("riso --mode 1 --voltage 0", "03050400FFFFFFFF", 5);
    row("riso --mode 2 --voltage 1", "03050900FFFFFFFF", 5);
    row("riso --mode 4 --voltage 2", "03051200FFFFFFFF", 5);
    row("riso --voltage 3", "03050300FFFFFFFF", 5);
    row("isub --time 1", "04050000FFFFFFFF", 1);
    row("ipe --mode 1 --configuration 1", "05050000FFFFFFFF", 5);
    row("ipe --mode 2 --configuration 2", "05050500FFFFFFFF", 5);
    row("idelta --mode 2", "06050100FFFFFFFF", 5);
    row("idelta --mode 1 --configuration 2", "06050400FFFFFFFF", 5);
    row("idelta --configuration 1", "06050000FFFFFFFF", 5);
    row("it --configuration 1", "07050000FFFFFFFF", 5);
    row("it --configuration 2", "07050400FFFFFFFF", 5);
    row("power --mode 1", "08050000FFFFFFFF", 5);
    row("power --mode 2", "08050100FFFFFFFF", 5);
    row("hv --mode 1", "09050200FFFFFFFF", 5);
    row("hv --mode 2 --time 60", "09050500FFFFFFFF", 60);
    row("rcd --mode ub-re", "0A000000FFFFFFFF", -1);
    row("rcd --mode ub-re --quantity 3 --phase 2 --current 1 --type 3", "0A00C02DFFFFFFFF", -1);
    row("rcd --mode ia-ta-1", "0A00004000000000", -1);
    row("rcd --mode ia-ta-1 --quantity 2 --phase 0 --current 3 --type 1 --re 100", "0A00404B0000C842", -1);
    row("rcd --mode ia-ta-2 --phase 3 --re 0.5", "0A0000B00000003F", -1);
    row("rcd-iec --mode ia-ta-1", "0B00004000000000", -1);
    row("rcd-iec --mode ia-ta-2 --quantity 1 --phase 1 --current 2 --type 1", "0B00409600000000", -1);
    row("rcd-iec --mode ia-ta-2 --swap-ln", "0B00808000000000", -1);
    row("rcd-iec --mode clean-up --type 1", "0B0040C000000000", -1);
}

void TestCliMeasureFunctions::Payloads()
{
    QFETCH(QByteArray, payload);
    QFETCH(int, seconds);
    const Measure line(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY2(line.verb != nullptr, line.Errors().constData());
    const Cli::MeasureFunction& function = line.Function();
    const std::unique_ptr<QByteArray> frame(function.settings->CreateMeasurementFrame());
    QCOMPARE(*frame, payload);
    QCOMPARE(function.Seconds().value_or(-1), seconds);
}

void TestCliMeasureFunctions::Refused_data()
{
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const QByteArray& arguments, const QByteArray& complaint) {
        QTest::newRow(arguments.constData()) << complaint;
    };
    const QByteArray names =
        "it is one of rln, iec, rpe, riso, isub, ipe, idelta, it, power, hv, rcd, rcd-iec";
    row("", "measure: no function given; " + names);
    row("rcbo", "measure: no function: \"rcbo\"; " + names);
    row("rcd", "--mode: none given; it is one of ub-re, ia-ta-1, ia-ta-2");
    row("rcd-iec --swap-ln", "--mode: none given; it is one of ia-ta-1, ia-ta-2, clean-up");
    row("rcd --mode clean-up", "--mode: \"clean-up\" is not one of ub-re, ia-ta-1, ia-ta-2");
    row("rcd-iec --mode ub-re", "--mode: \"ub-re\" is not one of ia-ta-1, ia-ta-2, clean-up");
    row("rcd --mode 1", "--mode: \"1\" is not one of ub-re, ia-ta-1, ia-ta-2");
    row("rcd --mode ub-re --re 5", "--re: ub-re measures Re itself; leave this option out");
    row("rcd --mode ub-re --with-ub-re", "--with-ub-re: ub-re measures Re itself; leave this option out");
    row("rcd --mode ia-ta-1 --with-ub-re --re 5",
        "--re: not together with --with-ub-re, which measures Re; give one");
    for (const char* value : {"-1", "1000001", "nan", "inf", "3.4028235e38", "low"}) {
        row("rcd --mode ia-ta-2 --re " + QByteArray(value),
            "--re: \"" + QByteArray(value) + "\" is not a number from 0 to 1000000");
    }
    row("rcd --mode ub-re --csv x",
        "--csv: rcd gives a single result; only continuous functions have readings to write to a file");
    row("rcd-iec --mode ia-ta-1 --with-ub-re", "The following argument was not expected: --with-ub-re");
    row("rcd --mode ub-re --swap-ln", "The following argument was not expected: --swap-ln");
    row("rln --csv x",
        "--csv: rln gives a single result; only continuous functions have readings to write to "
        "a file");
    row("iec --csv x",
        "--csv: iec gives a single result; only continuous functions have readings to write to "
        "a file");
    row("rln --bad", "The following argument was not expected: --bad");
    const auto numbers = [&row](const char* option, const char* allowed, const QList<QByteArray>& refused) {
        for (const QByteArray& value : refused) {
            const QByteArray name = QByteArray(option).split(' ').at(1);
            row(QByteArray(option) + ' ' + value, name + ": \"" + value + "\" is not one of " + allowed);
        }
    };
    numbers("rpe --current", "0, 1, 2, 3", {"4", "-1", "x", "1.0"});
    numbers("rpe --method", "0, 1, 2, 3", {"4", "-1"});
    numbers("riso --voltage", "0, 1, 2, 3", {"4", "-1"});
    numbers("riso --mode", "1, 2, 4", {"0", "3", "5"});
    for (const char* setting : {"quantity", "phase", "current", "type"}) {
        numbers(qPrintable(QStringLiteral("rcd --%1").arg(QLatin1String(setting))), "0, 1, 2, 3",
                {"4", "-1"});
        numbers(qPrintable(QStringLiteral("rcd-iec --%1").arg(QLatin1String(setting))), "0, 1, 2, 3", {"4"});
    }
    for (const char* option : {"ipe --mode", "ipe --configuration", "idelta --mode", "idelta --configuration",
                               "it --configuration", "power --mode", "hv --mode"}) {
        numbers(option, "1, 2", {"0", "3"});
    }
    for (const char* value : {"0", "-1", "86401", "1.5", "nan", "forever"}) {
        for (const char* function : {"rpe", "riso", "isub", "ipe", "idelta", "it", "power", "hv"}) {
            row(QByteArray(function) + " --time " + value,
                "--time: \"" + QByteArray(value) +
                    "\" is not a whole number of seconds from 1 to 86400, nor unlimited");
        }
    }
    for (const char* value : {"-0.1", "600.1", "nan", "long"}) {
        row("hv --time-offset " + QByteArray(value),
            "--time-offset: \"" + QByteArray(value) + "\" is not a number of seconds from 0 to 600");
    }
}

void TestCliMeasureFunctions::Refused()
{
    QFETCH(QByteArray, complaint);
    const Measure line(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(line.verb == nullptr);
    QCOMPARE(line.status, 1);
    QCOMPARE(line.Errors(), "vesmar: " + complaint + '\n' + Usage);
}

void TestCliMeasureFunctions::TimeOffset()
{
    const Measure usual(QStringLiteral("hv"));
    QCOMPARE(usual.Function().secondsBefore, 3.5F);
    const Measure given(QStringLiteral("hv --time-offset 0.5"));
    const Cli::MeasureFunction& function = given.Function();
    QCOMPARE(function.secondsBefore, 0.5F);
    QCOMPARE(dynamic_cast<Vesmar::HVTestSettings&>(*function.settings).GetMeasurementTimeOffset(), 0.5F);
}

void TestCliMeasureFunctions::ReMeasuredBefore()
{
    const Measure plain(QStringLiteral("rcd --mode ia-ta-1"));
    QVERIFY(!plain.Function().isReMeasured);
    const Measure withUbRe(QStringLiteral("rcd --mode ia-ta-1 --with-ub-re"));
    QVERIFY(withUbRe.Function().isReMeasured);
}

void TestCliMeasureFunctions::CommonOptions()
{
    const Measure line(QStringLiteral(
        "it --json --timeout 2 --prepare-timeout 3 --stop-timeout 4 --clean-up-time 6 --csv some/file"));
    QVERIFY2(line.verb != nullptr, line.Errors().constData());
    QVERIFY(line.verb->Options().isJson);
    QVERIFY(line.verb->Options().timeout == std::chrono::seconds(2));
    QVERIFY(line.measure->Limits().prepare == std::chrono::seconds(3));
    QVERIFY(line.measure->Limits().stop == std::chrono::seconds(4));
    QVERIFY(line.measure->Limits().cleanUp == std::chrono::seconds(6));
    QCOMPARE(line.measure->Functions().CsvFile(), QStringLiteral("some/file"));
}

void TestCliMeasureFunctions::Help()
{
    const Measure measure(QStringLiteral("--help"));
    QCOMPARE(measure.status, 0);
    QVERIFY(measure.Output().contains(Usage));
    QVERIFY(measure.Output().contains("switch it off at the instrument"));
    const Measure hv(QStringLiteral("hv --help"));
    QCOMPARE(hv.status, 0);
    QVERIFY(hv.Output().contains("Usage: vesmar measure hv [OPTIONS]\n"));
    QVERIFY(hv.Output().contains("--time-offset"));
}

QTEST_GUILESS_MAIN(TestCliMeasureFunctions)
#include "tst_climeasurefunctions.moc"
