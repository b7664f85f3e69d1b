#include "cli/decode/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using Cli::JsonObjectText;
using Cli::JsonText;

class TestCliJsonText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ValueIsWrittenAsInADocument_data();
    void ValueIsWrittenAsInADocument();
    void TextIsWrittenAsInADocument_data();
    void TextIsWrittenAsInADocument();
    void MembersAreInTheOrderOfTheirNames();
    void ObjectWithoutMembers();
};

void TestCliJsonText::ValueIsWrittenAsInADocument_data()
{
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("null") << QJsonValue() << QByteArray("null");
    QTest::newRow("number") << QJsonValue(0.1) << QByteArray("0.1");
    const QByteArray object = R"({"a":[1,"b"]})";
    QTest::newRow("object") << QJsonValue(QJsonDocument::fromJson(object).object()) << object;
}

void TestCliJsonText::ValueIsWrittenAsInADocument()
{
    QFETCH(const QJsonValue, value);
    QTEST(JsonText(value), "text");
}

void TestCliJsonText::TextIsWrittenAsInADocument_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("first and last plain character") << " ~";
    QTest::newRow("quote") << "a \"b\"";
    QTest::newRow("backslash") << "a\\b";
    QTest::newRow("control characters") << "\b\f\n\r\t\x01\x1f\x7f";
    QTest::newRow("beyond ASCII") << QString::fromUtf8("\u00fc \u20ac \U0001f50c");
}

void TestCliJsonText::TextIsWrittenAsInADocument()
{
    QFETCH(const QString, text);
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    QCOMPARE('[' + JsonText(text) + ']', array);
}

void TestCliJsonText::MembersAreInTheOrderOfTheirNames()
{
    JsonObjectText object;
    object.Insert("within", JsonText(12));
    object.Insert("TesterMode", "null");
    object.Insert("at", Cli::Quoted("20:51:40.316"));
    QCOMPARE(object.Text(), QByteArray(R"({"TesterMode":null,"at":"20:51:40.316","within":12})"));
}

void TestCliJsonText::ObjectWithoutMembers()
{
    QCOMPARE(JsonObjectText().Text(), QByteArray("{}"));
}

QTEST_APPLESS_MAIN(TestCliJsonText)
#include "tst_clijsontext.moc"
