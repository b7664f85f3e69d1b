#include "cli/words/errorguide.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include "cli/words/names.h"

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
    const Cli::ErrorAdvice advice = Cli::Advice(error);
    return QStringLiteral("| %1 | `%2` | %3 | %4 | %5 |")
        .arg(static_cast<int>(error))
        .arg(Cli::Name(error), Cli::Meaning(error), advice.causes.join(QLatin1String("; ")), advice.nextStep);
}

} // namespace

class TestCliErrorGuide : public QObject
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
    void AdviceAsText();
    void SentenceWithAdvice();
};

void TestCliErrorGuide::KnowsEveryError()
{
    QVector<int> numbers;
    for (const Error error : Cli::AllErrors()) {
        numbers.append(static_cast<int>(error));
    }
    QCOMPARE(numbers, KnownNumbers());
}

void TestCliErrorGuide::EveryErrorHasAdvice()
{
    for (const Error error : Cli::AllErrors()) {
        const Cli::ErrorAdvice advice = Cli::Advice(error);
        QVERIFY2(!advice.nextStep.isEmpty(), qPrintable(Cli::Name(error)));
        QCOMPARE(advice.causes.isEmpty(), error == Error::NoErrors);
    }
}

void TestCliErrorGuide::SentencesAreWhole()
{
    const QRegularExpression wordTwice(QStringLiteral("\\b(\\w+) \\1\\b"));
    for (const Error error : Cli::AllErrors()) {
        const Cli::ErrorAdvice advice = Cli::Advice(error);
        QVERIFY2(advice.nextStep.at(0).isUpper() && advice.nextStep.endsWith(QLatin1Char('.')),
                 qPrintable(advice.nextStep));
        QVERIFY2(!advice.nextStep.contains(wordTwice), qPrintable(advice.nextStep));
        for (const QString& cause : advice.causes) {
            QVERIFY2(!cause.isEmpty() && !cause.endsWith(QLatin1Char('.')), qPrintable(cause));
        }
    }
}

void TestCliErrorGuide::FindsByNumberAndName()
{
    QVERIFY(Cli::FindError(QStringLiteral("303")) == Error::UpdateInitializationFailed);
    QVERIFY(Cli::FindError(QStringLiteral("UpdateInitializationFailed")) ==
            Error::UpdateInitializationFailed);
    QVERIFY(Cli::FindError(QStringLiteral("rcdcheckobject3")) == Error::RCDCheckObject3);
    QVERIFY(Cli::FindError(QStringLiteral("0")) == Error::DeviceError0);
}

void TestCliErrorGuide::FindsNothingElse_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"", "-1", "16", "104", "399", "508", "519", "535", "99999999999", "303x", "Update"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void TestCliErrorGuide::FindsNothingElse()
{
    QFETCH(const QString, text);
    QVERIFY(!Cli::FindError(text).has_value());
}

void TestCliErrorGuide::NumberWithoutAnErrorHasNoAdvice()
{
    for (const int number : {-1, 16, 99, 104, 305, 402, 508, 519, 535}) {
        const Cli::ErrorAdvice advice = Cli::Advice(static_cast<Error>(number));
        QVERIFY(advice.causes.isEmpty());
        QCOMPARE(advice.nextStep, QString());
    }
}

void TestCliErrorGuide::DocumentShowsTheSame()
{
    QFile file(QStringLiteral(ERRORS_DOCUMENT));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("| ")) && line.at(2).isDigit()) {
            rows.append(line);
        }
    }
    const QVector<Error> errors = Cli::AllErrors();
    QCOMPARE(rows.size(), errors.size());
    for (int index = 0; index < errors.size(); ++index) {
        QCOMPARE(rows.at(index), DocumentRow(errors.at(index)));
    }
}

void TestCliErrorGuide::AdviceAsText()
{
    QCOMPARE(
        Cli::AdviceText(Error::UpdateConfirmationFailed),
        QByteArray("  Likely causes   the confirmation file belongs to another image\n"
                   "                  the image arrived damaged\n"
                   "  Next step       The instrument waits in update mode: update it again with the image "
                   "and the confirmation that belong together.\n"));
    QCOMPARE(Cli::AdviceText(Error::NoErrors), QByteArray("  Next step       Nothing is to be done.\n"));
    QCOMPARE(Cli::AdviceText(static_cast<Error>(16)), QByteArray());
}

void TestCliErrorGuide::SentenceWithAdvice()
{
    const QString sentence = QStringLiteral("It did not work.");
    QCOMPARE(Cli::WithAdvice(sentence, Error::NoErrors), sentence);
    QCOMPARE(Cli::WithAdvice(sentence, static_cast<Error>(16)), sentence);
    QCOMPARE(Cli::WithAdvice(sentence, Error::UpdateDataInvalid),
             sentence + QLatin1Char('\n') +
                 QString::fromUtf8(Cli::AdviceText(Error::UpdateDataInvalid)).chopped(1));
}

QTEST_APPLESS_MAIN(TestCliErrorGuide)
#include "tst_clierrorguide.moc"
