#include <cstdio>
#include <ctime>
#include <random>
#include <vector>

#include <QDir>
#include <QFile>

#include "fuzz/finding.h"

namespace
{

constexpr int ChangesPerFile = 200;
/// Processor time, which all targets together make a minute of.
constexpr std::clock_t Time = 5 * CLOCKS_PER_SEC;

void Run(const QByteArray& input)
{
    // A copy of exactly its size, so that AddressSanitizer sees a read behind its end.
    const std::vector<std::uint8_t> bytes(input.cbegin(), input.cend());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

void RunEveryBeginning(const QByteArray& input)
{
    for (int size = 0; size <= input.size(); ++size) {
        Run(input.left(size));
    }
}

/// A byte becomes another, is lost, or comes twice.
void RunChanged(const QByteArray& input, std::mt19937& random)
{
    for (int i = 0; i < ChangesPerFile && !input.isEmpty(); ++i) {
        QByteArray changed = input;
        const auto at = static_cast<int>(random() % static_cast<unsigned>(input.size()));
        const int removed = static_cast<int>(random() % 2);
        changed.replace(at, removed, QByteArray(static_cast<int>(random() % 3), static_cast<char>(random())));
        Run(changed);
    }
}

} // namespace

/// Runs each file of a corpus, and what comes near to it. A finding ends the program.
int main(int argumentCount, char** arguments)
{
    const QDir corpus(argumentCount == 2 ? QString::fromLocal8Bit(arguments[1]) : QString());
    const QStringList names = corpus.entryList(QDir::Files, QDir::Name);
    std::vector<QByteArray> inputs;
    for (const QString& name : names) {
        QFile file(corpus.filePath(name));
        Require(file.open(QIODevice::ReadOnly), "every file of the corpus can be read");
        inputs.push_back(file.readAll());
        RunEveryBeginning(inputs.back());
    }
    std::mt19937 random(1); // The same changes each time, as many as there is time for.
    do {
        for (const QByteArray& input : inputs) {
            RunChanged(input, random);
        }
    } while (std::clock() < Time);
    std::printf("%d files of %s\n", static_cast<int>(names.size()), qPrintable(corpus.path()));
    return names.isEmpty() ? 1 : 0;
}
