#include <QtTest>

#include "simulator/text/jsonerror.h"
#include "simulator/text/jsonlines.h"
#include "simulator/text/quoted.h"

using Simulator::JsonLines;
using Simulator::Quoted;

class TestText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TextAsItIs()
    {
        QCOMPARE(Quoted(QString()), QStringLiteral("\"\""));
        QCOMPARE(Quoted(QStringLiteral("bad-crc \u00E4")), QStringLiteral("\"bad-crc \u00E4\""));
    }

    void OnOneLine()
    {
        QCOMPARE(Simulator::OneLine(QStringLiteral("a\tb\nc \u00E4")), QStringLiteral("a?b?c \u00E4"));
        QCOMPARE(Quoted(QStringLiteral("a\nb\x1B[31m")), QStringLiteral("\"a?b?[31m\""));
    }

    void NotTooLong()
    {
        QCOMPARE(Quoted(QString(40, QLatin1Char('a'))),
                 QLatin1Char('"') + QString(40, QLatin1Char('a')) + QLatin1Char('"'));
        QCOMPARE(Quoted(QString(41, QLatin1Char('a'))),
                 QLatin1Char('"') + QString(40, QLatin1Char('a')) + QLatin1String("...\""));
    }

    void KeysAndElements()
    {
        const JsonLines lines(
            "\n{\n  \"a\": 1,\n  \"b\":\n  [\n    true, {\n \"c\" : null},\n    -2.5e3\n  ], \"d\": "
            "\"x\"\n}\n");
        QCOMPARE(lines.LineOf(QString()), 2);
        QCOMPARE(lines.LineOf(QStringLiteral("/a")), 3);
        QCOMPARE(lines.LineOf(QStringLiteral("/b")), 4);
        QCOMPARE(lines.LineOf(QStringLiteral("/b/0")), 6);
        QCOMPARE(lines.LineOf(QStringLiteral("/b/1")), 6);
        QCOMPARE(lines.LineOf(QStringLiteral("/b/1/c")), 7);
        QCOMPARE(lines.LineOf(QStringLiteral("/b/2")), 8);
        QCOMPARE(lines.LineOf(QStringLiteral("/d")), 9);
    }

    void BracketsAndQuotesInTexts()
    {
        const JsonLines lines("{\"a\": \"}],{[\\\"\\\\\",\n\"b\": [\"]\",\n\"\\\\\"]}");
        QCOMPARE(lines.LineOf(QStringLiteral("/b")), 2);
        QCOMPARE(lines.LineOf(QStringLiteral("/b/1")), 3);
    }

    void EscapedKeys()
    {
        const JsonLines lines("{\n\"\\u0061\": 1,\n\"\xC3\xA4\": 2}");
        QCOMPARE(lines.LineOf(QStringLiteral("/a")), 2);
        QCOMPARE(lines.LineOf(QStringLiteral("/\u00E4")), 3);
    }

    void KeysWithSlashes()
    {
        const JsonLines lines("{\"a\": {\n\"b\": 1},\n\"a/b\": 2,\n\"a~1b\": 3}");
        QCOMPARE(lines.LineOf(QStringLiteral("/a/b")), 2);
        QCOMPARE(lines.LineOf(JsonLines::PathBelow(QString(), QStringLiteral("a/b"))), 3);
        QCOMPARE(lines.LineOf(JsonLines::PathBelow(QString(), QStringLiteral("a~1b"))), 4);
    }

    void EmptyObjectsAndArrays()
    {
        const JsonLines lines("[{},\n{ }, [],\n[ ],\n3]");
        QCOMPARE(lines.LineOf(QStringLiteral("/0")), 1);
        QCOMPARE(lines.LineOf(QStringLiteral("/1")), 2);
        QCOMPARE(lines.LineOf(QStringLiteral("/3")), 3);
        QCOMPARE(lines.LineOf(QStringLiteral("/4")), 4);
    }

    void UnknownPath() { QCOMPARE(JsonLines("\n\n{}").LineOf(QStringLiteral("/a")), 1); }

    void DeepText()
    {
        const JsonLines lines(QByteArray(1000, '[') + QByteArray(1000, ']'));
        QCOMPARE(lines.LineOf(QStringLiteral("/0/0")), 1);
        const JsonLines broken(QByteArray("[\n").repeated(1000) + QByteArray(1000, ']'));
        QCOMPARE(broken.LineOf(QStringLiteral("/0").repeated(999)), 1000);
        const JsonLines after("[" + QByteArray(1000, '[') + QByteArray(1000, ']') + ",\n1]");
        QCOMPARE(after.LineOf(QStringLiteral("/1")), 2);
    }

    void KeyThatIsThereTwice()
    {
        try {
            const JsonLines lines("{\"a\": {\"b\": 1},\n \"c\": {\"b\": 2,\n \"\\u0062\": 3}}");
            QFAIL("no error");
        } catch (const Simulator::JsonError& error) {
            QCOMPARE(error.Line(), 3);
            QCOMPARE(error.what(), "line 3: \"b\": the key is there twice; keep one");
        }
    }

    void DeepKeyThatIsThereTwice()
    {
        try {
            const JsonLines lines(QByteArray(100, '[') + "{\"a\": 1,\n\"a\": 2}" + QByteArray(100, ']'));
            QFAIL("no error");
        } catch (const Simulator::JsonError& error) {
            QCOMPARE(error.Line(), 2);
        }
    }

    void LineAtAnOffset()
    {
        QCOMPARE(JsonLines::LineAt("a\nb\nc", 0), 1);
        QCOMPARE(JsonLines::LineAt("a\nb\nc", 2), 2);
        QCOMPARE(JsonLines::LineAt("a\nb\nc", 4), 3);
        QCOMPARE(JsonLines::LineAt("a\nb\nc", 99), 3);
        QCOMPARE(JsonLines::LineAt("", 0), 1);
    }
};

QTEST_APPLESS_MAIN(TestText)
#include "tst_text.moc"
