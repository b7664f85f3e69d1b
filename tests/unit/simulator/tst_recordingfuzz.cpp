#include <algorithm>

#include <QtTest>

#include "jsonfuzz.h"
#include "simulator/line/player.h"
#include "simulator/line/recordingfile.h"
#include "simulator/text/jsonerror.h"

using Simulator::RecordedEntry;
using Simulator::TimePoint;

namespace
{

const QByteArrayList Seeds{
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

const QByteArrayList Words =
    JsonWords + QByteArrayList{"\"exchanges\"", "\"request\":", "\"answer\":", "\"unasked\":",
                               "\"after\":",    "\"00\"",       "\"0\"",       "600001"};

bool IsWithinLimits(const RecordedEntry& entry)
{
    const bool hasBytes = entry.IsUnasked() ? !entry.bytes.isEmpty() : entry.after.count() == 0;
    return hasBytes && entry.request.size() <= 2048 && entry.bytes.size() <= 2048 &&
           entry.after.count() >= 0 && entry.after.count() <= 600000;
}

/// Asks for what was recorded, and for what was not.
void Play(const std::vector<RecordedEntry>& recording)
{
    Simulator::Player player(recording);
    TimePoint now;
    for (const RecordedEntry& entry : recording) {
        player.Answer(entry.IsUnasked() ? QByteArray("s") : entry.request, now);
        now += std::chrono::milliseconds(300);
        player.TakeFrames(now);
    }
}

/// Empty when the text makes a recording within its limits, or an error with a place inside it.
QByteArray ObjectionTo(const QByteArray& text, int* validCount)
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

} // namespace

class TestRecordingFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SeedsAreValid();
    void MutatedFiles_data();
    void MutatedFiles();
    void EveryBeginning();
    void NoiseOfAllBytes();
    void LongTexts_data();
    void LongTexts();
};

void TestRecordingFuzz::SeedsAreValid()
{
    JsonFuzz::VerifySeeds(Seeds, ObjectionTo);
}

void TestRecordingFuzz::MutatedFiles_data()
{
    JsonFuzz::AddRows(Seeds);
}

void TestRecordingFuzz::MutatedFiles()
{
    QFETCH(QByteArray, text);
    JsonFuzz::VerifyMutations(text, Words, ObjectionTo);
}

void TestRecordingFuzz::EveryBeginning()
{
    JsonFuzz::VerifyBeginnings(Seeds, ObjectionTo);
}

void TestRecordingFuzz::NoiseOfAllBytes()
{
    JsonFuzz::VerifyNoise(ObjectionTo);
}

void TestRecordingFuzz::LongTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray deep = QByteArray(1000, '[') + QByteArray(1000, ']') + ',';
    QTest::newRow("brackets") << QByteArray(16000000, '[');
    QTest::newRow("braces") << QByteArray("{\"a\":").repeated(3000000);
    QTest::newRow("deep and wide") << "{\"exchanges\":[" + deep.repeated(2000) + "0]}";
    QTest::newRow("numbers") << "{\"exchanges\":[" + QByteArray("0,").repeated(8000000) + "0]}";
    QTest::newRow("objects") << "{\"exchanges\":[" + QByteArray("{},").repeated(5000000) + "0]}";
    QTest::newRow("comment of numbers") << "{\"comment\":[" + QByteArray("0,").repeated(8000000) + "0]}";
    QTest::newRow("too long") << QByteArray(17000000, ' ');
}

void TestRecordingFuzz::LongTexts()
{
    QFETCH(QByteArray, text);
    int validCount = 0;
    QCOMPARE(ObjectionTo(text, &validCount), QByteArray());
    QCOMPARE(validCount, 0);
}

QTEST_APPLESS_MAIN(TestRecordingFuzz)
#include "tst_recordingfuzz.moc"
