#include <QFile>
#include <QMetaEnum>
#include <QRegularExpression>
#include <QtTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/rperesults.h>

#include <VesmarClient/functions.h>
#include <VesmarClient/gap.h>
#include <VesmarClient/linkstatistics.h>
#include <VesmarClient/settings.h>

#include "client/catalogue/conversions.h"
#include "client/values/registration.h"

using namespace VesmarClient;

namespace
{

/// "NAME = NUMBER" of every enumerator.
template <typename Enumeration>
QStringList Enumerators()
{
    const auto type = QMetaEnum::fromType<Enumeration>();
    QStringList enumerators;
    for (int index = 0; index < type.keyCount(); ++index) {
        enumerators.append(
            QStringLiteral("%1 = %2").arg(QLatin1String(type.key(index))).arg(type.value(index)));
    }
    return enumerators;
}

/// The same of the one enumeration in a header of the driver.
QStringList DriverEnumerators(const char* header)
{
    QFile file(QStringLiteral(DRIVER_HEADERS "/%1.h").arg(QLatin1String(header)));
    if (!file.open(QIODevice::ReadOnly)) {
        return {file.errorString()};
    }
    const QRegularExpression enumerator(QStringLiteral("^ +(\\w+ = -?\\d+)"),
                                        QRegularExpression::MultilineOption);
    QStringList enumerators;
    auto matches = enumerator.globalMatch(QString::fromUtf8(file.readAll()));
    while (matches.hasNext()) {
        enumerators.append(matches.next().captured(1));
    }
    return enumerators;
}

template <typename Value>
QString Printed(const Value& value)
{
    QString text;
    QDebug(&text) << value;
    return text.trimmed();
}

/// Without the class of the list, which has another name in Qt 6.
QString Printed(const QVector<Reading>& readings)
{
    const QString text = Printed<QVector<Reading>>(readings);
    return text.mid(text.indexOf(QLatin1Char('(')));
}

const QDateTime When({2026, 11, 22}, {7, 15, 1, 5});

} // namespace

class TestClientValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EnumerationsAreTheDriversOnes();
    void EnumeratorIsPrintedWithItsName();
    void ValuesAreEqualByTheirFields();
    void ReadingIsWrittenForPeople();
    void ValuesArePrinted();
    void ReadingsAreFoundByName();
    void IdentityIsCopied();
    void ResultsAreConverted();
    void ResultsWithoutReadingsAreEmpty();
    void EveryErrorIsAFailure();
    void UnsetOptionIsGone();
    void VariantsCompareAndPrintValues();
    void ListsAreSequences();
};

void TestClientValues::EnumerationsAreTheDriversOnes()
{
    QCOMPARE(Enumerators<Error>(), DriverEnumerators("error"));
    QCOMPARE(Enumerators<Error>().size(), 54);
    QCOMPARE(Enumerators<Function>(), DriverEnumerators("measurementtype"));
    QCOMPARE(Enumerators<Function>().size(), 14);
    QCOMPARE(Enumerators<Mode>(), DriverEnumerators("operationmode"));
    QCOMPARE(Enumerators<Mode>().size(), 4);
    QCOMPARE(Enumerators<FunctionState>(), DriverEnumerators("functionstate"));
    QCOMPARE(Enumerators<FunctionState>().size(), 11);
    QCOMPARE(Enumerators<StartTestResult>(), DriverEnumerators("starttestresult"));
    QCOMPARE(Enumerators<StartTestResult>().size(), 17);
}

void TestClientValues::EnumeratorIsPrintedWithItsName()
{
    QCOMPARE(Printed(Outcome::LinkLost), QStringLiteral("VesmarClient::Outcome::LinkLost"));
    QCOMPARE(Printed(Error::RCDCheckObject2), QStringLiteral("VesmarClient::Error::RCDCheckObject2"));
}

void TestClientValues::ValuesAreEqualByTheirFields()
{
    const Reading reading{QStringLiteral("current"), 0.5, true, QStringLiteral("A"), 2};
    Reading other = reading;
    QVERIFY(other == reading);
    other.decimals = 1;
    QVERIFY(other != reading);
    QVERIFY(Result(Function::IT, {reading}, When) == Result(Function::IT, {reading}, When));
    QVERIFY(Result(Function::IT, {reading}, When) != Result(Function::IT, {other}, When));
    QVERIFY(Failure::ofError(Error::NoResponse) == Failure::ofError(Error::NoResponse));
    QVERIFY(Failure::ofError(Error::NoResponse) != Failure::ofError(Error::RequestRefused));
    QVERIFY((LinkStatistics{1, 2, 3, 4, 5, 6} == LinkStatistics{1, 2, 3, 4, 5, 6}));
    QVERIFY((LinkStatistics{1, 2, 3, 4, 5, 6} != LinkStatistics{1, 2, 3, 4, 5, 7}));
    QVERIFY((Gap{1, 2} == Gap{1, 2}));
    QVERIFY((Gap{1, 2} != Gap{2, 2}));
    QVERIFY(Settings("rpe").set("time", 3) == Settings("rpe").set("time", QStringLiteral("3")));
    QVERIFY(Settings("rpe").set("time", 3) != Settings("rpe"));
    QVERIFY(Identity() != (Identity{{}, {}, {}, {}, {}, {}, QStringLiteral("1")}));
}

void TestClientValues::ReadingIsWrittenForPeople()
{
    QCOMPARE((Reading{{}, 0.12, true, {}, -1}).text(), QStringLiteral("0.12"));
    QCOMPARE((Reading{{}, 230.123, true, QStringLiteral("V"), 1}).text(), QStringLiteral("230.1 V"));
    QCOMPARE((Reading{{}, 50, true, {}, 2}).text(), QStringLiteral("50.00"));
    QCOMPARE((Reading{{}, 0, false, QStringLiteral("V"), 1}).text(), QStringLiteral("-"));
}

void TestClientValues::ValuesArePrinted()
{
    const Result result(Function::ISUB,
                        {{QStringLiteral("current"), 0.12, true, {}, -1},
                         {QStringLiteral("voltage"), 0, false, QStringLiteral("V"), 1}},
                        When);
    QCOMPARE(Printed(result.readings()), QStringLiteral("(current=0.12, voltage=-)"));
    QCOMPARE(Printed(result), QStringLiteral("Result(VesmarClient::Function::ISUB, 2026-11-22T07:15:01.005, "
                                             "current=0.12, voltage=-)"));
    QCOMPARE(Printed(Failure{Error::NoErrors,
                             QStringLiteral("device-missing"),
                             QStringLiteral("No line."),
                             {QStringLiteral("a"), QStringLiteral("b")},
                             QStringLiteral("Look.")}),
             QStringLiteral("Failure(device-missing, No line., a; b, Look.)"));
    QVERIFY(Printed(Failure::ofError(Error::StartFailed))
                .startsWith(QLatin1String("Failure(StartFailed, 201, ")));
    QCOMPARE(Printed(Settings("rpe").set("time", 3).set("method", QStringLiteral("1"))),
             QStringLiteral("Settings(rpe, method=1, time=3)"));
    QCOMPARE(Printed(SettingsProblem{QStringLiteral("time"), QStringLiteral("x")}),
             QStringLiteral("SettingsProblem(time: x)"));
    QCOMPARE(Printed(Gap{1200, 3000}), QStringLiteral("Gap(3000 ms after 1200 ms)"));
    QCOMPARE(Printed(LinkStatistics{1, 2, 3, 4, 5, 6}),
             QStringLiteral("LinkStatistics(1 exchanges, 2 retransmissions, 3 damaged, 4 silent, 5 refused, "
                            "6 recoveries)"));
}

void TestClientValues::ReadingsAreFoundByName()
{
    const Result result(Function::IT, {{QStringLiteral("current"), 0.5, true, {}, -1}}, When);
    QCOMPARE(result.reading(QStringLiteral("current")).value, 0.5);
    QVERIFY(!result.reading(QStringLiteral("voltage")).isPresent);
    QVERIFY(Result().isEmpty());
    QVERIFY(!result.isEmpty());
}

void TestClientValues::IdentityIsCopied()
{
    Vesmar::TesterInformation information(nullptr);
    information.SerialNumber = QStringLiteral("123456");
    information.BuildNumber = QStringLiteral("42");
    QCOMPARE(
        Printed(IdentityOf(information)),
        QStringLiteral("Identity(\"PAT\", code \"000\", serial number \"123456\", version \"000\", version "
                       "code \"000\", revision code \"00\", build \"42\")"));
}

void TestClientValues::ResultsAreConverted()
{
    const Result result =
        ResultOf(Vesmar::RCDResults(12.1F, 0.0F, Vesmar::MeasurementResults::NoValue), When);
    QCOMPARE(result.function(), Function::RCD);
    QCOMPARE(result.when(), When);
    QCOMPARE(Printed(result.readings()), QStringLiteral("(Re=12.1, Ia=0, Ta=-)"));
    QCOMPARE(result.readings().at(0).value, 12.1);
    QCOMPARE(result.readings().at(2).value, 0.0);
    const Vesmar::RPEResults infinite(std::numeric_limits<float>::infinity(), 0.1F, std::nanf(""));
    QCOMPARE(Printed(ResultOf(infinite, When).readings()),
             QStringLiteral("(resistance=-, voltage=0.1, current=-)"));
}

void TestClientValues::ResultsWithoutReadingsAreEmpty()
{
    const Vesmar::MeasurementResults placeholder(Vesmar::MeasurementType::None, nullptr);
    QVERIFY(ResultOf(placeholder, When).isEmpty());
}

void TestClientValues::EveryErrorIsAFailure()
{
    const auto errors = QMetaEnum::fromType<Error>();
    for (int index = 0; index < errors.keyCount(); ++index) {
        const auto error = static_cast<Error>(errors.value(index));
        const Failure failure = Failure::ofError(error);
        if (error == Error::NoErrors) {
            QVERIFY(!failure.isFailure());
            continue;
        }
        QCOMPARE(failure.code, error);
        QCOMPARE(failure.name, QString::fromLatin1(errors.key(index)));
        QVERIFY(failure.whatHappened.at(0).isUpper() && failure.whatHappened.endsWith(QLatin1Char('.')));
        QVERIFY(!failure.causes.isEmpty() && !failure.nextStep.isEmpty());
    }
    QCOMPARE(Failure::ofError(Error::PrepareFailed).whatHappened,
             QStringLiteral("The instrument could not prepare the measurement."));
    QCOMPARE(Failure::ofError(static_cast<Error>(104)).name, QStringLiteral("104"));
}

void TestClientValues::UnsetOptionIsGone()
{
    const Settings settings = Settings("rpe").set("time", 3).set("method", 2).set("time", QVariant());
    QCOMPARE(settings.options(), QVariantMap({{QStringLiteral("method"), 2}}));
}

void TestClientValues::VariantsCompareAndPrintValues()
{
    RegisterTypes();
    const QVariant one = QVariant::fromValue(Gap{1, 2});
    QCOMPARE(one, QVariant::fromValue(Gap{1, 2}));
    QVERIFY(one != QVariant::fromValue(Gap{2, 2}));
    QCOMPARE(Printed(one), QStringLiteral("QVariant(VesmarClient::Gap, Gap(2 ms after 1 ms))"));
}

void TestClientValues::ListsAreSequences()
{
    RegisterTypes();
    const QVariant list = QVariant::fromValue(QVector<Gap>{{1, 2}, {3, 4}});
    QVERIFY(list.canConvert<QVariantList>());
    QCOMPARE(list.value<QVariantList>().at(1).value<Gap>(), (Gap{3, 4}));
    QVERIFY(QMetaType::type("VesmarClient::Outcome") != QMetaType::UnknownType);
}

QTEST_GUILESS_MAIN(TestClientValues)
#include "tst_clientvalues.moc"
