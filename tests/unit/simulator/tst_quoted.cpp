#include <QtTest>

#include "simulator/text/quoted.h"

using Simulator::Quoted;

class TestQuoted : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TextAsItIs();
    void OnOneLine();
    void NotTooLong();
};

void TestQuoted::TextAsItIs()
{
    QCOMPARE(Quoted(QString()), QStringLiteral("\"\""));
    QCOMPARE(Quoted(QStringLiteral("bad-crc \u00E4")), QStringLiteral("\"bad-crc \u00E4\""));
}

void TestQuoted::OnOneLine()
{
    QCOMPARE(Simulator::OneLine(QStringLiteral("a\tb\nc \u00E4")), QStringLiteral("a?b?c \u00E4"));
    QCOMPARE(Quoted(QStringLiteral("a\nb\x1B[31m")), QStringLiteral("\"a?b?[31m\""));
}

void TestQuoted::NotTooLong()
{
    QCOMPARE(Quoted(QString(40, QLatin1Char('a'))),
             QLatin1Char('"') + QString(40, QLatin1Char('a')) + QLatin1Char('"'));
    QCOMPARE(Quoted(QString(41, QLatin1Char('a'))),
             QLatin1Char('"') + QString(40, QLatin1Char('a')) + QLatin1String("...\""));
}

QTEST_APPLESS_MAIN(TestQuoted)
#include "tst_quoted.moc"
