#include "cli/verbs/measureverb.h"

#include <QtTest>

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
    void OptionsBecomeSettings_data();
    void OptionsBecomeSettings();
    void HelpIsThatOfTheCatalogue();
    void Refused_data();
    void Refused();
    void CommonOptions();
    void Help();
};

void TestCliMeasureFunctions::OptionsBecomeSettings_data()
{
    QTest::addColumn<QVariantMap>("options");
    QTest::newRow("rln") << QVariantMap();
    QTest::newRow("rpe --time 86400 --method 1 --current 2")
        << QVariantMap{{QStringLiteral("time"), QStringLiteral("86400")},
                       {QStringLiteral("method"), QStringLiteral("1")},
                       {QStringLiteral("current"), QStringLiteral("2")}};
    QTest::newRow("it --time 2min") << QVariantMap{{QStringLiteral("time"), QStringLiteral("120")}};
    QTest::newRow("hv --time unlimited --time-offset 0.5")
        << QVariantMap{{QStringLiteral("time"), QStringLiteral("unlimited")},
                       {QStringLiteral("time-offset"), QStringLiteral("0.5")}};
    QTest::newRow("rcd --mode ia-ta-1 --with-ub-re") << QVariantMap{
        {QStringLiteral("mode"), QStringLiteral("ia-ta-1")}, {QStringLiteral("with-ub-re"), true}};
    QTest::newRow("rcd-iec --swap-ln --mode clean-up --clean-up-time 6")
        << QVariantMap{{QStringLiteral("mode"), QStringLiteral("clean-up")},
                       {QStringLiteral("swap-ln"), true},
                       {QStringLiteral("clean-up-time"), QStringLiteral("6")}};
}

void TestCliMeasureFunctions::OptionsBecomeSettings()
{
    QFETCH(QVariantMap, options);
    const QString arguments = QString::fromLatin1(QTest::currentDataTag());
    const Measure line(arguments);
    QVERIFY2(line.verb != nullptr, line.Errors().constData());
    QCOMPARE(line.Function().settings,
             VesmarClient::Settings(arguments.section(QLatin1Char(' '), 0, 0), options));
}

void TestCliMeasureFunctions::HelpIsThatOfTheCatalogue()
{
    for (const VesmarClient::FunctionInfo& function : VesmarClient::Functions::all()) {
        const QByteArray help = Measure(function.identifier + QStringLiteral(" --help")).Output();
        QVERIFY2(help.startsWith(function.title.toUtf8()), help.constData());
        QVERIFY2(help.contains("Usage: vesmar measure " + function.identifier.toUtf8() + " [OPTIONS]\n"),
                 help.constData());
        QCOMPARE(help.contains("; a dangerous voltage is present while it runs"), function.isDangerous);
        QCOMPARE(help.contains("\n  --csv FILE"), Cli::IsContinuous(function));
        for (const VesmarClient::Option& option : function.options) {
            QVERIFY2(help.contains("\n  --" + option.identifier.toUtf8() + ' '), help.constData());
        }
    }
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
    row("rcd", "--mode: It has to be given. It is one of ub-re, ia-ta-1, ia-ta-2.");
    row("rcd-iec --swap-ln", "--mode: It has to be given. It is one of ia-ta-1, ia-ta-2, clean-up.");
    row("rcd --mode clean-up", "--mode: \"clean-up\" is not allowed. It is one of ub-re, ia-ta-1, ia-ta-2.");
    row("rcd-iec --mode ub-re", "--mode: \"ub-re\" is not allowed. It is one of ia-ta-1, ia-ta-2, clean-up.");
    row("rcd --mode 1", "--mode: \"1\" is not allowed. It is one of ub-re, ia-ta-1, ia-ta-2.");
    row("rcd --mode ub-re --re 5",
        "--re: \"5\" is not allowed. The test ub-re measures Re itself; leave this option out.");
    row("rcd --mode ub-re --with-ub-re",
        "--with-ub-re: The test ub-re measures Re itself; leave this option out.");
    row("rcd --mode ia-ta-1 --with-ub-re --re 5",
        "--re: \"5\" is not allowed. Not together with with-ub-re, which measures Re.");
    row("rcd --mode ia-ta-2 --re -1", "--re: \"-1\" is not allowed. It is a number from 0 to 1000000.");
    row("rcd --mode ub-re --csv x",
        "--csv: rcd gives a single result; only continuous functions have readings to write to a file");
    row("rcd-iec --mode ia-ta-1 --with-ub-re", "there is no option --with-ub-re; --help lists them");
    row("rcd --mode ub-re --swap-ln", "there is no option --swap-ln; --help lists them");
    row("rln --csv x",
        "--csv: rln gives a single result; only continuous functions have readings to write to "
        "a file");
    row("iec --csv x",
        "--csv: iec gives a single result; only continuous functions have readings to write to "
        "a file");
    row("it --time 1x",
        "--time: \"1x\" is not allowed. It is a whole number from 1 to 86400 s, or \"unlimited\".");
    row("it --json --csv -",
        "--csv: the standard output is either JSON or CSV; name a file, or leave --json out");
    row("rln --bad", "there is no option --bad; --help lists them");
    row("rpe --current 4", "--current: \"4\" is not allowed. It is one of 0, 1, 2, 3.");
    row("riso --mode 3", "--mode: \"3\" is not allowed. It is one of 1, 2, 4.");
    row("it --time 1.5",
        "--time: \"1.5\" is not allowed. It is a whole number from 1 to 86400 s, or \"unlimited\".");
    row("hv --time-offset 600.1", "--time-offset: \"600.1\" is not allowed. It is a number from 0 to 600 s.");
}

void TestCliMeasureFunctions::Refused()
{
    QFETCH(QByteArray, complaint);
    const Measure line(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(line.verb == nullptr);
    QCOMPARE(line.status, 1);
    QCOMPARE(line.Errors(), "vesmar: " + complaint + '\n' + Usage);
}

void TestCliMeasureFunctions::CommonOptions()
{
    const Measure line(
        QStringLiteral("it --json --timeout 2 --prepare-timeout 3 --stop-timeout 4 --csv some/file"));
    QVERIFY2(line.verb != nullptr, line.Errors().constData());
    QVERIFY(line.verb->Options().isJson);
    QVERIFY(line.verb->Options().timeout == std::chrono::seconds(2));
    QCOMPARE(line.measure->Timeouts().prepare, 3000);
    QCOMPARE(line.measure->Timeouts().stop, 4000);
    QCOMPARE(line.measure->Functions().CsvFile(), QStringLiteral("some/file"));
}

void TestCliMeasureFunctions::Help()
{
    const Measure measure(QStringLiteral("--help"));
    QCOMPARE(measure.status, 0);
    QVERIFY(measure.Output().contains(Usage));
    QVERIFY(measure.Output().contains("switch it off at the instrument"));
    const QByteArray hv = Measure(QStringLiteral("hv --help")).Output();
    QVERIFY(
        hv.contains("  --time TIME|unlimited       How long to measure (default 5), or \"unlimited\": until "
                    "Ctrl-C\n"));
    QVERIFY(hv.contains("  --mode 1|2                  The instrument's number (default 1)\n"));
    const QByteArray rcd = Measure(QStringLiteral("rcd --help")).Output();
    QVERIFY2(
        rcd.contains("  --re NUMBER                 For ia-ta-1 and ia-ta-2: the Re that ub-re has given, in "
                     "the instrument's own unit (default 0)\n"),
        rcd.constData());
}

QTEST_GUILESS_MAIN(TestCliMeasureFunctions)
#include "tst_climeasurefunctions.moc"
