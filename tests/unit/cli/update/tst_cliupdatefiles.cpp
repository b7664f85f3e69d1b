#include "cli/update/updatefiles.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class TestCliUpdateFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BothAreRead();
    void Problems_data();
    void Problems();
    void MissingFiles();
    void NoRegularFile();
    void FarTooLarge();

private:
    QString Path(const char* name) const { return _folder.filePath(QLatin1String(name)); }
    QString WriteFile(const char* name, const QByteArray& content) const;

    QTemporaryDir _folder;
};

QString TestCliUpdateFiles::WriteFile(const char* name, const QByteArray& content) const
{
    QFile file(Path(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                    : QString();
}

void TestCliUpdateFiles::BothAreRead()
{
    const QByteArray image = QByteArray(512, 'a') + QByteArray(512, '\0') + QByteArray(512, '\n');
    const Cli::UpdateFiles files = Cli::ReadUpdateFiles(
        WriteFile("image", image), WriteFile("confirmation", QByteArray("\x00\xAB\xCD", 3)));
    QCOMPARE(files.problem, QString());
    QCOMPARE(files.image, image);
    QCOMPARE(files.confirmation, QByteArray::fromHex("00ABCD"));
    QCOMPARE(files.Sectors(), 3);
}

void TestCliUpdateFiles::Problems_data()
{
    QTest::addColumn<int>("imageSize");
    QTest::addColumn<int>("confirmationSize");
    QTest::addColumn<QString>("problem");
    QTest::newRow("empty image") << 0 << 2 << "the image %1 is empty; check that it is the right file";
    QTest::newRow("a byte short")
        << 511 << 2
        << "the image %1 has 511 bytes, which is not a multiple of 512; check that it "
           "is the right file and complete";
    QTest::newRow("a byte too many")
        << 1025 << 2
        << "the image %1 has 1025 bytes, which is not a multiple of 512; check that "
           "it is the right file and complete";
    QTest::newRow("empty confirmation") << 512 << 0
                                        << "the confirmation %2 has fewer than 2 bytes; check that it is the "
                                           "right file";
    QTest::newRow("one byte of confirmation")
        << 512 << 1 << "the confirmation %2 has fewer than 2 bytes; check that it is the right file";
    QTest::newRow("the least") << 512 << 2 << "";
}

void TestCliUpdateFiles::Problems()
{
    QFETCH(int, imageSize);
    QFETCH(int, confirmationSize);
    QFETCH(QString, problem);
    const QString image = WriteFile("image", QByteArray(imageSize, 'x'));
    const QString confirmation = WriteFile("confirmation", QByteArray(confirmationSize, 'x'));
    problem.replace(QLatin1String("%1"), image).replace(QLatin1String("%2"), confirmation);
    QCOMPARE(Cli::ReadUpdateFiles(image, confirmation).problem, problem);
}

void TestCliUpdateFiles::MissingFiles()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    const QString missing = Path("missing");
    QCOMPARE(Cli::ReadUpdateFiles(missing, present).problem,
             QStringLiteral("cannot read the image %1: No such file or directory").arg(missing));
    QCOMPARE(Cli::ReadUpdateFiles(present, missing).problem,
             QStringLiteral("cannot read the confirmation %1: No such file or directory").arg(missing));
}

void TestCliUpdateFiles::NoRegularFile()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    const QString pipe = Path("pipe");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    QCOMPARE(Cli::ReadUpdateFiles(pipe, present).problem,
             QStringLiteral("the image %1 is not a regular file").arg(pipe));
    QCOMPARE(Cli::ReadUpdateFiles(present, _folder.path()).problem,
             QStringLiteral("the confirmation %1 is not a regular file").arg(_folder.path()));
}

void TestCliUpdateFiles::FarTooLarge()
{
    const QString present = WriteFile("present", QByteArray(512, 'x'));
    QFile large(Path("large"));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize(64 * 1024 * 1024 + 512)); // a hole, which takes no room
    QCOMPARE(
        Cli::ReadUpdateFiles(large.fileName(), present).problem,
        QStringLiteral("the image %1 has 67109376 bytes, which is too much; check that it is the right file")
            .arg(large.fileName()));
}

QTEST_GUILESS_MAIN(TestCliUpdateFiles)
#include "tst_cliupdatefiles.moc"
