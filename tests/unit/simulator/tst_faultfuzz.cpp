#include <QtTest>

#include "jsonfuzz.h"
#include "simulator/faults/faultfile.h"
#include "simulator/faults/faultplan.h"
#include "simulator/text/jsonerror.h"

using Simulator::FaultEntry;

namespace
{

const QByteArrayList Seeds{
    R"({"faults": [{"fault": "bad-crc", "when": {"request": "s", "from": 3}, "count": 1}, {"fault": "refuse"}]})",
    R"({
  "comment": "Ünïcode",
  "faults": [
    {"fault": "slow", "delay": 250, "when": {"probability": 0.5, "seed": 7}},
    {"fault": "hang-up", "line-back-in": 100, "when": {"after": 1000}},
    {"fault": "silent", "when": {"after": 10, "until": 20}}
  ]
})",
    R"({"faults": [
{"fault": "flip", "position": -2, "length": 2, "mask": 255}, {"fault": "drop", "position": 1},
{"fault": "split", "length": 4, "pause": 7}, {"fault": "garbage-before", "bytes": "55AA06"}]})",
    R"({"faults": [{"command": "scenario refuses-sector 3", "comment": "a \"quoted\" \\ text"},
{"command": "restart 2", "when": {"request": "P", "from": 2}, "count": 5}, {"command": "fault slow 20"}]})",
};

const QByteArrayList Words =
    JsonWords +
    QByteArrayList{"\"faults\"", "\"fault\":", "\"when\":", "\"count\":", "\"delay\":", "\"command\":"};

/// Empty when the text makes faults within their limits, or an error with a place inside it.
QByteArray ObjectionTo(const QByteArray& text, int* validCount)
{
    try {
        const std::vector<FaultEntry> entries = Simulator::ParseFaults(text);
        ++*validCount;
        for (const FaultEntry& entry : entries) {
            const bool isWithin = entry.length >= 0 && entry.length <= 1024 && entry.mask >= 1 &&
                                  entry.mask <= 255 && entry.delay.count() >= 0 &&
                                  entry.bytes.size() <= 1024 && entry.count.value_or(1) >= 1 &&
                                  entry.trigger.from.value_or(1) >= 1 && entry.trigger.after.count() >= 0;
            if (!isWithin) {
                return "a value beyond its limits";
            }
        }
        Simulator::FaultPlan plan;
        if (!plan.Add(entries, Simulator::TimePoint())) {
            return "more faults than a plan takes";
        }
        plan.HappeningAt("s", Simulator::TimePoint());
        plan.TakeDue(Simulator::TimePoint());
    } catch (const Simulator::JsonError& error) {
        return ObjectionTo(error, text);
    }
    return {};
}

} // namespace

class TestFaultFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SeedsAreValid();
    void MutatedFiles_data();
    void MutatedFiles();
    void EveryBeginning();
    void NoiseOfAllBytes();
    void DeepTexts_data();
    void DeepTexts();
};

void TestFaultFuzz::SeedsAreValid()
{
    JsonFuzz::VerifySeeds(Seeds, ObjectionTo);
}

void TestFaultFuzz::MutatedFiles_data()
{
    JsonFuzz::AddRows(Seeds);
}

void TestFaultFuzz::MutatedFiles()
{
    QFETCH(QByteArray, text);
    JsonFuzz::VerifyMutations(text, Words, ObjectionTo);
}

void TestFaultFuzz::EveryBeginning()
{
    JsonFuzz::VerifyBeginnings(Seeds, ObjectionTo);
}

void TestFaultFuzz::NoiseOfAllBytes()
{
    JsonFuzz::VerifyNoise(ObjectionTo);
}

void TestFaultFuzz::DeepTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("brackets") << QByteArray(1000000, '[');
    QTest::newRow("braces") << QByteArray("{\"a\":").repeated(200000);
    QTest::newRow("closed") << QByteArray(1000, '[') + QByteArray(1000, ']');
    QTest::newRow("closed in a fault")
        << "{\"faults\":[{\"fault\":" + QByteArray(1000, '[') + QByteArray(1000, ']') + "}]}";
    QTest::newRow("keys, closed") << "{\"comment\":" + QByteArray("{\"a\":").repeated(1000) + '1' +
                                         QByteArray(1001, '}');
    QTest::newRow("wide") << "{\"faults\":[" + QByteArray("0,").repeated(500000) + "0]}";
    QTest::newRow("too long") << QByteArray(2000000, ' ');
}

void TestFaultFuzz::DeepTexts()
{
    QFETCH(QByteArray, text);
    int validCount = 0;
    QCOMPARE(ObjectionTo(text, &validCount), QByteArray());
    QCOMPARE(validCount, 0);
}

QTEST_APPLESS_MAIN(TestFaultFuzz)
#include "tst_faultfuzz.moc"
