#include "simulator/faults/faultfile.h"

#include <array>
#include <limits>

#include "simulator/faults/faultplan.h"
#include "simulator/faults/faults.h"
#include "simulator/text/jsonfields.h"
#include "simulator/text/jsonfile.h"
#include "simulator/text/quoted.h"
#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

using std::chrono::milliseconds;

constexpr JsonKind Kind{"the faults", LongestFaultFile};
constexpr int LongestDelay = 600000;      // ms
constexpr int LongestPause = 60000;       // ms
constexpr int LongestTime = 86400 * 1000; // ms
constexpr int MostBytes = 1024;
constexpr int MostTimes = 1000000;

const char UnknownFault[] = "there is no fault %1; there are %2";

/// A fault and the keys of the values that it may have.
struct FaultForm {
    Fault fault;
    std::array<const char*, 3> keys;
};

constexpr std::array<FaultForm, 13> Forms{{
    {Fault::Silent, {}},
    {Fault::BadCrc, {}},
    {Fault::Refuse, {}},
    {Fault::GarbageBefore, {"bytes"}},
    {Fault::GarbageAfter, {"bytes"}},
    {Fault::Truncated, {"length"}},
    {Fault::WrongLength, {}},
    {Fault::Slow, {"delay"}},
    {Fault::Split, {"length", "pause"}},
    {Fault::Flip, {"position", "length", "mask"}},
    {Fault::Drop, {"position", "length"}},
    {Fault::Double, {"position", "length"}},
    {Fault::HangUp, {"line-back-in"}},
}};

QStringList KeysOf(Fault fault)
{
    QStringList keys{QStringLiteral("fault")};
    for (const FaultForm& form : Forms) {
        for (const char* key : form.keys) {
            if (form.fault == fault && key != nullptr) {
                keys.append(QLatin1String(key));
            }
        }
    }
    return keys;
}

std::optional<milliseconds> Milliseconds(const JsonFields& fields, const char* key, int longest)
{
    const std::optional<int> time = fields.Integer(key, 0, longest);
    return time ? std::optional<milliseconds>(*time) : std::nullopt;
}

Fault ParseKind(const JsonFields& fields)
{
    const QString name = *fields.Text("fault");
    const std::optional<Fault> fault = FindFault(name);
    if (!fault || *fault == Fault::None) {
        QStringList names;
        for (const NamedFault& named : Faults) {
            if (named.fault != Fault::None) {
                names.append(QLatin1String(named.name));
            }
        }
        fields.Fail("fault",
                    QString::fromLatin1(UnknownFault).arg(Quoted(name), names.join(QLatin1String(", "))));
    }
    return *fault;
}

/// Parses a fault and those of its values that are not the usual ones.
FaultEntry ParseValues(const JsonFields& fields)
{
    FaultEntry entry = EntryOf(ParseKind(fields));
    const int shortest = entry.fault == Fault::Truncated ? 0 : 1;
    entry.delay = Milliseconds(fields, "delay", LongestDelay).value_or(entry.delay);
    entry.length = fields.Integer("length", shortest, MostBytes).value_or(entry.length);
    entry.position = fields.Integer("position", -MostBytes, MostBytes - 1).value_or(entry.position);
    entry.mask = fields.Integer("mask", 1, 0xFF).value_or(entry.mask);
    entry.pause = Milliseconds(fields, "pause", LongestPause).value_or(entry.pause);
    entry.lineBackIn = Milliseconds(fields, "line-back-in", LongestTime);
    entry.bytes = fields.Bytes("bytes", MostBytes).value_or(entry.bytes);
    return entry;
}

FaultEntry ParseCommand(const JsonFields& fields)
{
    FaultEntry entry;
    QString reason;
    entry.command = ParseControlCommand(*fields.Text("command"), &reason);
    if (!entry.command) {
        fields.Fail("command", reason);
    }
    return entry;
}

char ParseRequest(const JsonFields& fields)
{
    const QByteArray letter = fields.Text("request")->toUtf8();
    if (letter.size() != 1 || RequestSize(letter.at(0)) == 0) {
        fields.Fail(
            "request",
            QStringLiteral("must be the first letter of a request, one of s W S h e R T V F Z x P r t"));
    }
    return letter.at(0);
}

FaultTrigger ParseTrigger(const JsonFields& fields, int usualSeed)
{
    fields.RefuseOthersThan({QStringLiteral("request"), QStringLiteral("from"), QStringLiteral("after"),
                             QStringLiteral("until"), QStringLiteral("probability"), QStringLiteral("seed")});
    FaultTrigger trigger;
    if (fields.Has("request")) {
        trigger.request = ParseRequest(fields);
    }
    trigger.from = fields.Integer("from", 1, MostTimes);
    trigger.after = Milliseconds(fields, "after", LongestTime).value_or(milliseconds(0));
    trigger.until = Milliseconds(fields, "until", LongestTime);
    trigger.probability = fields.Number("probability", 0, 1);
    trigger.seed =
        static_cast<quint32>(fields.Integer("seed", 0, std::numeric_limits<int>::max()).value_or(usualSeed));
    if (trigger.until && *trigger.until <= trigger.after) {
        fields.Fail("until", QStringLiteral("must be later than \"after\""));
    }
    if (fields.Has("seed") && !trigger.probability) {
        fields.Fail("seed", QStringLiteral("belongs to a \"probability\", which is missing"));
    }
    return trigger;
}

/// Checks that an act that only waits for its time is done once.
void CheckTimedAct(const JsonFields& fields, const FaultEntry& entry)
{
    if (entry.IsTimedAct() && entry.count.value_or(1) != 1) {
        fields.Fail("count", QStringLiteral("without a request, a from or a probability it is done once"));
    }
    if (entry.IsTimedAct() && entry.trigger.until) {
        fields.Object("when")->Fail(
            "until", QStringLiteral("without a request, a from or a probability it is done at \"after\""));
    }
}

FaultEntry ParseEntry(const JsonFields& fields, int usualSeed)
{
    if (fields.Has("fault") == fields.Has("command")) {
        fields.Fail(QStringLiteral("a fault needs either \"fault\" or \"command\""));
    }
    FaultEntry entry = fields.Has("fault") ? ParseValues(fields) : ParseCommand(fields);
    const QStringList own = entry.command ? QStringList{QStringLiteral("command")} : KeysOf(entry.fault);
    fields.RefuseOthersThan(
        own + QStringList{QStringLiteral("when"), QStringLiteral("count"), QStringLiteral("comment")});
    if (const std::optional<JsonFields> when = fields.Object("when")) {
        entry.trigger = ParseTrigger(*when, usualSeed);
    }
    entry.count = fields.Integer("count", 1, MostTimes);
    fields.Text("comment");
    CheckTimedAct(fields, entry);
    return entry;
}

} // namespace

std::vector<FaultEntry> ParseFaults(const QByteArray& json)
{
    const QJsonObject object = ParseJsonObject(json, Kind);
    const JsonLines lines(json);
    const JsonFields fields(object, lines, {});
    fields.RefuseOthersThan({QStringLiteral("faults"), QStringLiteral("comment")});
    fields.Text("comment");
    std::vector<FaultEntry> entries;
    for (const JsonFields& entry : fields.Objects("faults", FaultPlan::MostFaults)) {
        entries.push_back(ParseEntry(entry, static_cast<int>(entries.size()) + 1));
    }
    return entries;
}

FaultEntry ParseFault(const QByteArray& json)
{
    const QJsonObject object = ParseJsonObject(json, Kind);
    const JsonLines lines(json);
    return ParseEntry(JsonFields(object, lines, {}), 1);
}

std::vector<FaultEntry> LoadFaults(const QString& path)
{
    return LoadJsonFile(path, Kind, ParseFaults);
}

} // namespace Simulator
