#include "simulator/line/recordingfile.h"

#include "simulator/text/jsonfields.h"
#include "simulator/text/jsonfile.h"

namespace Simulator
{

namespace
{

constexpr JsonKind Kind{"the recording", LongestRecordingFile};
constexpr int MostEntries = 100000;
constexpr int MostBytes = 2048;
constexpr int LongestPause = 600000; // ms

RecordedEntry ParseExchange(const JsonFields& fields)
{
    fields.RefuseOthersThan({QStringLiteral("request"), QStringLiteral("answer")});
    RecordedEntry entry;
    entry.request = *fields.Bytes("request", MostBytes);
    entry.bytes = fields.Bytes("answer", MostBytes).value_or(QByteArray());
    return entry;
}

RecordedEntry ParseUnasked(const JsonFields& fields)
{
    fields.RefuseOthersThan({QStringLiteral("unasked"), QStringLiteral("after")});
    RecordedEntry entry;
    entry.bytes = *fields.Bytes("unasked", MostBytes);
    entry.after = std::chrono::milliseconds(fields.Integer("after", 0, LongestPause).value_or(0));
    return entry;
}

RecordedEntry ParseEntry(const JsonFields& fields, bool isFirst)
{
    if (fields.Has("request") == fields.Has("unasked")) {
        fields.Fail(QStringLiteral("an entry needs either \"request\" or \"unasked\""));
    }
    if (isFirst && fields.Has("unasked")) {
        fields.Fail("unasked", QStringLiteral("the first entry must be a request"));
    }
    return fields.Has("request") ? ParseExchange(fields) : ParseUnasked(fields);
}

} // namespace

std::vector<RecordedEntry> ParseRecording(const QByteArray& json)
{
    const QJsonObject object = ParseJsonObject(json, Kind);
    const JsonLines lines(json);
    const JsonFields fields(object, lines, {});
    fields.RefuseOthersThan({QStringLiteral("exchanges"), QStringLiteral("comment")});
    fields.Text("comment");
    std::vector<RecordedEntry> entries;
    for (const JsonFields& entry : fields.Objects("exchanges", MostEntries)) {
        entries.push_back(ParseEntry(entry, entries.empty()));
    }
    if (entries.empty()) {
        fields.Fail("exchanges", QStringLiteral("there must be at least one"));
    }
    return entries;
}

std::vector<RecordedEntry> LoadRecording(const QString& path)
{
    return LoadJsonFile(path, Kind, ParseRecording);
}

} // namespace Simulator
