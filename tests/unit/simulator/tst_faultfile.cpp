#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include "jsontexts.h"
#include "simulator/faults/faultfile.h"
#include "simulator/text/jsonerror.h"

using namespace std::chrono_literals;
using Simulator::ControlCommand;
using Simulator::Fault;
using Simulator::FaultEntry;

namespace
{

QByteArray ErrorOf(const QByteArray& content)
{
    return ErrorOfContent(Simulator::LoadFaults, content);
}

QJsonObject SchemaDefinitions()
{
    return Inside(SchemaOf(FAULTS_SCHEMA), {"definitions"});
}

/// Returns what the schema says of a value, even where it refers to another place.
QJsonObject Resolved(const QJsonObject& definition)
{
    const QString reference = definition.value(QLatin1String("$ref")).toString();
    return reference.isEmpty()
               ? definition
               : SchemaDefinitions().value(reference.section(QLatin1Char('/'), -1)).toObject();
}

/// Returns each fault of the schema with the values that it may have.
QMap<QString, QJsonObject> SchemaFaults()
{
    QMap<QString, QJsonObject> faults;
    const QJsonObject fault = SchemaDefinitions().value(QLatin1String("fault")).toObject();
    for (const QJsonValue& alternative : fault.value(QLatin1String("oneOf")).toArray()) {
        const QJsonObject properties = alternative.toObject().value(QLatin1String("properties")).toObject();
        const QJsonObject kind = properties.value(QLatin1String("fault")).toObject();
        for (const QJsonValue& name : kind.value(QLatin1String("enum")).toArray()) {
            faults.insert(name.toString(), properties);
        }
    }
    return faults;
}

bool IsAccepted(const QJsonObject& fault)
{
    try {
        Simulator::ParseFault(QJsonDocument(fault).toJson());
        return true;
    } catch (const Simulator::JsonError&) {
        return false;
    }
}

} // namespace

class TestFaultFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NoFaults() { QVERIFY(Simulator::ParseFaults("{\"comment\": \"none\", \"faults\": []}").empty()); }

    void EveryName()
    {
        for (const Simulator::NamedFault& named : Simulator::Faults) {
            if (named.fault != Fault::None) {
                const FaultEntry entry =
                    Simulator::ParseFault(QByteArray("{\"fault\": \"") + named.name + "\"}");
                QVERIFY2(entry.fault == named.fault, named.name);
                QVERIFY(!entry.command);
            }
        }
    }

    void UsualValues()
    {
        const auto entry = [](const char* fault) {
            return Simulator::ParseFault(QByteArray("{\"fault\": \"") + fault + "\"}");
        };
        QVERIFY(entry("slow").delay == 1000ms);
        QCOMPARE(entry("truncated").length, 2);
        QCOMPARE(entry("split").length, 1);
        QVERIFY(entry("split").pause == 50ms);
        QCOMPARE(entry("flip").position, 0);
        QCOMPARE(entry("flip").length, 1);
        QCOMPARE(entry("flip").mask, 255);
        QCOMPARE(entry("garbage-before").bytes.toHex(), QByteArray("55aa"));
        QVERIFY(!entry("hang-up").lineBackIn);
    }

    void EveryValue()
    {
        QVERIFY(Simulator::ParseFault("{\"fault\":\"slow\",\"delay\":250}").delay == 250ms);
        QCOMPARE(Simulator::ParseFault("{\"fault\":\"truncated\",\"length\":3}").length, 3);
        const FaultEntry split = Simulator::ParseFault("{\"fault\":\"split\",\"length\":4,\"pause\":7}");
        QCOMPARE(split.length, 4);
        QVERIFY(split.pause == 7ms);
        const FaultEntry flip =
            Simulator::ParseFault("{\"fault\":\"flip\",\"position\":-2,\"length\":2,\"mask\":1}");
        QCOMPARE(flip.position, -2);
        QCOMPARE(flip.length, 2);
        QCOMPARE(flip.mask, 1);
        QCOMPARE(Simulator::ParseFault("{\"fault\":\"garbage-after\",\"bytes\":\"06c66Aff\"}").bytes.toHex(),
                 QByteArray("06c66aff"));
        QVERIFY(Simulator::ParseFault("{\"fault\":\"hang-up\",\"line-back-in\":300}").lineBackIn == 300ms);
    }

    void EveryCondition()
    {
        const FaultEntry entry = Simulator::ParseFault(
            "{\"fault\":\"silent\",\"count\":5,\"when\":{\"request\":\"P\",\"from\":3,\"after\":1000,"
            "\"until\":2000,\"probability\":0.25,\"seed\":77}}");
        QVERIFY(entry.trigger.request == 'P');
        QVERIFY(entry.trigger.from == 3);
        QVERIFY(entry.trigger.after == 1000ms);
        QVERIFY(entry.trigger.until == 2000ms);
        QVERIFY(entry.trigger.probability == 0.25);
        QCOMPARE(entry.trigger.seed, 77U);
        QVERIFY(entry.count == 5);
    }

    void NoConditions()
    {
        for (const char* json : {"{\"fault\":\"silent\"}", "{\"fault\":\"silent\",\"when\":{}}"}) {
            const FaultEntry entry = Simulator::ParseFault(json);
            QVERIFY(entry.trigger.IsByTheClock());
            QVERIFY(entry.trigger.after == 0ms);
            QVERIFY(!entry.trigger.until && !entry.count);
        }
    }

    void SeedsDifferByPlace()
    {
        const std::vector<FaultEntry> entries =
            Simulator::ParseFaults("{\"faults\":[{\"fault\":\"silent\",\"when\":{\"probability\":0.5}},"
                                   "{\"fault\":\"refuse\",\"when\":{\"probability\":0.5}}]}");
        QCOMPARE(entries.size(), std::size_t(2));
        QCOMPARE(entries.at(0).trigger.seed, 1U);
        QCOMPARE(entries.at(1).trigger.seed, 2U);
    }

    void Commands()
    {
        const FaultEntry scenario = Simulator::ParseFault(
            "{\"command\":\"scenario refuses-sector 3\",\"when\":{\"request\":\"V\"},\"count\":1}");
        QVERIFY(scenario.command && scenario.command->verb == ControlCommand::Verb::Scenario);
        QVERIFY(scenario.command->scenario == Simulator::Scenario::RefusesSector);
        QCOMPARE(scenario.command->number, 3);
        const FaultEntry restart =
            Simulator::ParseFault("{\"command\":\"restart 2\",\"when\":{\"after\":5}}");
        QVERIFY(restart.command && restart.command->verb == ControlCommand::Verb::Restart);
        QCOMPARE(restart.command->number, 2);
    }

    void OneFault() { QVERIFY(Simulator::ParseFault(" {\"fault\": \"drop\"} ").fault == Fault::Drop); }

    void OneFaultThatIsWrong()
    {
        try {
            Simulator::ParseFault("{\"fault\": \"drop\", \"length\": 0}");
            QFAIL("no error");
        } catch (const Simulator::JsonError& error) {
            QCOMPARE(error.what(), "line 1: \"length\": must be a whole number from 1 to 1024");
        }
    }

    void LimitsAreAllowed()
    {
        for (const char* json :
             {"{\"fault\":\"slow\",\"delay\":0}", "{\"fault\":\"slow\",\"delay\":600000}",
              "{\"fault\":\"truncated\",\"length\":0}", "{\"fault\":\"truncated\",\"length\":1024}",
              "{\"fault\":\"split\",\"pause\":0}", "{\"fault\":\"split\",\"pause\":60000}",
              "{\"fault\":\"flip\",\"position\":-1024,\"mask\":1}",
              "{\"fault\":\"flip\",\"position\":1023,\"mask\":255}",
              "{\"fault\":\"hang-up\",\"line-back-in\":86400000}",
              "{\"fault\":\"silent\",\"count\":1000000,\"when\":{\"from\":1000000,\"after\":86399999,"
              "\"until\":86400000,\"probability\":1,\"seed\":2147483647}}",
              "{\"fault\":\"silent\",\"when\":{\"probability\":0,\"seed\":0}}",
              "{\"fault\":\"hang-up\",\"count\":1}"}) {
            try {
                Simulator::ParseFault(json);
            } catch (const Simulator::JsonError& error) {
                QFAIL(error.what());
            }
        }
        const QByteArray longest(2048, 'a');
        QCOMPARE(
            Simulator::ParseFault("{\"fault\":\"garbage-after\",\"bytes\":\"" + longest + "\"}").bytes.size(),
            1024);
    }

    /// The limits that the schema knows are tested below.
    void LimitsAreKept_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QByteArray>("key");
        const auto row = [](const char* name, const char* json, const char* key) {
            QTest::newRow(name) << QByteArray(json) << QByteArray(key);
        };
        row("delay negative", "{\"fault\":\"slow\",\"delay\":-1}", "delay");
        row("delay broken", "{\"fault\":\"slow\",\"delay\":1.5}", "delay");
        row("delay as a text", "{\"fault\":\"slow\",\"delay\":\"5\"}", "delay");
        row("delay null", "{\"fault\":\"slow\",\"delay\":null}", "delay");
        row("delay enormous", "{\"fault\":\"slow\",\"delay\":1e300}", "delay");
        row("half a byte", "{\"fault\":\"garbage-after\",\"bytes\":\"5\"}", "bytes");
        row("no bytes", "{\"fault\":\"garbage-after\",\"bytes\":\"\"}", "bytes");
        row("no digits", "{\"fault\":\"garbage-after\",\"bytes\":\"0x\"}", "bytes");
        row("bytes behind a line", "{\"fault\":\"garbage-after\",\"bytes\":\"55\\n\"}", "bytes");
        row("bytes as a number", "{\"fault\":\"garbage-after\",\"bytes\":55}", "bytes");
        row("never", "{\"fault\":\"drop\",\"count\":0}", "count");
        row("too often", "{\"fault\":\"drop\",\"count\":1000001}", "count");
        row("unknown request", "{\"fault\":\"drop\",\"when\":{\"request\":\"q\"}}", "request");
        row("two letters", "{\"fault\":\"drop\",\"when\":{\"request\":\"sW\"}}", "request");
        row("no letter", "{\"fault\":\"drop\",\"when\":{\"request\":\"\"}}", "request");
        row("seed for nothing", "{\"fault\":\"drop\",\"when\":{\"seed\":1}}", "seed");
        row("over at once", "{\"fault\":\"drop\",\"when\":{\"until\":0}}", "until");
        row("over before", "{\"fault\":\"drop\",\"when\":{\"after\":5,\"until\":5}}", "until");
        row("until for a moment", "{\"fault\":\"hang-up\",\"when\":{\"until\":5}}", "until");
        row("often by the clock", "{\"command\":\"mode 1\",\"count\":2,\"when\":{\"after\":1}}", "count");
        row("when is a number", "{\"fault\":\"drop\",\"when\":5}", "when");
        row("comment is a number", "{\"fault\":\"drop\",\"comment\":5}", "comment");
        row("no such fault", "{\"fault\":\"loud\"}", "fault");
        row("none", "{\"fault\":\"none\"}", "fault");
        row("fault is a number", "{\"fault\":5}", "fault");
        row("no such command", "{\"command\":\"jump\"}", "command");
        row("command of the input", "{\"command\":\"quit\"}", "command");
        row("no such mode", "{\"command\":\"restart 4\"}", "command");
        row("no such scenario", "{\"command\":\"scenario loud\"}", "command");
        row("command is an array", "{\"command\":[]}", "command");
        row("value of another fault", "{\"fault\":\"drop\",\"delay\":5}", "delay");
        row("value of a command", "{\"command\":\"mode 1\",\"length\":5}", "length");
        row("unknown key", "{\"fault\":\"drop\",\"lenght\":5}", "lenght");
        row("unknown condition", "{\"fault\":\"drop\",\"when\":{\"nth\":5}}", "nth");
    }

    void LimitsAreKept()
    {
        QFETCH(QByteArray, json);
        QFETCH(QByteArray, key);
        // The key that is wrong stands on a line of its own.
        const QByteArray wrongKey = '"' + key + "\":";
        const QByteArray content = "{\"faults\": [\n" + json.replace(wrongKey, '\n' + wrongKey) + "]}";
        const QByteArray error = ErrorOf(content);
        QVERIFY2(error.startsWith("FILE, line 3: \"" + key + "\": "), error.constData());
    }

    void Errors_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("error");
        const auto row = [](const char* name, const char* content, const char* error) {
            QTest::newRow(name) << QByteArray(content) << QByteArray(error);
        };
        row("nothing", "", "FILE, line 1: this is not valid JSON: illegal value");
        row("cut off", "{\"faults\": [\n{\"fault\": \"dr",
            "FILE, line 2: this is not valid JSON: unterminated string");
        row("comma missing", "{\n\"faults\": []\n\"comment\": \"\"}",
            "FILE, line 3: this is not valid JSON: unterminated object");
        row("more behind it", "{\"faults\": []}\n{}",
            "FILE, line 2: this is not valid JSON: garbage at the end of the document");
        row("binary",
            "\x7F"
            "ELF\x02\x01",
            "FILE, line 1: this is not valid JSON: illegal value");
        row("no UTF-8", "{\"faults\": [],\n\"comment\": \"\xFF\"}",
            "FILE, line 2: this is not valid JSON: invalid UTF8 string");
        row("array", "[]", "FILE, line 1: must be an object in braces");
        row("faults missing", "\n{}", "FILE, line 2: \"faults\" is missing");
        row("faults are an object", "{\n\"faults\": {}}",
            "FILE, line 2: \"faults\": must be an array of up to 1000 objects");
        row("fault is a number", "{\"faults\": [\n{\"fault\": \"drop\"},\n5]}",
            "FILE, line 3: each of \"faults\" must be an object in braces");
        row("empty fault", "{\"faults\": [\n{}]}",
            "FILE, line 2: a fault needs either \"fault\" or \"command\"");
        row("fault and command", "{\"faults\": [\n{\"fault\": \"drop\", \"command\": \"unplug\"}]}",
            "FILE, line 2: a fault needs either \"fault\" or \"command\"");
        row("key twice", "{\"faults\": [],\n\"faults\": []}",
            "FILE, line 2: \"faults\": the key is there twice; keep one");
        row("other key", "{\"faults\": [],\n\"seed\": 1}",
            "FILE, line 2: \"seed\": there is no such key here; there may be faults, comment");
        row("value of another fault", "{\"faults\": [{\"fault\": \"split\",\n\"delay\": 1}]}",
            "FILE, line 2: \"delay\": there is no such key here; there may be fault, length, pause, when, "
            "count, "
            "comment");
    }

    void Errors()
    {
        QFETCH(QByteArray, content);
        QTEST(ErrorOf(content), "error");
    }

    void ErrorsAreOneLine()
    {
        const QByteArray error = ErrorOf("{\"faults\": [], \"" + QByteArray(5000, 'x') + "\\n\\u001b\": 1}");
        QVERIFY2(error.startsWith("FILE, line 1: \"xxx") && error.size() < 200, error.constData());
        const QByteArray command =
            ErrorOf("{\"faults\": [{\"command\": \"a\\u0007" + QByteArray(5000, 'x') + "\"}]}");
        QVERIFY2(command.startsWith("FILE, line 1: \"command\": no command \"a?xxx") && command.size() < 300,
                 command.constData());
    }

    void TooMany()
    {
        const QByteArray fault("{\"fault\":\"drop\"}");
        const QByteArrayList most = QVector<QByteArray>(1000, fault).toList();
        QCOMPARE(ErrorOf("{\"faults\":[" + most.join(',') + "]}"), QByteArray());
        QCOMPARE(ErrorOf("{\"faults\":[" + most.join(',') + ',' + fault + "]}"),
                 QByteArray("FILE, line 1: \"faults\": must be an array of up to 1000 objects"));
    }

    void FileThatCannotBeRead()
    {
        const QTemporaryDir folder;
        const auto error = [](const QString& path) { return ErrorOfPath(Simulator::LoadFaults, path); };
        QCOMPARE(error(folder.filePath(QStringLiteral("missing"))),
                 QByteArray("cannot read the faults FILE: No such file or directory"));
        QCOMPARE(error(folder.path()), QByteArray("cannot read the faults FILE: it is no file; name a file"));
        QCOMPARE(error(QStringLiteral("/dev/zero")),
                 QByteArray("cannot read the faults FILE: it is no file; name a file"));
    }

    void FileThatIsTooLong()
    {
        const QByteArray fault("{\"faults\":[]}");
        QCOMPARE(ErrorOf(fault + QByteArray(1048576 - fault.size(), ' ')), QByteArray());
        QCOMPARE(ErrorOf(fault + QByteArray(1048577 - fault.size(), ' ')),
                 QByteArray("cannot read the faults FILE: it has more than 1048576 bytes"));
    }

    void ExampleOfTheDocument()
    {
        QCOMPARE(Simulator::ParseFaults(ExampleOf(FAULTS_DOCUMENT)).size(), std::size_t(5));
    }

    void DocumentDescribesEveryKey()
    {
        const QByteArray document = ContentOf(FAULTS_DOCUMENT);
        const QMap<QString, QJsonObject> faults = SchemaFaults();
        for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
            QVERIFY2(document.contains("\n| `" + fault.key().toUtf8() + "` | "), qPrintable(fault.key()));
            for (const QString& key : fault.value().keys()) {
                QVERIFY2(document.contains('`' + key.toUtf8() + '`'), qPrintable(key));
            }
        }
    }

    void SchemaAllowsWhatIsAllowed_data()
    {
        QTest::addColumn<QString>("fault");
        for (const Simulator::NamedFault& fault : Simulator::Faults) {
            if (fault.fault != Fault::None) {
                QTest::newRow(fault.name) << QString::fromLatin1(fault.name);
            }
        }
    }

    /// Each fault accepts the keys that the schema gives it, and no others.
    void SchemaAllowsWhatIsAllowed()
    {
        QFETCH(QString, fault);
        const QMap<QString, QJsonObject> faults = SchemaFaults();
        QCOMPARE(faults.size(), 13);
        const QMap<QString, QJsonValue> values{
            {QStringLiteral("delay"), 1},        {QStringLiteral("length"), 1},
            {QStringLiteral("position"), 1},     {QStringLiteral("mask"), 1},
            {QStringLiteral("pause"), 1},        {QStringLiteral("bytes"), QStringLiteral("00")},
            {QStringLiteral("line-back-in"), 1}, {QStringLiteral("when"), QJsonObject()},
            {QStringLiteral("count"), 1},        {QStringLiteral("comment"), QStringLiteral("text")}};
        for (auto value = values.begin(); value != values.end(); ++value) {
            const QJsonObject json{{QStringLiteral("fault"), fault}, {value.key(), value.value()}};
            QVERIFY2(IsAccepted(json) == faults.value(fault).contains(value.key()), qPrintable(value.key()));
        }
    }

    void SchemaKeepsTheLimits_data() { SchemaAllowsWhatIsAllowed_data(); }

    /// A value that has limits in the schema has the same limits in the parser.
    void SchemaKeepsTheLimits()
    {
        QFETCH(QString, fault);
        const QJsonObject properties = SchemaFaults().value(fault);
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            const QJsonObject limits = Resolved(property.value().toObject());
            if (!limits.contains(QLatin1String("minimum")) || property.key() == QLatin1String("count")) {
                continue;
            }
            const int lowest = limits.value(QLatin1String("minimum")).toInt();
            const int highest = limits.value(QLatin1String("maximum")).toInt();
            const auto isAccepted = [&](int value) {
                return IsAccepted({{QStringLiteral("fault"), fault}, {property.key(), value}});
            };
            QVERIFY2(isAccepted(lowest) && isAccepted(highest), qPrintable(property.key()));
            QVERIFY2(!isAccepted(lowest - 1) && !isAccepted(highest + 1), qPrintable(property.key()));
        }
    }

    void SchemaKeepsTheLimitsOfConditions_data()
    {
        QTest::addColumn<int>("lowest");
        QTest::addColumn<double>("highest");
        const QJsonObject conditions = Inside(SchemaDefinitions(), {"when", "properties"});
        for (auto condition = conditions.begin(); condition != conditions.end(); ++condition) {
            const QJsonObject limits = condition.value().toObject();
            if (limits.contains(QLatin1String("minimum"))) {
                QTest::newRow(qPrintable(condition.key()))
                    << limits.value(QLatin1String("minimum")).toInt()
                    << limits.value(QLatin1String("maximum")).toDouble();
            }
        }
    }

    void SchemaKeepsTheLimitsOfConditions()
    {
        QFETCH(int, lowest);
        QFETCH(double, highest);
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        const auto isAccepted = [&key](double value) {
            QJsonObject when{{key, value}};
            if (key == QLatin1String("seed")) {
                when.insert(QStringLiteral("probability"), 1);
            }
            return IsAccepted(
                {{QStringLiteral("fault"), QStringLiteral("drop")}, {QStringLiteral("when"), when}});
        };
        QVERIFY(isAccepted(lowest) && isAccepted(highest));
        QVERIFY(!isAccepted(lowest - 1) && !isAccepted(highest + 1));
    }
};

QTEST_APPLESS_MAIN(TestFaultFile)
#include "tst_faultfile.moc"
