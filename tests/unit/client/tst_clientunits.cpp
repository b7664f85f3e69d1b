#include <sys/stat.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

#include <Vesmar/monitoringresults.h>

#include <VesmarClient/functions.h>

#include "client/catalogue/conversions.h"
#include "client/catalogue/units.h"

using namespace VesmarClient;

namespace
{

const QByteArray Good = R"({
  "rpe": {"voltage": {"unit": "V", "decimals": 1}, "current": {"unit": "A"}},
  "monitoring": {"frequency": {"unit": "Hz", "decimals": 0}, "ULN": {"decimals": 2}}
})";

QString Unit(Function function, int reading)
{
    const ReadingInfo info = Functions::find(function).readings.at(reading);
    return QStringLiteral("%1 %2").arg(info.unit).arg(info.decimals);
}

QByteArray ContentOf(const char* path)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The functions that have readings.
QVector<FunctionInfo> EveryFunction()
{
    return Functions::all() + QVector<FunctionInfo>{Functions::find(Function::Monitoring)};
}

QStringList ReadingsOf(const FunctionInfo& function)
{
    QStringList names;
    for (const ReadingInfo& reading : function.readings) {
        names.append(reading.identifier);
    }
    return names;
}

void AddDamage(const char* name, const QByteArray& json, int line, const char* reason)
{
    QTest::newRow(name) << json << QStringLiteral("line %1: %2.").arg(line).arg(QString::fromLatin1(reason));
}

} // namespace

class TestClientUnits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void UnitsAreShown();
    void UnitsAreReplacedAsAWhole();
    void DamagedFileIsTold_data();
    void DamagedFileIsTold();
    void UnreadableFileIsTold();
    void DefaultFileIsReadOnlyIfItIsThere();
    void UnitsAreReplacedWhileTheyAreUsed();
    void EveryReadingIsDocumented();
    void ExampleIsAsDocumented();

private:
    Failure Read(const QByteArray& json);
    QString Path() const { return _folder.filePath(QStringLiteral("units.json")); }

    QTemporaryDir _folder;
};

/// No units are known when a test begins.
void TestClientUnits::init()
{
    QVERIFY(!Read("{}").isFailure());
}

Failure TestClientUnits::Read(const QByteArray& json)
{
    QFile file(Path());
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size()) {
        return {};
    }
    file.close();
    return Functions::readUnits(Path());
}

void TestClientUnits::UnitsAreShown()
{
    QCOMPARE(Unit(Function::RPE, 1), QStringLiteral(" -1"));
    QVERIFY(!Read(Good).isFailure());
    QCOMPARE(Unit(Function::RPE, 0), QStringLiteral(" -1"));
    QCOMPARE(Unit(Function::RPE, 1), QStringLiteral("V 1"));
    QCOMPARE(Unit(Function::RPE, 2), QStringLiteral("A -1"));
    const Result result = ResultOf(Vesmar::MonitoringResults(230.123F, 0.25F, 49.98F), QDateTime());
    QCOMPARE(result.reading(QStringLiteral("ULN")).text(), QStringLiteral("230.12"));
    QCOMPARE(result.reading(QStringLiteral("UNPE")).text(), QStringLiteral("0.25"));
    QCOMPARE(result.reading(QStringLiteral("frequency")).text(), QStringLiteral("50 Hz"));
}

void TestClientUnits::UnitsAreReplacedAsAWhole()
{
    QVERIFY(!Read(Good).isFailure());
    QVERIFY(!Read(R"({"it": {"current": {"unit": "mA"}}})").isFailure());
    QCOMPARE(Unit(Function::IT, 0), QStringLiteral("mA -1"));
    QCOMPARE(Unit(Function::RPE, 1), QStringLiteral(" -1"));
}

void TestClientUnits::DamagedFileIsTold_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("damage");
    const char* const noUnit = "\"unit\" has to be a text of 1 to 16 characters";
    const char* const noDecimals = "\"decimals\" has to be a whole number from 0 to 6";
    AddDamage("empty", "", 1, "illegal value");
    AddDamage("cut", "{\n \"rpe\": {\n", 3, "unterminated object");
    AddDamage("text behind", "{}\n\n}", 3, "garbage at the end of the document");
    AddDamage("array", "[]", 1, "it has to be an object of functions");
    AddDamage("function", "{\"it\": {},\n\"volts\": {}}", 2, "there is no function \"volts\"");
    AddDamage("function that is no object", "{\n\"it\":\n3}", 2, "\"it\" has to be an object of readings");
    AddDamage("reading", "{\"it\": {\n\"voltage\": {}}}", 2, "\"it\" has no reading \"voltage\"");
    AddDamage("reading that is no object", "{\"it\": {\n\"current\": \"mA\"}}", 2,
              "\"current\" has to be an object with \"unit\" and \"decimals\"");
    AddDamage("field", "{\"it\": {\"current\": {\n\n\"volts\": 1}}}", 3,
              "a reading has \"unit\" and \"decimals\", and no \"volts\"");
    AddDamage("unit that is no text", "{\"it\": {\"current\": {\n\"unit\": 1}}}", 2, noUnit);
    AddDamage("empty unit", "{\"it\": {\"current\": {\"unit\": \"\"}}}", 1, noUnit);
    AddDamage("long unit", "{\"it\": {\"current\": {\"unit\": \"12345678901234567\"}}}", 1, noUnit);
    AddDamage("unit that rings a bell", "{\"it\": {\"current\": {\"unit\": \"\\u0007\"}}}", 1, noUnit);
    AddDamage("many decimals", "{\"it\": {\"current\": {\n\n\n\"decimals\": 7}}}", 4, noDecimals);
    AddDamage("negative decimals", "{\"it\": {\"current\": {\"decimals\": -1}}}", 1, noDecimals);
    AddDamage("half a decimal", "{\"it\": {\"current\": {\"decimals\": 1.5}}}", 1, noDecimals);
    AddDamage("decimals as text", "{\"it\": {\"current\": {\"decimals\": \"1\"}}}", 1, noDecimals);
    AddDamage("function twice", "{\"it\": {},\n\"it\": {}}", 2, "\"it\" is there twice");
    AddDamage("written otherwise", "{\"it\": {},\n\n\"\\u0069t\": {}}", 3, "\"it\" is there twice");
    AddDamage("quotes", "{\"it\\\"{:\": 1}", 1, "there is no function \"it\"{:\"");
}

void TestClientUnits::DamagedFileIsTold()
{
    QFETCH(const QByteArray, json);
    QFETCH(const QString, damage);
    QVERIFY(!Read(Good).isFailure());
    const Failure failure = Read(json);
    QCOMPARE(failure.name, QStringLiteral("units-damaged"));
    QCOMPARE(failure.whatHappened, QStringLiteral("The file of units %1 is damaged, ").arg(Path()) + damage);
    QVERIFY(!failure.nextStep.isEmpty());
    QCOMPARE(Unit(Function::RPE, 1), QStringLiteral("V 1"));
}

void TestClientUnits::UnreadableFileIsTold()
{
    const QString start = QStringLiteral("The file of units %1 cannot be read: ").arg(Path());
    QFile::remove(Path());
    QCOMPARE(Functions::readUnits(Path()).whatHappened, start + QStringLiteral("No such file or directory."));
    QCOMPARE(mkfifo(Path().toLocal8Bit().constData(), 0600), 0);
    QCOMPARE(Functions::readUnits(Path()).whatHappened, start + QStringLiteral("it is not a regular file."));
    QFile::remove(Path());
    const Failure large = Read(Good + QByteArray(64 * 1024, ' '));
    QCOMPARE(large.whatHappened, start + QStringLiteral("it has more than 65536 bytes."));
    QCOMPARE(large.name, QStringLiteral("units-unreadable"));
    QCOMPARE(Functions::readUnits(_folder.path()).name, QStringLiteral("units-unreadable"));
}

void TestClientUnits::DefaultFileIsReadOnlyIfItIsThere()
{
    QVERIFY(!Read(Good).isFailure());
    const UnitsStore good(Path());
    QVERIFY(!good.DefaultFailure().isFailure());
    QCOMPARE(good.Current().size(), 4);
    const UnitsStore absent(_folder.filePath(QStringLiteral("absent.json")));
    QVERIFY(!absent.DefaultFailure().isFailure());
    QVERIFY(Read("{").isFailure());
    const UnitsStore damaged(Path());
    QCOMPARE(damaged.DefaultFailure().name, QStringLiteral("units-damaged"));
    QVERIFY(damaged.Current().isEmpty());
}

void TestClientUnits::UnitsAreReplacedWhileTheyAreUsed()
{
    constexpr int Times = 200;
    int halves = 0;
    std::thread reader([&halves] {
        for (int time = 0; time < Times; ++time) {
            const FunctionInfo function = Functions::find(Function::RPE);
            halves +=
                function.readings.at(1).unit.isEmpty() != function.readings.at(2).unit.isEmpty() ? 1 : 0;
        }
    });
    for (int time = 0; time < Times; ++time) {
        Read(time % 2 == 0 ? Good : QByteArray("{}"));
    }
    reader.join();
    QCOMPARE(halves, 0);
}

void TestClientUnits::EveryReadingIsDocumented()
{
    const QJsonObject schema = QJsonDocument::fromJson(ContentOf(UNITS_SCHEMA)).object();
    const QJsonObject functions = schema.value(QLatin1String("properties")).toObject();
    const QString document = QString::fromUtf8(ContentOf(UNITS_DOCUMENT));
    QCOMPARE(functions.size(), 13);
    for (const FunctionInfo& function : EveryFunction()) {
        QStringList readings = ReadingsOf(function);
        const QString row =
            QStringLiteral("| `%1` | %2 |\n").arg(function.identifier, readings.join(QStringLiteral(", ")));
        QVERIFY2(document.contains(row), qPrintable(row));
        const QJsonObject described = functions.value(function.identifier).toObject();
        readings.sort();
        QCOMPARE(described.value(QLatin1String("properties")).toObject().keys(), readings);
    }
}

void TestClientUnits::ExampleIsAsDocumented()
{
    const QByteArray document = ContentOf(UNITS_DOCUMENT);
    const int begin = document.indexOf("```json\n") + 8;
    const Failure failure = Read(document.mid(begin, document.indexOf("```", begin) - begin));
    QVERIFY2(!failure.isFailure(), qPrintable(failure.whatHappened));
    QCOMPARE(Unit(Function::RPE, 0), QStringLiteral("\u03a9 3"));
}

QTEST_GUILESS_MAIN(TestClientUnits)
#include "tst_clientunits.moc"
