#include "cli/verbs/infoverb.h"

#include "cli/kit/link.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::Tester;

constexpr VerbTexts Texts{
    "info", "Show the instrument's identity and clocks",
    "Usage: vesmar info [--json] [--timeout SECONDS] [--trace]\n",
    "Connects, waits until the identity and both clocks have been read, shows them with\n"
    "the instrument's mode and error, and ends.\n"
    "\n"
    "JSON: see docs/events.md; events info and result.\n"
    "\n"
    "Exit status: 0 shown; 1 bad usage; 2 the link did not come up in time; 3 the\n"
    "instrument is in update mode, where its clocks cannot be read, or the output cannot\n"
    "be written.\n"
    "\n"
    "Example, without an instrument:\n"
    "  vesmar-simulator run -- vesmar info --json\n"};

/// Waits until everything has been read, and shows it.
class InfoReader : public QObject
{
public:
    explicit InfoReader(Link& link) : _link(link)
    {
        link.AwaitReadiness();
        connect(&link, &Link::Ready, this, [this] { ShowWithClocks(); });
        connect(&link, &Link::FoundInUpdateMode, this, [this] { Show(std::nullopt); });
        connect(&link, &Link::Interrupted, this,
                [this](int signalNumber) { _link.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void ShowWithClocks()
    {
        const Tester& tester = _link.Instrument();
        Show(Clocks{tester.CurrentDateTime(), tester.CalibrationDateTime()});
        _link.Finish(DoneWith(QStringLiteral("Everything was read.")));
    }

    void Show(const std::optional<Clocks>& clocks)
    {
        const Tester& tester = _link.Instrument();
        const Condition condition{clocks, tester.TesterMode(), tester.ErrorCode()};
        const Vesmar::TesterInformation& identity = *tester.DeviceInformation();
        const QByteArray lines = _link.IsJson()
                                     ? EventLine(QDateTime::currentDateTime(), QStringLiteral("info"),
                                                 InfoFields(identity, condition))
                                     : InfoText(identity, condition);
        _link.Print(lines);
    }

    Link& _link;
};

} // namespace

InfoVerb::InfoVerb(CLI::App& program) : Verb(program, Texts) {}

int InfoVerb::Run()
{
    Link link(Options());
    const InfoReader reader(link);
    return link.Work();
}

} // namespace Cli
