#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include "jsontexts.h"
#include "simulator/line/recordingfile.h"
#include "simulator/text/jsonerror.h"

using Simulator::RecordedEntry;

namespace
{

QByteArray ErrorOf(const QByteArray& content)
{
    return ErrorOfContent(Simulator::LoadRecording, content);
}

/// Returns entries behind a first one that is good.
QByteArray WithFirst(const QByteArray& entry)
{
    return "{\"exchanges\": [{\"request\": \"73\"},\n" + entry + "]}";
}

bool IsAccepted(const QJsonObject& entry)
{
    try {
        Simulator::ParseRecording(WithFirst(QJsonDocument(entry).toJson()));
        return true;
    } catch (const Simulator::JsonError&) {
        return false;
    }
}

QJsonObject Schema()
{
    return SchemaOf(PLAYBACK_SCHEMA);
}

QJsonObject Definition(const char* name)
{
    return Inside(Schema(), {"definitions", name});
}

} // namespace

class TestRecordingFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryEntry()
    {
        const std::vector<RecordedEntry> entries =
            Simulator::ParseRecording("{\"comment\": \"none\", \"exchanges\": [{\"request\": \"73f44e\", "
                                      "\"answer\": \"00FEd10e\"}, {\"request\": \"57122A\"}, {\"unasked\": "
                                      "\"0af73370\", \"after\": 200}, {\"unasked\": \"05\"}]}");
        QCOMPARE(entries.size(), std::size_t(4));
        QCOMPARE(entries.at(0).request.toHex(), QByteArray("73f44e"));
        QCOMPARE(entries.at(0).bytes.toHex(), QByteArray("00fed10e"));
        QVERIFY(!entries.at(0).IsUnasked());
        QCOMPARE(entries.at(1).request.toHex(), QByteArray("57122a"));
        QCOMPARE(entries.at(1).bytes, QByteArray());
        QVERIFY(entries.at(2).IsUnasked());
        QCOMPARE(entries.at(2).bytes.toHex(), QByteArray("0af73370"));
        QVERIFY(entries.at(2).after == std::chrono::milliseconds(200));
        QVERIFY(entries.at(3).IsUnasked());
        QCOMPARE(entries.at(3).bytes.toHex(), QByteArray("05"));
        QVERIFY(entries.at(3).after == std::chrono::milliseconds(0));
    }

    void LimitsAreAllowed()
    {
        const QByteArray longest(4096, 'a');
        for (const QByteArray& entry :
             QByteArrayList{"{\"unasked\": \"00\", \"after\": 0}", "{\"unasked\": \"00\", \"after\": 600000}",
                            "{\"request\": \"" + longest + "\"}",
                            "{\"request\": \"73\", \"answer\": \"" + longest + "\"}",
                            "{\"unasked\": \"" + longest + "\"}"}) {
            QCOMPARE(ErrorOf(WithFirst(entry)), QByteArray());
        }
    }

    /// The limits that the schema knows are tested below.
    void LimitsAreKept_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QByteArray>("error");
        const QByteArray bytes("must be 1 to 2048 bytes of two hexadecimal digits each");
        const QByteArray time("must be a whole number from 0 to 600000");
        const QByteArray text("must be a text in double quotes");
        const auto row = [](const char* name, const QByteArray& entry, const QByteArray& error) {
            QTest::newRow(name) << entry << error;
        };
        row("request empty", "{\"request\": \"\"}", "\"request\": " + bytes);
        row("digits of another script", "{\"request\": \"\\u0667\\u0663\"}", "\"request\": " + bytes);
        row("full width digits", "{\"request\": \"\\uff17\\uff13\"}", "\"request\": " + bytes);
        row("request is a number", "{\"request\": 73}", "\"request\": " + text);
        row("answer empty", "{\"request\": \"73\", \"answer\": \"\"}", "\"answer\": " + bytes);
        row("answer null", "{\"request\": \"73\", \"answer\": null}", "\"answer\": " + text);
        row("unasked empty", "{\"unasked\": \"\"}", "\"unasked\": " + bytes);
        row("after negative", "{\"unasked\": \"00\", \"after\": -1}", "\"after\": " + time);
        row("after broken", "{\"unasked\": \"00\", \"after\": 0.5}", "\"after\": " + time);
        row("after is a text", "{\"unasked\": \"00\", \"after\": \"5\"}", "\"after\": " + time);
    }

    void LimitsAreKept()
    {
        QFETCH(QByteArray, entry);
        QFETCH(QByteArray, error);
        QCOMPARE(ErrorOf(WithFirst(entry)), "FILE, line 2: " + error);
    }

    void Errors_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char* name, const QByteArray& content, const char* error) {
            QTest::newRow(name) << content << QByteArray(error);
        };
        row("exchanges missing", "\n{}", "FILE, line 2: \"exchanges\" is missing");
        row("no exchange", "{\n\"exchanges\": []}",
            "FILE, line 2: \"exchanges\": there must be at least one");
        row("exchanges are an object", "{\n\"exchanges\": {}}",
            "FILE, line 2: \"exchanges\": must be an array of up to 100000 objects");
        row("exchange is a text", WithFirst("\"73\""),
            "FILE, line 2: each of \"exchanges\" must be an object in braces");
        row("neither", WithFirst("{}"), "FILE, line 2: an entry needs either \"request\" or \"unasked\"");
        row("answer alone", WithFirst("{\"answer\": \"00\"}"),
            "FILE, line 2: an entry needs either \"request\" or \"unasked\"");
        row("both", WithFirst("{\"request\": \"73\", \"unasked\": \"00\"}"),
            "FILE, line 2: an entry needs either \"request\" or \"unasked\"");
        row("unasked at first", "{\"exchanges\": [\n{\n\"unasked\": \"00\"}]}",
            "FILE, line 3: \"unasked\": the first entry must be a request");
        row("key of the other kind", WithFirst("{\"request\": \"73\",\n\"after\": 5}"),
            "FILE, line 3: \"after\": there is no such key here; there may be request, answer");
        row("answer unasked", WithFirst("{\"unasked\": \"73\",\n\"answer\": \"00\"}"),
            "FILE, line 3: \"answer\": there is no such key here; there may be unasked, after");
        row("unknown key", "{\"exchanges\": [{\"request\": \"73\"}],\n\"faults\": []}",
            "FILE, line 2: \"faults\": there is no such key here; there may be exchanges, comment");
        row("comment is a number", "{\"exchanges\": [{\"request\": \"73\"}],\n\"comment\": 5}",
            "FILE, line 2: \"comment\": must be a text in double quotes");
        row("key twice", WithFirst("{\"request\": \"73\",\n\"request\": \"57\"}"),
            "FILE, line 3: \"request\": the key is there twice; keep one");
    }

    void Errors()
    {
        QFETCH(QByteArray, content);
        QTEST(ErrorOf(content), "error");
    }

    void AsManyAsThereMayBe()
    {
        const QByteArray others = QByteArray(",{\"request\":\"73\"}").repeated(99999);
        const auto recording = [](const QByteArray& more) {
            return "{\"exchanges\":[{\"request\":\"57\"}" + more + "]}";
        };
        QCOMPARE(ErrorOf(recording(others)), QByteArray());
        QCOMPARE(ErrorOf(recording(others + ",{\"request\":\"73\"}")),
                 QByteArray("FILE, line 1: \"exchanges\": must be an array of up to 100000 objects"));
    }

    void FileThatIsTooLong()
    {
        const QByteArray recording("{\"exchanges\":[{\"request\":\"57\"}]}");
        QCOMPARE(ErrorOf(recording + QByteArray(16777216 - recording.size(), ' ')), QByteArray());
        QCOMPARE(ErrorOf(recording + QByteArray(16777217 - recording.size(), ' ')),
                 QByteArray("cannot read the recording FILE: it has more than 16777216 bytes"));
    }

    /// The file may not be read by anybody, but the error is still its length.
    void EnormousFileIsNotRead()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("recording"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(100 * 1024 * 1024));
        QVERIFY(file.setPermissions(QFile::WriteOwner));
        QCOMPARE(ErrorOfPath(Simulator::LoadRecording, path),
                 QByteArray("cannot read the recording FILE: it has more than 16777216 bytes"));
    }

    void ExampleOfTheDocument()
    {
        QCOMPARE(Simulator::ParseRecording(ExampleOf(SIMULATOR_DOCUMENT)).size(), std::size_t(6));
    }

    void DocumentDescribesEveryKey()
    {
        const QByteArray document = ContentOf(SIMULATOR_DOCUMENT);
        for (const char* kind : {"exchange", "unasked"}) {
            for (const QString& key : Inside(Definition(kind), {"properties"}).keys()) {
                QVERIFY2(document.contains("\n| `" + key.toUtf8() + "` | "), qPrintable(key));
            }
        }
    }

    void SchemaAllowsWhatIsAllowed_data()
    {
        QTest::addColumn<QString>("needed");
        QTest::newRow("exchange") << QStringLiteral("request");
        QTest::newRow("unasked") << QStringLiteral("unasked");
    }

    /// Each kind accepts the keys that the schema gives it, and no others.
    void SchemaAllowsWhatIsAllowed()
    {
        QFETCH(QString, needed);
        const QJsonObject definition = Definition(QTest::currentDataTag());
        QCOMPARE(definition.value(QLatin1String("additionalProperties")), QJsonValue(false));
        const QJsonObject properties = definition.value(QLatin1String("properties")).toObject();
        const QMap<QString, QJsonValue> values{{QStringLiteral("request"), QStringLiteral("73")},
                                               {QStringLiteral("answer"), QStringLiteral("00")},
                                               {QStringLiteral("unasked"), QStringLiteral("00")},
                                               {QStringLiteral("after"), 1},
                                               {QStringLiteral("comment"), QStringLiteral("text")}};
        for (auto value = values.begin(); value != values.end(); ++value) {
            QJsonObject entry{{needed, QStringLiteral("73")}};
            entry.insert(value.key(), value.value());
            QVERIFY2(IsAccepted(entry) == properties.contains(value.key()), qPrintable(value.key()));
        }
    }

    void SchemaNeedsWhatIsNeeded_data() { SchemaAllowsWhatIsAllowed_data(); }

    void SchemaNeedsWhatIsNeeded()
    {
        QFETCH(QString, needed);
        const QJsonValue required = Definition(QTest::currentDataTag()).value(QLatin1String("required"));
        QCOMPARE(required, QJsonValue(QJsonArray{needed}));
        QVERIFY(IsAccepted({{needed, QStringLiteral("73")}}));
        QVERIFY(!IsAccepted({}));
    }

    void SchemaKeepsTheLimitsOfAfter()
    {
        const QJsonObject limits = Inside(Definition("unasked"), {"properties", "after"});
        const int lowest = limits.value(QLatin1String("minimum")).toInt(-1);
        const int highest = limits.value(QLatin1String("maximum")).toInt(-1);
        const auto isAccepted = [](int after) {
            return IsAccepted(
                {{QStringLiteral("unasked"), QStringLiteral("00")}, {QStringLiteral("after"), after}});
        };
        QVERIFY(isAccepted(lowest) && isAccepted(highest));
        QVERIFY(!isAccepted(lowest - 1) && !isAccepted(highest + 1));
    }

    void SchemaKeepsTheLimitsOfBytes_data()
    {
        QTest::addColumn<QString>("bytes");
        QTest::newRow("none") << QString();
        QTest::newRow("one") << QStringLiteral("00");
        QTest::newRow("half a byte") << QStringLiteral("000");
        QTest::newRow("all digits") << QStringLiteral("0123456789abcdefABCDEF");
        QTest::newRow("no digit") << QStringLiteral("0g");
        QTest::newRow("blank") << QStringLiteral("00 00");
        QTest::newRow("most") << QStringLiteral("00").repeated(2048);
        QTest::newRow("more") << QStringLiteral("00").repeated(2049);
    }

    void SchemaKeepsTheLimitsOfBytes()
    {
        QFETCH(QString, bytes);
        const QRegularExpression form(Definition("bytes").value(QLatin1String("pattern")).toString());
        QVERIFY2(form.isValid(), qPrintable(form.errorString()));
        const bool isAccepted = form.match(bytes).hasMatch();
        QCOMPARE(IsAccepted({{QStringLiteral("request"), bytes}}), isAccepted);
        QCOMPARE(IsAccepted(
                     {{QStringLiteral("request"), QStringLiteral("73")}, {QStringLiteral("answer"), bytes}}),
                 isAccepted);
        QCOMPARE(IsAccepted({{QStringLiteral("unasked"), bytes}}), isAccepted);
    }

    /// The limits themselves are tested above.
    void SchemaKeepsTheLimitsOfTheWhole()
    {
        QCOMPARE(Schema().value(QLatin1String("required")),
                 QJsonValue(QJsonArray{QStringLiteral("exchanges")}));
        QCOMPARE(Schema().value(QLatin1String("additionalProperties")), QJsonValue(false));
        const QStringList keys = Schema().value(QLatin1String("properties")).toObject().keys();
        QCOMPARE(keys, (QStringList{QStringLiteral("comment"), QStringLiteral("exchanges")}));
        QCOMPARE(Inside(Schema(), {"properties", "exchanges"}).value(QLatin1String("minItems")),
                 QJsonValue(1));
        QCOMPARE(Inside(Schema(), {"properties", "exchanges"}).value(QLatin1String("maxItems")),
                 QJsonValue(100000));
        const QJsonArray first =
            Inside(Schema(), {"properties", "exchanges"}).value(QLatin1String("items")).toArray();
        QCOMPARE(first.size(), 1);
        QCOMPARE(first.at(0).toObject().value(QLatin1String("$ref")),
                 QJsonValue(QStringLiteral("#/definitions/exchange")));
    }
};

QTEST_GUILESS_MAIN(TestRecordingFile) // The end of an application frees what long matches need.
#include "tst_recordingfile.moc"
