#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "client/words/errorguide.h"
#include "client/words/names.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::OperationMode;
using Vesmar::OperationState;
using Vesmar::StartTestResult;

namespace
{

template <typename Enumeration>
QString Text(int number)
{
    return VesmarClient::NameAndNumber(static_cast<Enumeration>(number));
}

/// "NUMBER NAME" of every value in the range that has a name, in order.
template <typename Enumeration>
QStringList Named(int first, int last)
{
    QStringList named;
    for (int number = first; number <= last; ++number) {
        const QString name = VesmarClient::Name(static_cast<Enumeration>(number));
        if (!name.isEmpty()) {
            named.append(QStringLiteral("%1 %2").arg(number).arg(name));
        }
    }
    return named;
}

QStringList List(const char* comma)
{
    return QString::fromLatin1(comma).split(QStringLiteral(", "));
}

/// The row of the document, which lists the error's number, name, meaning, causes and next step.
QString DocumentRow(Error error)
{
    const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(error);
    return QStringLiteral("| %1 | `%2` | %3 | %4 | %5 |")
        .arg(static_cast<int>(error))
        .arg(VesmarClient::Name(error), VesmarClient::Meaning(error), advice.causes.join(QLatin1String("; ")),
             advice.nextStep);
}

} // namespace

class TestClientWords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryNamedValueHasItsName();
    void NameAndNumberTogether();
    void UnnamedValueIsItsNumber();
    void UnnamedErrorIsUnknown();
    void EveryErrorHasAdvice();
    void AdviceIsInWholeSentences();
    void ErrorIsFoundByNumberAndName();
    void NoErrorIsFoundOtherwise_data();
    void NoErrorIsFoundOtherwise();
    void NumberWithoutAnErrorHasNoAdvice();
    void EveryErrorIsAsDocumented();
};

void TestClientWords::EveryNamedValueHasItsName()
{
    QCOMPARE(Named<OperationMode>(-5, 100), List("0 Normal, 1 Calibration, 2 Mode2, 3 Update"));
    QCOMPARE(Named<MeasurementType>(-5, 100),
             List("-1 None, 0 Monitoring, 1 RLN, 2 RPE, 3 RISO, 4 ISUB, 5 IPE, 6 IDELTA, 7 IT, 8 POWER, "
                  "9 HVTest, 10 RCD, 11 RCDIEC, 97 IEC"));
    QCOMPARE(Named<StartTestResult>(-5, 100),
             List("-1 Unknown, 0 Status0, 1 Status1, 2 Status2, 3 Status3, 4 Status4, 5 Status5, "
                  "6 Status6, 7 Status7, 8 Status8, 9 Status9, 10 Status10, 11 Status11, 12 Status12, "
                  "13 Status13, 14 Status14, 15 Status15"));
    QCOMPARE(Named<FunctionState>(-5, 100),
             List("-1 Unknown, 0 Idle, 1 Preparing, 2 Completed, 3 PrepareError, 4 Prepared, 5 Starting, "
                  "6 StartError, 7 Running, 8 Stopping, 9 Terminated"));
    QCOMPARE(Named<OperationState>(-5, 100), List("0 Idle, 1 Started, 2 InProgress, 3 Finished"));
    QCOMPARE(Named<MeasurementState>(-5, 100),
             List("-1 Unknown, 0 Idle, 1 Preparing, 2 Prepared, 3 Starting, 4 Running, 5 Measuring, "
                  "6 Stopping, 7 Stopped"));
}

void TestClientWords::NameAndNumberTogether()
{
    QCOMPARE(Text<Error>(103), QStringLiteral("CommunicationRecovery (103)"));
    QCOMPARE(Text<MeasurementType>(-1), QStringLiteral("None (-1)"));
}

void TestClientWords::UnnamedValueIsItsNumber()
{
    QCOMPARE(Text<FunctionState>(12), QStringLiteral("12"));
    QCOMPARE(Text<OperationMode>(-7), QStringLiteral("-7"));
}

void TestClientWords::UnnamedErrorIsUnknown()
{
    for (const int number : {-1, 16, 99, 104, 535}) {
        QCOMPARE(VesmarClient::Name(static_cast<Error>(number)), QString());
        QCOMPARE(VesmarClient::Meaning(static_cast<Error>(number)), QStringLiteral("unknown error"));
    }
}

void TestClientWords::EveryErrorHasAdvice()
{
    for (const Error error : VesmarClient::AllErrors()) {
        const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(error);
        QVERIFY2(!advice.nextStep.isEmpty(), qPrintable(VesmarClient::Name(error)));
        QCOMPARE(advice.causes.isEmpty(), error == Error::NoErrors);
    }
}

void TestClientWords::AdviceIsInWholeSentences()
{
    const QRegularExpression wordTwice(QStringLiteral("\\b(\\w+) \\1\\b"));
    for (const Error error : VesmarClient::AllErrors()) {
        const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(error);
        QVERIFY2(advice.nextStep.at(0).isUpper() && advice.nextStep.endsWith(QLatin1Char('.')),
                 qPrintable(advice.nextStep));
        QVERIFY2(!advice.nextStep.contains(wordTwice), qPrintable(advice.nextStep));
        for (const QString& cause : advice.causes) {
            QVERIFY2(!cause.isEmpty() && !cause.endsWith(QLatin1Char('.')), qPrintable(cause));
        }
    }
}

void TestClientWords::ErrorIsFoundByNumberAndName()
{
    QVERIFY(VesmarClient::FindError(QStringLiteral("303")) == Error::UpdateInitializationFailed);
    QVERIFY(VesmarClient::FindError(QStringLiteral("UpdateInitializationFailed")) ==
            Error::UpdateInitializationFailed);
    QVERIFY(VesmarClient::FindError(QStringLiteral("rcdcheckobject3")) == Error::RCDCheckObject3);
    QVERIFY(VesmarClient::FindError(QStringLiteral("0")) == Error::DeviceError0);
}

void TestClientWords::NoErrorIsFoundOtherwise_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"", "-1", "16", "104", "399", "508", "519", "535", "99999999999", "303x", "Update"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void TestClientWords::NoErrorIsFoundOtherwise()
{
    QFETCH(const QString, text);
    QVERIFY(!VesmarClient::FindError(text).has_value());
}

void TestClientWords::NumberWithoutAnErrorHasNoAdvice()
{
    for (const int number : {-1, 16, 99, 104, 305, 402, 508, 519, 535}) {
        const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(static_cast<Error>(number));
        QVERIFY(advice.causes.isEmpty());
        QCOMPARE(advice.nextStep, QString());
    }
}

void TestClientWords::EveryErrorIsAsDocumented()
{
    QFile file(QStringLiteral(ERRORS_DOCUMENT));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("| ")) && line.at(2).isDigit()) {
            rows.append(line);
        }
    }
    const QVector<Error> errors = VesmarClient::AllErrors();
    QCOMPARE(rows.size(), errors.size());
    for (int index = 0; index < errors.size(); ++index) {
        QCOMPARE(rows.at(index), DocumentRow(errors.at(index)));
    }
}

QTEST_GUILESS_MAIN(TestClientWords)
#include "tst_clientwords.moc"
