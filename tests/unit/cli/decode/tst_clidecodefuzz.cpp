#include "cli/decode/decodesession.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/mman.h>
#include <unistd.h>

#include <iostream>
#include <random>
#include <sstream>

#include "support/textmutator.h"
#include "unit/cli/decode/logfiles.h"

namespace
{

constexpr int InputsPerSeed = 1500; // of each of 8 rows

QByteArray DataFile(const char* name)
{
    QFile file(QStringLiteral(DATA_FOLDER "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The lines of a log from one to before another one.
QByteArray Lines(const QByteArray& log, int first, int end)
{
    const QByteArrayList lines = log.split('\n').mid(first, end - first);
    return lines.join('\n') + '\n';
}

/// Logs of several kinds, short enough for many mutations.
QList<QByteArray> Seeds()
{
    return {
        Lines(DataFile("measurement.log"), 10, 40), Lines(DataFile("trouble.log"), 18, 37),
        "12:00:00.100  53966a 06c660[3b] ACK\n12:00:00.101 Function run.\n12:00:00.300 ReadingBuffer: "
        "0af73370\n"
        "12:00:00.500 ReadingBuffer: 0af7\n12:00:00.520 ReadingBuffer: 3370050247410000000000000000\n"
        "12:00:00.540 ReadingBuffer: 00000000000000000000ea2b\n12:00:00.700  73f44e 0af73370[4b]\n"
        "12:00:00.900  65033c 0300000000000000000000000000000000000000000000000559[26b]\n",
        "unit app[1]: 12:00:00.100 Transciever::Open\r\nunit app[1]: 12:00:00.200  56333a 00024220[4b]\r\n"
        "unit app[1]: 12:00:00.300  4601027ebc 214334[3b] NACK\r\n"
        "unit app[1]: 12:00:00.600  4601027ebc [0b] No response\r\nUPDATE ERROR - Sector data transfer "
        "issues.\r\n"
        "unit app[1]: 12:00:05.000  5aabcd6a50 06c660[3b] ACK\r\nunit app[1]: 12:00:06.000 "
        "Transciever::Close\r\n"};
}

/// What a careless hand, a full disk or two writers at once put into a log.
const QByteArrayList Words{"\n",
                           "\r\n",
                           QByteArray(1, '\0'),
                           "\033[0;35m",
                           "\033[",
                           "[4b]",
                           "[-1b]",
                           "[99999999999999999999b]",
                           " ACK",
                           " NACK",
                           " No response",
                           "23:59:59.999 ",
                           "99:99:99.999  ",
                           "ReadingBuffer: ",
                           "Transciever::Close",
                           "<<<                              ENTERING COMMUNICATION RECOVERY STATE ",
                           "<<<                              ENTERING RCDState ",
                           "12:00:00.000  73f44e 0af73370[4b]\n",
                           "12:00:00.000  65033c 0300000000000000000000000000000000000000000000000559[26b]\n",
                           "12:00:00.000  500b0080c000000000103d 06c660[3b] ACK\n",
                           "\xFF\xFE",
                           "\xF0\x9F\x94\xA5"};

/// A file in memory, which takes one text after the other.
class MemoryFile
{
public:
    MemoryFile() : _descriptor(::memfd_create("log", MFD_CLOEXEC)) {}
    ~MemoryFile() { ::close(_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile(MemoryFile&&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    MemoryFile& operator=(MemoryFile&&) = delete;

    int Descriptor() const { return _descriptor; }

    bool Fill(const QByteArray& text) const
    {
        const auto size = static_cast<size_t>(text.size());
        return ::ftruncate(_descriptor, 0) == 0 && Rewind() &&
               ::write(_descriptor, text.constData(), size) == static_cast<ssize_t>(size) && Rewind();
    }

    QByteArray Content() const
    {
        QFile file;
        Rewind();
        return file.open(_descriptor, QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    bool Rewind() const { return ::lseek(_descriptor, 0, SEEK_SET) == 0; }

    int _descriptor;
};

} // namespace

class TestCliDecodeFuzz : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void SeedsAreWhole();
    void MutatedLogs_data();
    void MutatedLogs();
    void EveryBeginning();
    void NoiseOfAllBytes();
    void LongLines();

private:
    QByteArray ObjectionTo(const QByteArray& text, bool isJson, int* wholeCount);
    QByteArray ObjectionToFailure(const QByteArray& text, const QByteArray& errors) const;

    QTemporaryDir _folder;
    MemoryFile _log;
    MemoryFile _output;
    std::ostringstream _errors;
    std::streambuf* _ownErrors = nullptr;
};

void TestCliDecodeFuzz::init()
{
    _ownErrors = std::cerr.rdbuf(_errors.rdbuf());
}

void TestCliDecodeFuzz::cleanup()
{
    std::cerr.rdbuf(_ownErrors);
}

/// Empty when the text is decoded into lines that a terminal can show, or refused with a place or with the
/// reason why there is none.
QByteArray TestCliDecodeFuzz::ObjectionTo(const QByteArray& text, bool isJson, int* wholeCount)
{
    constexpr int Nothing = -1;
    const QString recording = isJson ? _folder.filePath(QStringLiteral("recording")) : QString();
    if (isJson) {
        QFile::remove(recording);
    }
    _errors.str({});
    if (!_log.Fill(text) || !_output.Fill(QByteArray())) {
        return "no memory file";
    }
    Cli::Output output(_output.Descriptor(), Nothing);
    const int status =
        Cli::DecodeSession({QStringLiteral("LOG"), _log.Descriptor(), 0, recording, isJson}, output).Run();
    const QByteArray errors = QByteArray::fromStdString(_errors.str());
    const QByteArray printed = _output.Content();
    for (const char byte : printed) {
        if (byte != '\n' && byte >= '\0' && byte < ' ') {
            return "a control character in the output";
        }
    }
    if (isJson && QFile::exists(recording) != (status == 0)) {
        return "a recording of a failure, or none of a success";
    }
    if (status == 0) {
        ++*wholeCount;
        return errors.isEmpty() && !printed.isEmpty() ? QByteArray() : "a success with the errors " + errors;
    }
    return status == 1 ? ObjectionToFailure(text, errors) : "the status " + QByteArray::number(status);
}

QByteArray TestCliDecodeFuzz::ObjectionToFailure(const QByteArray& text, const QByteArray& errors) const
{
    static const QRegularExpression place(QStringLiteral("^vesmar: LOG, line (\\d+): .{15,}$"),
                                          QRegularExpression::MultilineOption);
    const auto found = place.match(QString::fromUtf8(errors));
    const bool hasPlace = found.hasMatch() && found.captured(1).toInt() >= 1 &&
                          found.captured(1).toInt() <= text.count('\n') + 1;
    const bool hasReason = errors.contains("LOG is empty") || errors.contains("LOG has no exchange") ||
                           errors.contains("there is no exchange to record");
    return hasPlace || hasReason ? QByteArray() : "the error \"" + errors + '"';
}

void TestCliDecodeFuzz::SeedsAreWhole()
{
    for (const QByteArray& seed : Seeds()) {
        int wholeCount = 0;
        QCOMPARE(ObjectionTo(seed, false, &wholeCount), QByteArray());
        QCOMPARE(wholeCount, 1);
    }
}

void TestCliDecodeFuzz::MutatedLogs_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isJson");
    const QList<QByteArray> seeds = Seeds();
    for (int i = 0; i < seeds.size(); ++i) {
        QTest::addRow("log %d as text", i) << seeds.at(i) << false;
        QTest::addRow("log %d as JSON", i) << seeds.at(i) << true;
    }
}

void TestCliDecodeFuzz::MutatedLogs()
{
    QFETCH(const QByteArray, text);
    QFETCH(const bool, isJson);
    int wholeCount = 0;
    for (int i = 0; i < InputsPerSeed; ++i) {
        const QByteArray mutated =
            TextMutator(static_cast<quint32>(isJson ? InputsPerSeed + i : i), Words).Mutated(text);
        const QByteArray objection = ObjectionTo(mutated, isJson, &wholeCount);
        QVERIFY2(objection.isEmpty(), (objection + " for " + mutated).constData());
    }
    // Both ways are taken often, or the mutations are no good.
    QVERIFY2(wholeCount > InputsPerSeed / 100 && wholeCount < InputsPerSeed * 9 / 10,
             QByteArray::number(wholeCount).constData());
}

void TestCliDecodeFuzz::EveryBeginning()
{
    for (const QByteArray& seed : Seeds()) {
        int wholeCount = 0;
        for (int size = 0; size < seed.size(); ++size) {
            const QByteArray objection = ObjectionTo(seed.left(size), size % 2 == 0, &wholeCount);
            QVERIFY2(objection.isEmpty(), (objection + " for " + seed.left(size)).constData());
        }
        QVERIFY(wholeCount <= seed.count('\n'));
    }
}

void TestCliDecodeFuzz::NoiseOfAllBytes()
{
    std::mt19937 random(1);
    int wholeCount = 0;
    for (int i = 0; i < 1000; ++i) {
        QByteArray noise;
        const int size = static_cast<int>(random() % 600);
        for (int j = 0; j < size; ++j) {
            noise.append(static_cast<char>(random() & 0xFF));
        }
        QCOMPARE(ObjectionTo(noise, i % 2 == 0, &wholeCount), QByteArray());
    }
    QCOMPARE(wholeCount, 0);
}

void TestCliDecodeFuzz::LongLines()
{
    int wholeCount = 0;
    for (const QByteArray& filling :
         {QByteArray("0"), QByteArray("12:00:00.000  "), QByteArray("12:00:00.000  73f44e "),
          QByteArray("\033[0;35m"), QByteArray("<<<          "), QByteArray("\xC3"), QByteArray("[4b]"),
          QByteArray("UPDATE ERROR - ")}) {
        const QByteArray longest =
            "12:00:00.000  73f44e " + filling.repeated(65000 / filling.size()).left(65000);
        QCOMPARE(ObjectionTo(longest + '\n', false, &wholeCount), QByteArray());
        QCOMPARE(ObjectionTo(longest + longest + '\n', true, &wholeCount), QByteArray());
    }
}

QTEST_APPLESS_MAIN(TestCliDecodeFuzz)
#include "tst_clidecodefuzz.moc"
