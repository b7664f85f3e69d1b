#include "client/words/errorguide.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "client/words/names.h"

using Vesmar::Error;

namespace
{

/// The numbers that applications know, and no others.
QVector<int> KnownNumbers()
{
    QVector<int> numbers;
    const auto addRow = [&numbers](int first, int last) {
        for (int number = first; number <= last; ++number) {
            numbers.append(number);
        }
    };
    addRow(0, 15);
    addRow(100, 103);
    addRow(200, 202);
    addRow(300, 304);
    numbers += {398, 400, 401};
    addRow(500, 507);
    addRow(520, 534);
    return numbers;
}

QString DocumentRow(Error error)
{
    const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(error);
    return QStringLiteral("| %1 | `%2` | %3 | %4 | %5 |")
        .arg(static_cast<int>(error))
        .arg(VesmarClient::Name(error), VesmarClient::Meaning(error), advice.causes.join(QLatin1String("; ")),
             advice.nextStep);
}

} // namespace

class TestClientErrorGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KnowsEveryError();
    void EveryErrorHasAdvice();
    void SentencesAreWhole();
    void FindsByNumberAndName();
    void FindsNothingElse_data();
    void FindsNothingElse();
    void NumberWithoutAnErrorHasNoAdvice();
    void DocumentShowsTheSame();
};

void TestClientErrorGuide::KnowsEveryError()
{
    QVector<int> numbers;
    for (const Error error : VesmarClient::AllErrors()) {
        numbers.append(static_cast<int>(error));
    }
    QCOMPARE(numbers, KnownNumbers());
}

void TestClientErrorGuide::EveryErrorHasAdvice()
{
    for (const Error error : VesmarClient::AllErrors()) {
        const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(error);
        QVERIFY2(!advice.nextStep.isEmpty(), qPrintable(VesmarClient::Name(error)));
        QCOMPARE(advice.causes.isEmpty(), error == Error::NoErrors);
    }
}

void TestClientErrorGuide::SentencesAreWhole()
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

void TestClientErrorGuide::FindsByNumberAndName()
{
    QVERIFY(VesmarClient::FindError(QStringLiteral("303")) == Error::UpdateInitializationFailed);
    QVERIFY(VesmarClient::FindError(QStringLiteral("UpdateInitializationFailed")) ==
            Error::UpdateInitializationFailed);
    QVERIFY(VesmarClient::FindError(QStringLiteral("rcdcheckobject3")) == Error::RCDCheckObject3);
    QVERIFY(VesmarClient::FindError(QStringLiteral("0")) == Error::DeviceError0);
}

void TestClientErrorGuide::FindsNothingElse_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"", "-1", "16", "104", "399", "508", "519", "535", "99999999999", "303x", "Update"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void TestClientErrorGuide::FindsNothingElse()
{
    QFETCH(const QString, text);
    QVERIFY(!VesmarClient::FindError(text).has_value());
}

void TestClientErrorGuide::NumberWithoutAnErrorHasNoAdvice()
{
    for (const int number : {-1, 16, 99, 104, 305, 402, 508, 519, 535}) {
        const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(static_cast<Error>(number));
        QVERIFY(advice.causes.isEmpty());
        QCOMPARE(advice.nextStep, QString());
    }
}

void TestClientErrorGuide::DocumentShowsTheSame()
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

QTEST_APPLESS_MAIN(TestClientErrorGuide)
#include "tst_clienterrorguide.moc"
