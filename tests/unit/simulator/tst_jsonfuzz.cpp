#include <algorithm>
#include <array>
#include <random>

#include <QtTest>

#include "simulator/faults/faultfile.h"
#include "simulator/faults/faultplan.h"
#include "simulator/line/player.h"
#include "simulator/line/recordingfile.h"
#include "simulator/text/jsonerror.h"
#include "support/textmutator.h"

using Simulator::FaultEntry;
using Simulator::RecordedEntry;
using Simulator::TimePoint;

namespace
{

/// Words of JSON, and some that JSON does not have.
const QByteArrayList JsonWords{"{",
                               "}",
                               "[",
                               "]",
                               ",",
                               ":",
                               "\"",
                               "\\",
                               "\n",
                               QByteArray(1, '\0'),
                               "null",
                               "-1",
                               "1e308",
                               "1e999",
                               "99999999999999999999",
                               "0.5",
                               "\\u0000",
                               "\xFF",
                               "\xEF\xBB\xBF",
                               "[[[[[[[[",
                               "{\"a\":",
                               "true"};

const QByteArrayList FaultSeeds{
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

const QByteArrayList RecordingSeeds{
    R"({"exchanges": [{"request": "73f44e", "answer": "00fed10e"}, {"request": "57122A"}]})",
    R"({
  "comment": "Ünïcode, a \"quoted\" \\ text",
  "exchanges": [
    {"request": "500a000005ffffffffc327", "answer": "06c660"},
    {"request": "53966a", "answer": "06c660"},
    {"unasked": "0af73370", "after": 200},
    {"unasked": "05024741d600f300"}
  ]
})",
    R"({"exchanges": [
{"request": "53"}, {"after": 600000, "unasked": "00"},
{"answer": "214334", "request": "68aeed"}, {"request": "65033c", "answer": "00000000000000000000000000000000"}]})",
};

/// Returns nothing when an error tells its place inside the text, in one line that is not too long.
QByteArray ObjectionTo(const Simulator::JsonError& error, const QByteArray& text)
{
    const QByteArray sentence(error.what());
    const bool hasPlace = error.Line() >= 1 && error.Line() <= text.count('\n') + 1 &&
                          sentence.startsWith("line " + QByteArray::number(error.Line()) + ": ");
    const bool isShort = sentence.size() < 1500 && !sentence.contains('\n') && sentence.size() > 15;
    return hasPlace && isShort ? QByteArray() : "the error \"" + sentence + '"';
}

/// Returns nothing when the text is read into faults within their limits, or into an error with its place.
QByteArray ObjectionToFaults(const QByteArray& text, int* validCount)
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
        plan.CollectDue(Simulator::TimePoint());
    } catch (const Simulator::JsonError& error) {
        return ObjectionTo(error, text);
    }
    return {};
}

bool IsWithinLimits(const RecordedEntry& entry)
{
    const bool hasBytes = entry.IsUnasked() ? !entry.bytes.isEmpty() : entry.after.count() == 0;
    return hasBytes && entry.request.size() <= 2048 && entry.bytes.size() <= 2048 &&
           entry.after.count() >= 0 && entry.after.count() <= 600000;
}

/// Asks for what was recorded, and for what was not recorded.
void Play(const std::vector<RecordedEntry>& recording)
{
    Simulator::Player player(recording);
    TimePoint now;
    for (const RecordedEntry& entry : recording) {
        player.Answer(entry.IsUnasked() ? QByteArray("s") : entry.request, now);
        now += std::chrono::milliseconds(300);
        player.CollectFrames(now);
    }
}

/// Returns nothing when the text is read into a recording within its limits, or into an error with its place.
QByteArray ObjectionToRecording(const QByteArray& text, int* validCount)
{
    try {
        const std::vector<RecordedEntry> recording = Simulator::ParseRecording(text);
        ++*validCount;
        if (recording.empty() || recording.front().IsUnasked()) {
            return "a recording that begins with no request";
        }
        if (!std::all_of(recording.begin(), recording.end(), IsWithinLimits)) {
            return "a value beyond its limits";
        }
        Play(recording);
    } catch (const Simulator::JsonError& error) {
        return ObjectionTo(error, text);
    }
    return {};
}

/// A format that is read from JSON: valid seeds, and its own words for the mutations. The objection to a text
/// is empty when everything is as it should be; it also counts the valid texts.
struct Format {
    const char* name;
    QByteArrayList seeds;
    QByteArrayList words;
    QByteArray (*objectionTo)(const QByteArray& text, int* validCount);
};

const std::array<Format, 2> Formats{
    {{"faults",
      FaultSeeds,
      {"\"faults\"", "\"fault\":", "\"when\":", "\"count\":", "\"delay\":", "\"command\":"},
      ObjectionToFaults},
     {"recording",
      RecordingSeeds,
      {"\"exchanges\"", "\"request\":", "\"answer\":", "\"unasked\":", "\"after\":", "\"00\"", "\"0\"",
       "600001"},
      ObjectionToRecording}}};

} // namespace

Q_DECLARE_METATYPE(const Format*)

class TestJsonFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SeedsAreValid_data()
    {
        QTest::addColumn<const Format*>("format");
        QTest::addColumn<QByteArray>("text");
        for (const Format& format : Formats) {
            for (int i = 0; i < format.seeds.size(); ++i) {
                QTest::addRow("%s, file %d", format.name, i) << &format << format.seeds.at(i);
            }
        }
    }

    void SeedsAreValid()
    {
        QFETCH(const Format*, format);
        QFETCH(QByteArray, text);
        int validCount = 0;
        QCOMPARE(format->objectionTo(text, &validCount), QByteArray());
        QCOMPARE(validCount, 1);
    }

    void MutatedFiles_data() { SeedsAreValid_data(); }

    void MutatedFiles()
    {
        constexpr int Inputs = 4000;
        QFETCH(const Format*, format);
        QFETCH(QByteArray, text);
        int validCount = 0;
        for (int i = 0; i < Inputs; ++i) {
            const QByteArray mutated =
                TextMutator(static_cast<quint32>(i), JsonWords + format->words).Mutated(text);
            const QByteArray objection = format->objectionTo(mutated, &validCount);
            QVERIFY2(objection.isEmpty(), (objection + " for " + mutated).constData());
        }
        // If either valid or invalid texts are rare, the mutations are no good.
        QVERIFY2(validCount > Inputs / 100 && validCount < Inputs / 2,
                 QByteArray::number(validCount).constData());
    }

    void EveryBeginning_data() { SeedsAreValid_data(); }

    void EveryBeginning()
    {
        QFETCH(const Format*, format);
        QFETCH(QByteArray, text);
        int validCount = 0;
        for (int size = 0; size < text.size(); ++size) {
            const QByteArray objection = format->objectionTo(text.left(size), &validCount);
            QVERIFY2(objection.isEmpty(), (objection + " for " + text.left(size)).constData());
        }
        QCOMPARE(validCount, 0);
    }

    void NoiseOfAllBytes()
    {
        std::mt19937 random(1);
        int validCount = 0;
        for (int i = 0; i < 1000; ++i) {
            QByteArray noise;
            const int size = static_cast<int>(random() % 300);
            for (int j = 0; j < size; ++j) {
                noise.append(static_cast<char>(random() & 0xFF));
            }
            for (const Format& format : Formats) {
                QCOMPARE(format.objectionTo(noise, &validCount), QByteArray());
            }
        }
        QCOMPARE(validCount, 0);
    }

    void LongTexts_data()
    {
        QTest::addColumn<const Format*>("format");
        QTest::addColumn<QByteArray>("text");
        const Format* const faults = &Formats[0];
        const Format* const recording = &Formats[1];
        QTest::newRow("faults, brackets") << faults << QByteArray(1000000, '[');
        QTest::newRow("faults, braces") << faults << QByteArray("{\"a\":").repeated(200000);
        QTest::newRow("faults, closed") << faults << QByteArray(1000, '[') + QByteArray(1000, ']');
        QTest::newRow("faults, closed in a fault")
            << faults << "{\"faults\":[{\"fault\":" + QByteArray(1000, '[') + QByteArray(1000, ']') + "}]}";
        QTest::newRow("faults, keys, closed")
            << faults << "{\"comment\":" + QByteArray("{\"a\":").repeated(1000) + '1' + QByteArray(1001, '}');
        QTest::newRow("faults, wide")
            << faults << "{\"faults\":[" + QByteArray("0,").repeated(500000) + "0]}";
        QTest::newRow("faults, too long") << faults << QByteArray(2000000, ' ');
        const QByteArray deep = QByteArray(1000, '[') + QByteArray(1000, ']') + ',';
        QTest::newRow("recording, brackets") << recording << QByteArray(16000000, '[');
        QTest::newRow("recording, braces") << recording << QByteArray("{\"a\":").repeated(3000000);
        QTest::newRow("recording, deep and wide")
            << recording << "{\"exchanges\":[" + deep.repeated(2000) + "0]}";
        QTest::newRow("recording, numbers")
            << recording << "{\"exchanges\":[" + QByteArray("0,").repeated(8000000) + "0]}";
        QTest::newRow("recording, objects")
            << recording << "{\"exchanges\":[" + QByteArray("{},").repeated(5000000) + "0]}";
        QTest::newRow("recording, comment of numbers")
            << recording << "{\"comment\":[" + QByteArray("0,").repeated(8000000) + "0]}";
        QTest::newRow("recording, too long") << recording << QByteArray(17000000, ' ');
    }

    void LongTexts()
    {
        QFETCH(const Format*, format);
        QFETCH(QByteArray, text);
        int validCount = 0;
        QCOMPARE(format->objectionTo(text, &validCount), QByteArray());
        QCOMPARE(validCount, 0);
    }
};

QTEST_APPLESS_MAIN(TestJsonFuzz)
#include "tst_jsonfuzz.moc"
