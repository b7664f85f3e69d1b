#include <QTranslator>
#include <QtTest>

#include <VesmarClient/functions.h>

#include "client/words/readings.h"

using namespace VesmarClient;

namespace
{

/// "voltage 0|1|2|3 =0", "time 1..86400|unlimited s =5", "mode! 1|2": what can be set of a function.
QString Described(const Option& option)
{
    QStringList allowed;
    for (const Choice& choice : option.choices) {
        allowed.append(choice.identifier);
    }
    if (option.maximum > 0) {
        allowed.append(QStringLiteral("%1..%2").arg(option.minimum).arg(option.maximum, 0, 'g', 10));
    }
    if (!option.special.isEmpty()) {
        allowed.append(option.special);
    }
    const QString unit = option.unit.isEmpty() ? QString() : QLatin1Char(' ') + option.unit;
    const QString value =
        option.defaultValue.isValid() ? QStringLiteral(" =") + option.defaultValue.toString() : QString();
    return option.identifier + QLatin1String(option.mayStayUnset ? " " : "! ") +
           allowed.join(QLatin1Char('|')) + unit + value;
}

template <typename Described>
QString Listed(const QVector<Described>& all)
{
    QStringList identifiers;
    for (const Described& each : all) {
        identifiers.append(each.identifier);
    }
    return identifiers.join(QStringLiteral(", "));
}

void AddFunction(const char* identifier, FunctionKind kind, const char* title, const char* readings,
                 const QStringList& options)
{
    QTest::newRow(identifier) << kind << QString::fromLatin1(title) << QString::fromLatin1(readings)
                              << options;
}

const QString Time = QStringLiteral("time 1..86400|unlimited s =5");
const QString TwoModes = QStringLiteral("mode 1|2");
const QString TwoConfigurations = QStringLiteral("configuration 1|2");

/// Writes every text in capitals.
class Shouting : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char* /*comment*/,
                      int /*count*/) const override
    {
        return qstrcmp(context, "VesmarClient") == 0 ? QString::fromLatin1(text).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestClientFunctions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ThereAreTwelveFunctions();
    void FunctionsAreDescribed_data();
    void FunctionsAreDescribed();
    void MainsReadingsAreNoFunctionToMeasure();
    void OnlyTheHighVoltageTestIsDangerous();
    void NothingElseIsFound();
    void EveryTextIsThere();
    void TextsAreTranslated();
};

void TestClientFunctions::ThereAreTwelveFunctions()
{
    QCOMPARE(Listed(Functions::all()),
             QStringLiteral("rln, iec, rpe, riso, isub, ipe, idelta, it, power, hv, rcd, rcd-iec"));
}

void TestClientFunctions::FunctionsAreDescribed_data()
{
    QTest::addColumn<FunctionKind>("kind");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("readings");
    QTest::addColumn<QStringList>("options");
    const QStringList continuous{Time};
    const QStringList rcd{QStringLiteral("quantity 0|1|2|3"), QStringLiteral("phase 0|1|2|3"),
                          QStringLiteral("current 0|1|2|3"), QStringLiteral("type 0|1|2|3")};
    AddFunction("rln", FunctionKind::Single, "RLN",
                "resistance, voltage, current, ISUB voltage, ISUB current", {});
    AddFunction("iec", FunctionKind::Single, "IEC", "result, voltage, ULN, step, delay", {});
    AddFunction(
        "rpe", FunctionKind::Continuous, "Protective-earth resistance", "resistance, voltage, current",
        continuous + QStringList{QStringLiteral("current 0|1|2|3 =0"), QStringLiteral("method 0|1|2|3 =0")});
    AddFunction("riso", FunctionKind::Continuous, "Insulation resistance", "resistance, voltage, current",
                continuous + QStringList{QStringLiteral("voltage 0|1|2|3 =0"), QStringLiteral("mode 1|2|4")});
    AddFunction("isub", FunctionKind::Continuous, "Substitute leakage current", "current, voltage",
                continuous);
    AddFunction("ipe", FunctionKind::Continuous, "Protective-conductor current", "current, voltage",
                {Time, TwoModes, TwoConfigurations});
    AddFunction("idelta", FunctionKind::Continuous, "Differential current", "current, voltage",
                {Time, TwoModes, TwoConfigurations});
    AddFunction("it", FunctionKind::Continuous, "Touch current", "current", {Time, TwoConfigurations});
    AddFunction("power", FunctionKind::Continuous, "Power",
                "energy, power, current, voltage, power factor, apparent power", {Time, TwoModes});
    AddFunction("hv", FunctionKind::HighVoltage, "High-voltage test",
                "maximum voltage, voltage, current, ULN, primary voltage, PWM",
                {Time, QStringLiteral("mode 1|2 =1"), QStringLiteral("time-offset 0..600 s =3.5")});
    AddFunction("rcd", FunctionKind::Rcd, "Residual-current device: Ub/Re, or Ia/Ta", "Re, Ia, Ta",
                QStringList{QStringLiteral("mode! ub-re|ia-ta-1|ia-ta-2")} + rcd +
                    QStringList{QStringLiteral("re 0..1000000 =0"), QStringLiteral("with-ub-re  =false")});
    AddFunction(
        "rcd-iec", FunctionKind::Rcd, "Residual-current device, IEC variant", "Ia, Ta",
        QStringList{QStringLiteral("mode! ia-ta-1|ia-ta-2|clean-up")} + rcd +
            QStringList{QStringLiteral("swap-ln  =false"), QStringLiteral("clean-up-time 0.1..86400 s =5")});
}

void TestClientFunctions::FunctionsAreDescribed()
{
    QFETCH(const FunctionKind, kind);
    QFETCH(const QString, title);
    QFETCH(const QString, readings);
    QFETCH(const QStringList, options);
    const FunctionInfo function = Functions::find(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(function.isValid());
    QCOMPARE(function.kind, kind);
    QCOMPARE(function.title, title);
    QCOMPARE(Listed(function.readings), readings);
    QStringList described;
    for (const Option& option : function.options) {
        described.append(Described(option));
    }
    QCOMPARE(described, options);
    QCOMPARE(Functions::find(function.function), function);
}

void TestClientFunctions::MainsReadingsAreNoFunctionToMeasure()
{
    const FunctionInfo mains = Functions::find(Function::Monitoring);
    QVERIFY(mains.isValid());
    QCOMPARE(Listed(mains.readings), QStringLiteral("ULN, UNPE, frequency"));
    QVERIFY(mains.options.isEmpty());
    QVERIFY(!Functions::find(mains.identifier).isValid());
}

void TestClientFunctions::OnlyTheHighVoltageTestIsDangerous()
{
    for (const FunctionInfo& function : Functions::all()) {
        QCOMPARE(function.isDangerous, function.function == Function::HVTest);
    }
}

void TestClientFunctions::NothingElseIsFound()
{
    QVERIFY(!Functions::find(QStringLiteral("RPE")).isValid());
    QVERIFY(!Functions::find(QString()).isValid());
    QVERIFY(!Functions::find(Function::None).isValid());
    QVERIFY(!Functions::find(static_cast<Function>(31)).isValid());
    QVERIFY(Functions::find(Function::RPE).option(QStringLiteral("volts")).identifier.isEmpty());
}

void TestClientFunctions::EveryTextIsThere()
{
    for (const FunctionInfo& function :
         Functions::all() + QVector<FunctionInfo>{Functions::find(Function::Monitoring)}) {
        QVERIFY(function.title.at(0).isUpper());
        for (const Option& option : function.options) {
            QVERIFY(option.title.at(0).isUpper() && option.description.at(0).isUpper());
            QVERIFY(std::none_of(option.choices.cbegin(), option.choices.cend(),
                                 [](const Choice& choice) { return choice.title.isEmpty(); }));
        }
        for (const ReadingInfo& reading : function.readings) {
            QVERIFY(reading.title.at(0).isUpper());
            QCOMPARE(reading.unit, QString());
            QCOMPARE(reading.decimals, -1);
        }
    }
}

void TestClientFunctions::TextsAreTranslated()
{
    Shouting shouting;
    QVERIFY(QCoreApplication::installTranslator(&shouting));
    const FunctionInfo function = Functions::find(Function::RCD);
    const Failure failure = Failure::ofError(Error::NoResponse);
    QCoreApplication::removeTranslator(&shouting);
    QCOMPARE(function.title, QStringLiteral("RESIDUAL-CURRENT DEVICE: UB/RE, OR IA/TA"));
    QCOMPARE(function.options.first().choices.first().title, QStringLiteral("UB/RE"));
    QCOMPARE(function.options.first().description, QStringLiteral("WHAT IS DONE"));
    QCOMPARE(function.readings.first().title, QStringLiteral("RE"));
    QCOMPARE(function.readings.first().identifier, QStringLiteral("Re"));
    QCOMPARE(failure.whatHappened, QStringLiteral("THE LINK IS LOST: THE INSTRUMENT DOES NOT ANSWER."));
    QCOMPARE(failure.causes.at(1), QStringLiteral("THE CABLE IS UNPLUGGED OR BROKEN"));
    QVERIFY(failure.nextStep.startsWith(QLatin1String("SWITCH THE INSTRUMENT ON")));
}

QTEST_GUILESS_MAIN(TestClientFunctions)
#include "tst_clientfunctions.moc"
