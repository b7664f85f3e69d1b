#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include <QCoreApplication>
#include <QFile>

#include "explorer/graph.h"
#include "explorer/oddities.h"
#include "explorer/rules.h"
#include "explorer/scopes.h"

namespace
{

/// What the searches have found together.
struct Outcome {
    std::size_t configurations = 0;
    std::size_t edges = 0;
    bool isGood = true;
    std::array<std::size_t, Vesmar::TransitionMap.size()> rowCounts{};
    std::map<const Oddity*, std::size_t> oddityCounts;
};

double Now()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

const Oddity* FindOddity(const Graph& graph, const Rules::Finding& finding)
{
    for (const Oddity& oddity : Oddities) {
        if (finding.rule == oddity.rule && oddity.covers(graph.At(finding.begin), graph.At(finding.end))) {
            return &oddity;
        }
    }
    return nullptr;
}

void Print(const Graph& graph, const Rules::Finding& finding)
{
    std::printf("%s:\n%s", finding.rule.c_str(), graph.PathTo(finding.begin).c_str());
    if (!finding.last.empty()) {
        std::printf("    %s\n", finding.last.c_str());
    }
    std::printf("    and at last:\n        -> %s\n", graph.Describe(finding.end).c_str());
}

/// Prints the first way to each kind of finding that is no oddity. Two are of one kind if they come to the
/// same state.
void Check(const Graph& graph, Outcome& outcome)
{
    std::set<std::pair<std::string, int>> printed;
    Rules::Check(graph, [&](const Rules::Finding& finding) {
        if (const Oddity* const oddity = FindOddity(graph, finding)) {
            ++outcome.oddityCounts[oddity];
            return;
        }
        outcome.isGood = false;
        if (printed.insert({finding.rule, graph.At(finding.end).state}).second) {
            Print(graph, finding);
        }
    });
}

void Explore(const Scope& scope, bool interferes, Outcome& outcome)
{
    const double begin = Now();
    Machine machine;
    Graph graph;
    graph.Search(machine, scope, interferes);
    std::printf("%s: %zu configurations, %zu edges, %.1f s\n", scope.name, graph.Size(), graph.CountEdges(),
                Now() - begin);
    std::fflush(stdout);
    Check(graph, outcome);
    outcome.configurations += graph.Size();
    outcome.edges += graph.CountEdges();
    for (std::size_t row = 0; row < outcome.rowCounts.size(); ++row) {
        outcome.rowCounts.at(row) += graph.RowCounts().at(row);
    }
}

void CheckRows(Outcome& outcome)
{
    for (std::size_t row = 0; row < outcome.rowCounts.size(); ++row) {
        if (outcome.rowCounts.at(row) == 0) {
            std::printf("no step takes the row of %s\n", Vesmar::TransitionMap.at(row).guardName);
            outcome.isGood = false;
        }
    }
}

/// Each oddity must be listed, and must occur where the search can meet it.
void CheckOddities(bool isWhole, Outcome& outcome)
{
    QFile file(QStringLiteral(ODDITIES_PAGE));
    file.open(QIODevice::ReadOnly);
    const QByteArray page = file.readAll();
    for (const Oddity& oddity : Oddities) {
        const bool isListed = page.contains(oddity.words);
        const std::size_t count = outcome.oddityCounts[&oddity];
        const bool isExpected = isWhole || !oddity.isOfTheWholeAlone;
        if (!isListed || (count == 0 && isExpected)) {
            std::printf("%s: %s\n", isListed ? "does not occur" : "docs/oddities.md does not say",
                        oddity.words);
            outcome.isGood = false;
        } else {
            std::printf("%zu times, as docs/oddities.md says: %s\n", count, oddity.words);
        }
    }
}

bool IsNamed(const char* scope, int argc, char* argv[], int first)
{
    bool isNamed = first == argc;
    for (int index = first; index < argc; ++index) {
        isNamed = isNamed || std::strcmp(argv[index], scope) == 0;
    }
    return isNamed;
}

} // namespace

/// vesmar_explorer [--whole] [SCOPE...]
///
/// Some scopes alone neither take every row nor meet every oddity, which is checked when there is none named.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const bool isWhole = argc > 1 && std::strcmp(argv[1], "--whole") == 0;
    const int first = isWhole ? 2 : 1;
    Outcome outcome;
    for (const Scope& scope : Scopes(isWhole)) {
        if (IsNamed(scope.name, argc, argv, first)) {
            Explore(scope, isWhole, outcome);
        }
    }
    if (first == argc) {
        CheckRows(outcome);
        CheckOddities(isWhole, outcome);
    }
    std::printf("together: %zu configurations, %zu edges\n", outcome.configurations, outcome.edges);
    return outcome.isGood ? EXIT_SUCCESS : EXIT_FAILURE;
}
