#include <sys/stat.h>

#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

#include <VesmarClient/tracerouter.h>

#include "client/trace/driverlines.h"
#include "client/trace/linecounter.h"
#include "client/trace/statistics.h"
#include "support/logcapture.h"

using namespace VesmarClient;

namespace
{

constexpr char Signature[] = "void Vesmar::Trace::Write(const QString&)";

/// The line of an exchange, as the driver writes it.
QString Exchange(const char* request, const char* outcome)
{
    return QStringLiteral("07:15:01.005  \033[0;35m%1 \033[0;33m4e414b\033[0m[3b]%2")
        .arg(QLatin1String(request), QLatin1String(outcome));
}

QString Banner(const char* passage)
{
    return QStringLiteral("\033[0;34m<<<                              %1 \033[0m")
        .arg(QLatin1String(passage));
}

const QString Data = Exchange("73f44e", "");
const QString Silence =
    QStringLiteral("07:15:01.005  \033[0;35m73f44e \033[0;33m\033[0m[0b]\033[0;31m No response\033[0m");
const QString Refusal = Exchange("70020500", "\033[0;31m NACK\033[0m Function prepare: 2");
const QString Damage = Exchange("73f44e", "\033[0;31m CRC Invalid\033[0m");
const QString Opening = QStringLiteral("07:15:01.005 Transciever::Open: Serial port opened successfully.");

void AddSignature(const char* name, const char* signature, bool isDrivers)
{
    QTest::newRow(name) << QByteArray(signature) << isDrivers;
}

void AddLines(const char* name, const QStringList& lines, const LinkStatistics& statistics)
{
    QTest::newRow(name) << lines << statistics;
}

/// Writes a line as the driver does.
void WriteAsDriver(const QString& line)
{
    QMessageLogger("trace.cpp", 1, Signature).warning().noquote() << line;
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : file.errorString().toUtf8();
}

} // namespace

class TestClientTrace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void DriverIsToldByItsFunctions_data();
    void DriverIsToldByItsFunctions();
    void NothingElseIsTheTrace_data();
    void NothingElseIsTheTrace();
    void LinesAreCounted_data();
    void LinesAreCounted();
    void OwnMessagesGoWhereTheyWent();
    void TraceGoesToItsCategory();
    void CategoryCanBeSilenced();
    void TraceGoesToAFile();
    void FileIsTurnedOver();
    void FileThatCannotBeWrittenIsTold();
    void FileThatCannotBeTurnedOverIsToldOnce();
    void EverythingGoesOnAfterTheRouter();
    void HandlerInstalledLaterStays();
    void StatisticsBeginAnewWithTheLine();
    void LinesComeFromAnyThread();
};

void TestClientTrace::DriverIsToldByItsFunctions_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<bool>("isDrivers");
    AddSignature("function", Signature, true);
    AddSignature("pointer", "QByteArray* Vesmar::Transciever::ReadBuffer()", true);
    AddSignature("pointer of another compiler", "QByteArray *Vesmar::Transciever::ReadBuffer()", true);
    AddSignature("unnamed namespace", "void Vesmar::{anonymous}::TraceDate(const char*)", true);
    AddSignature("unnamed namespace of another compiler", "void Vesmar::(anonymous namespace)::F(int)", true);
    AddSignature("constructor", "Vesmar::Tester::Tester()", true);
    AddSignature("lambda", "Vesmar::Tester::Enable()::<lambda()>", true);
    AddSignature("template", "static void Vesmar::X::F(T) [with T = std::pair<int, int>]", true);
    AddSignature("client", "void VesmarClient::Host::Open()", false);
    AddSignature("application's parameter", "void Panel::Show(const Vesmar::MeasurementResults&)", false);
    AddSignature("application's result", "Vesmar::Error Panel::Last()", false);
    AddSignature("application's template", "void Panel::Cache<int, Vesmar::Error>::Fill(int)", false);
    AddSignature("application's lambda", "main(int, char**)::<lambda(Vesmar::Error)>", false);
    AddSignature("main", "int main(int, char**)", false);
    AddSignature("nothing", "", false);
}

void TestClientTrace::DriverIsToldByItsFunctions()
{
    QFETCH(const QByteArray, signature);
    QFETCH(const bool, isDrivers);
    for (const QtMsgType type : {QtWarningMsg, QtDebugMsg}) {
        QCOMPARE(IsDriverLine(type, {"f.cpp", 1, signature.constData(), "default"}), isDrivers);
    }
}

void TestClientTrace::NothingElseIsTheTrace_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("category");
    QTest::newRow("info") << int(QtInfoMsg) << QByteArray("default");
    QTest::newRow("critical") << int(QtCriticalMsg) << QByteArray("default");
    QTest::newRow("category") << int(QtWarningMsg) << QByteArray("qt.core");
    QTest::newRow("no category") << int(QtWarningMsg) << QByteArray();
}

void TestClientTrace::NothingElseIsTheTrace()
{
    QFETCH(const int, type);
    QFETCH(const QByteArray, category);
    const char* const name = category.isNull() ? nullptr : category.constData();
    QVERIFY(!IsDriverLine(static_cast<QtMsgType>(type), {"f.cpp", 1, Signature, name}));
    QVERIFY(!IsDriverLine(QtWarningMsg, {nullptr, 0, nullptr, "default"}));
}

void TestClientTrace::LinesAreCounted_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<LinkStatistics>("statistics");
    const QString acknowledged = Exchange("70020500", "\033[0;32m ACK\033[0m");
    AddLines("data", {Data}, {1, 0, 0, 0, 0, 0});
    AddLines("data of a preparation", {Exchange("70020500", " Function prepare: 2")}, {1, 0, 0, 0, 0, 0});
    AddLines("acknowledge", {acknowledged}, {1, 0, 0, 0, 0, 0});
    AddLines("refusal", {Refusal}, {0, 0, 0, 0, 1, 0});
    AddLines("damage", {Damage}, {0, 0, 1, 0, 0, 0});
    AddLines("silence", {Silence}, {0, 0, 0, 1, 0, 0});
    AddLines("sent again", {Silence, Damage, Data}, {1, 2, 1, 1, 0, 0});
    AddLines("another request", {Silence, Exchange("69a1", "")}, {1, 0, 0, 1, 0, 0});
    AddLines("asked again after an answer", {Data, Data}, {2, 0, 0, 0, 0, 0});
    AddLines("another state", {Silence, Banner("LEAVING MONITORING STATE"), Data}, {1, 0, 0, 1, 0, 0});
    AddLines("recovery",
             {Banner("ENTERING COMMUNICATION RECOVERY STATE"), Silence, Silence, Data,
              Banner("LEAVING COMMUNICATION RECOVERY STATE"), Silence, Data},
             {2, 1, 0, 3, 0, 1});
    AddLines("opened", {Data, Damage, Opening, Data}, {1, 0, 0, 0, 0, 0});
    AddLines("other lines",
             {QString(), QStringLiteral("Update progress: 4"),
              QStringLiteral("07:15:01.005 ReadingBuffer: 4e414b"),
              QStringLiteral("07:15:01.005 \033[0;32mFunction run.\033[0m"),
              Banner("ENTERING MONITORING STATE"), QStringLiteral("07:15:01.005 Transciever::Open")},
             {});
}

void TestClientTrace::LinesAreCounted()
{
    QFETCH(const QStringList, lines);
    QFETCH(const LinkStatistics, statistics);
    LineCounter counter;
    for (const QString& line : lines) {
        counter.Count(line);
    }
    QCOMPARE(counter.Statistics(), statistics);
}

void TestClientTrace::OwnMessagesGoWhereTheyWent()
{
    const LogCapture log;
    const TraceRouter router;
    qWarning("own warning");
    WriteAsDriver(Data);
    qCritical("own trouble");
    QCOMPARE(log.Texts(), (QStringList{QStringLiteral("own warning"), QStringLiteral("own trouble")}));
    QCOMPARE(router.statistics().exchanges, 1);
}

void TestClientTrace::TraceGoesToItsCategory()
{
    const LogCapture log;
    TraceRouter router;
    router.toCategory();
    WriteAsDriver(Data);
    router.toNowhere();
    WriteAsDriver(Data);
    QCOMPARE(log.Texts(), QStringList(Data));
    QCOMPARE(log.Messages().first().category, QByteArray("vesmar.trace"));
    QCOMPARE(log.Messages().first().type, QtWarningMsg);
    QCOMPARE(router.statistics().exchanges, 2);
}

void TestClientTrace::CategoryCanBeSilenced()
{
    const LogCapture log;
    TraceRouter router;
    router.toCategory();
    QLoggingCategory::setFilterRules(QStringLiteral("vesmar.trace.warning=false"));
    WriteAsDriver(Data);
    QLoggingCategory::setFilterRules(QString());
    qWarning("own warning");
    QCOMPARE(log.Texts(), QStringList(QStringLiteral("own warning")));
    QCOMPARE(router.statistics().exchanges, 1);
}

void TestClientTrace::TraceGoesToAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace"));
    const LogCapture log;
    TraceRouter router;
    QVERIFY(!router.toFile(path).isFailure());
    WriteAsDriver(Data);
    qWarning("own warning");
    WriteAsDriver(Silence);
    QCOMPARE(ContentOf(path), (Data + QLatin1Char('\n') + Silence + QLatin1Char('\n')).toUtf8());
    QCOMPARE(log.Texts(), QStringList(QStringLiteral("own warning")));
    QVERIFY(!router.toFile(path).isFailure());
    WriteAsDriver(Data);
    QCOMPARE(ContentOf(path).count('\n'), 3);
}

void TestClientTrace::FileIsTurnedOver()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace"));
    const LogCapture log;
    TraceRouter router;
    QVERIFY(!router.toFile(path, 10).isFailure());
    for (const char* line : {"12345", "67890", "abcdefghijk", "last"}) {
        WriteAsDriver(QLatin1String(line));
    }
    QCOMPARE(ContentOf(path), QByteArray("last\n"));
    QCOMPARE(ContentOf(path + QStringLiteral(".1")), QByteArray("abcdefghijk\n"));
    QCOMPARE(log.Texts(), QStringList());
}

void TestClientTrace::FileThatCannotBeWrittenIsTold()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace"));
    const LogCapture log;
    TraceRouter router;
    router.toCategory();
    const Failure absent = router.toFile(folder.filePath(QStringLiteral("absent/trace")));
    QCOMPARE(absent.name, QStringLiteral("trace-unwritable"));
    QVERIFY(absent.whatHappened.endsWith(
        QLatin1String("absent/trace cannot be written: No such file or directory.")));
    QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    QVERIFY(router.toFile(path).whatHappened.endsWith(QLatin1String("it is not a regular file.")));
    WriteAsDriver(Data);
    QCOMPARE(log.Texts(), QStringList(Data));
}

/// A folder that stands in the way of the older file, which cannot be replaced then.
void TestClientTrace::FileThatCannotBeTurnedOverIsToldOnce()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trace"));
    QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("trace.1/in use")));
    const LogCapture log;
    TraceRouter router;
    QVERIFY(!router.toFile(path, 3).isFailure());
    WriteAsDriver(Data);
    WriteAsDriver(Data);
    QCOMPARE(log.Texts().size(), 1);
    QVERIFY(
        log.Texts().first().startsWith(QStringLiteral("The trace file %1 cannot be written: ").arg(path)));
    QCOMPARE(log.Messages().first().category, QByteArray("vesmar.trace"));
    QCOMPARE(router.statistics().exchanges, 2);
}

void TestClientTrace::EverythingGoesOnAfterTheRouter()
{
    const LogCapture log;
    {
        const TraceRouter router;
        WriteAsDriver(Data);
    }
    WriteAsDriver(Silence);
    QCOMPARE(log.Texts(), QStringList(Silence));
    QCOMPARE(log.Messages().first().category, QByteArray("default"));
    QCOMPARE(CurrentStatistics().silent, 0);
}

void TestClientTrace::HandlerInstalledLaterStays()
{
    const LogCapture log;
    {
        const TraceRouter router;
        static QtMessageHandler routersHandler = nullptr;
        routersHandler = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                routersHandler(type, context, QStringLiteral("later: ") + text);
            });
        qWarning("own warning");
    }
    WriteAsDriver(Data);
    QCOMPARE(log.Texts(),
             (QStringList{QStringLiteral("later: own warning"), QStringLiteral("later: ") + Data}));
}

void TestClientTrace::StatisticsBeginAnewWithTheLine()
{
    const LogCapture log;
    const TraceRouter router;
    WriteAsDriver(Data);
    WriteAsDriver(Opening);
    QCOMPARE(CurrentStatistics(), LinkStatistics());
    WriteAsDriver(Damage);
    QCOMPARE(CurrentStatistics(), router.statistics());
    QCOMPARE(CurrentStatistics().damaged, 1);
}

void TestClientTrace::LinesComeFromAnyThread()
{
    constexpr int Lines = 500;
    const QTemporaryDir folder;
    const LogCapture log;
    TraceRouter router;
    const auto writeLines = [] {
        for (int line = 0; line < Lines; ++line) {
            WriteAsDriver(Data);
        }
    };
    std::thread first(writeLines);
    std::thread second(writeLines);
    while (CurrentStatistics().exchanges < 2 * Lines) {
        router.toNowhere();
        QVERIFY(!router.toFile(folder.filePath(QStringLiteral("trace")), 1000).isFailure());
        router.toCategory();
    }
    first.join();
    second.join();
    QCOMPARE(CurrentStatistics().exchanges, 2 * Lines);
}

QTEST_GUILESS_MAIN(TestClientTrace)
#include "tst_clienttrace.moc"
