#include <QtTest>

#include <algorithm>

#include "integration/updaterun.h"

/// The programs as they are built: the verb `update`.
class TestUpdateProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void AsText();
    void AsJson_data();
    void AsJson();
    void OnATerminal();
    void BroughtHomeFromUpdateMode_data();
    void BroughtHomeFromUpdateMode();
    void ComesBackInAnotherMode();
    void FilesThatCannotBeUsed_data();
    void FilesThatCannotBeUsed();
    void ReaderThatGoesAwayDoesNotEndIt();
    void InfoAndMonitorTellOfAnInstrumentInUpdateMode();
};

void TestUpdateProgram::AsText()
{
    UpdateRun run;
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(), QByteArray());
    const QRegularExpression time(QStringLiteral(", \\d+ s left"));
    const QString shown = QString::fromUtf8(run->Output()).remove(time);
    QCOMPARE(shown, QStringLiteral("Version before:   1.05\n"
                                   "Changing the instrument to update mode.\n"
                                   "Sending the firmware. Do not switch the instrument off.\n"
                                   " 20 %  1 of 5 sectors\n"
                                   " 40 %  2 of 5 sectors\n"
                                   " 60 %  3 of 5 sectors\n"
                                   " 80 %  4 of 5 sectors\n"
                                   "100 %  5 of 5 sectors\n"
                                   "The firmware is confirmed. Waiting for the instrument to come back.\n"
                                   "Version after:    1.06\n"
                                   "Firmware update done. The instrument is back in its normal mode.\n"));
    QCOMPARE(run.Firmware(), Image());
}

void TestUpdateProgram::AsJson_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("online") << "--json";
    QTest::newRow("offline") << "--json --offline";
}

void TestUpdateProgram::AsJson()
{
    QFETCH(QString, options);
    UpdateRun run(options, QStringLiteral("--new-version 2.34"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Errors(), QByteArray());
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(run.Requests(Initialize), 1);
    QCOMPARE(run.Requests(Sector), Sectors);
    QCOMPARE(run.Requests(Finish), 1);

    QVector<int> progress;
    for (const QByteArray& line : run->Lines()) {
        const QJsonObject event = ObjectOf(line);
        if (event.value(QLatin1String("event")).toString() == QLatin1String("progress")) {
            progress.append(event.value(QLatin1String("percent")).toInt());
            QCOMPARE(event.value(QLatin1String("sectors")).toInt(), progress.last() / 20);
            QCOMPARE(event.value(QLatin1String("total")).toInt(), Sectors);
        }
    }
    QCOMPARE(progress.last(), 100);
    QVERIFY(std::is_sorted(progress.cbegin(), progress.cend()));
    const QJsonObject result = run.Result();
    QCOMPARE(result.value(QLatin1String("outcome")).toString(), QStringLiteral("done"));
    QCOMPARE(result.value(QLatin1String("status")).toInt(-1), 0);
    QCOMPARE(result.value(QLatin1String("sectors")).toInt(), Sectors);
    QCOMPARE(result.value(QLatin1String("versionBefore")).toString(), QStringLiteral("1.05"));
    QCOMPARE(result.value(QLatin1String("versionAfter")).toString(), QStringLiteral("2.34"));
    QVERIFY(result.value(QLatin1String("error")).isNull());
}

void TestUpdateProgram::OnATerminal()
{
    const QTemporaryDir folder;
    const QString image = folder.filePath(QStringLiteral("image"));
    QFile file(image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(Image()), Image().size());
    file.close();
    const QString command =
        QStringLiteral("'%1' run --confirmation %4 -- '%2' update '%3' --confirmation '%3'")
            .arg(QStringLiteral(SIMULATOR_PROGRAM), QStringLiteral(VESMAR_PROGRAM), image,
                 QString::fromLatin1(Image().right(2).toHex()));
    ProgramRun terminal(QStringLiteral("script"),
                        {QStringLiteral("--quiet"), QStringLiteral("--return"), QStringLiteral("--command"),
                         command, QStringLiteral("/dev/null")});
    QCOMPARE(terminal.Finish(), 0);
    const QByteArray shown = terminal.Output();
    QVERIFY2(shown.contains("\r  0 % [                    ]  0 of 5 sectors\033[K"), shown.constData());
    QVERIFY2(shown.contains("\r100 % [====================]  5 of 5 sectors, 0 s left\033[K"),
             shown.constData());
    QVERIFY2(shown.contains("Version after:    1.06\r\n"), shown.constData());
}

void TestUpdateProgram::BroughtHomeFromUpdateMode_data()
{
    AsJson_data();
}

void TestUpdateProgram::BroughtHomeFromUpdateMode()
{
    QFETCH(QString, options);
    UpdateRun run(options, QStringLiteral("--at '0:mode 3'"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(run.Result().value(QLatin1String("versionAfter")).toString(), QStringLiteral("1.06"));
}

void TestUpdateProgram::ComesBackInAnotherMode()
{
    UpdateRun run(QStringLiteral("--json"), QStringLiteral("--scenario comes-back-in-mode-2"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run.Firmware(), Image());
    QCOMPARE(run.Result().value(QLatin1String("versionAfter")).toString(), QStringLiteral("1.06"));
}

void TestUpdateProgram::FilesThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("confirmation");
    QTest::addColumn<QByteArray>("complaint");
    QTest::newRow("no image") << "missing"
                              << "two"
                              << QByteArray("cannot read the image missing: No such file or directory");
    QTest::newRow("empty image") << "empty"
                                 << "two" << QByteArray("the image empty is empty");
    QTest::newRow("odd image") << "odd"
                               << "two"
                               << QByteArray("the image odd has 513 bytes, which is not a multiple of 512");
    QTest::newRow("folder") << "."
                            << "two" << QByteArray("the image . is not a regular file");
    QTest::newRow("no confirmation") << "image"
                                     << "missing" << QByteArray("cannot read the confirmation missing");
    QTest::newRow("short confirmation") << "image"
                                        << "one" << QByteArray("the confirmation one has fewer than 2 bytes");
}

void TestUpdateProgram::FilesThatCannotBeUsed()
{
    QFETCH(QString, image);
    QFETCH(QString, confirmation);
    QFETCH(QByteArray, complaint);
    const QTemporaryDir folder;
    const QString script =
        QStringLiteral("cd '%1' && printf x > one && printf xx > two && : > empty && "
                       "head -c 512 /dev/zero > image && head -c 513 /dev/zero > odd && "
                       "exec '%2' run --log log -- '%3' update '%4' --confirmation '%5' --json")
            .arg(folder.path(), QStringLiteral(SIMULATOR_PROGRAM), QStringLiteral(VESMAR_PROGRAM), image,
                 confirmation);
    ProgramRun run(QStringLiteral("sh"), {QStringLiteral("-c"), script});
    QCOMPARE(run.Finish(), 1);
    QCOMPARE(run.Output(), QByteArray());
    QVERIFY2(run.Errors().startsWith("vesmar: " + complaint), run.Errors().constData());
    QCOMPARE(run.Errors().count('\n'), 1);
    QCOMPARE(ContentOf(folder.filePath(QStringLiteral("log"))), QByteArray()); // nothing was sent
}

/// Nobody is there to see it, but the instrument needs all of its firmware.
void TestUpdateProgram::ReaderThatGoesAwayDoesNotEndIt()
{
    UpdateRun run(QStringLiteral("| head -n 1"));
    QCOMPARE(run->Finish(), 0);
    QCOMPARE(run->Output(), QByteArray("Version before:   1.05\n"));
    QCOMPARE(run->Errors(), QByteArray("vesmar: cannot write the output\n"));
    QCOMPARE(run.Firmware(), Image());
}

void TestUpdateProgram::InfoAndMonitorTellOfAnInstrumentInUpdateMode()
{
    const QStringList inUpdateMode{QStringLiteral("--at"), QStringLiteral("0:mode 3")};
    const QByteArray sentence =
        "vesmar: The instrument is in update mode (3) and waits for firmware; run vesmar "
        "update IMAGE --confirmation FILE.\n";
    const auto run = [&inUpdateMode](const QStringList& arguments) {
        return QStringList{QStringLiteral("run")} + inUpdateMode +
               QStringList{QStringLiteral("--"), QStringLiteral(VESMAR_PROGRAM)} + arguments;
    };
    ProgramRun info(QStringLiteral(SIMULATOR_PROGRAM), run({QStringLiteral("info")}));
    ProgramRun monitor(QStringLiteral(SIMULATOR_PROGRAM),
                       run({QStringLiteral("monitor"), QStringLiteral("--for"), QStringLiteral("0.5")}));
    QCOMPARE(info.Finish(), 3);
    QVERIFY2(info.Output().contains("Serial number:    204815"), info.Output().constData());
    QCOMPARE(info.Errors(), sentence);
    QCOMPARE(monitor.Finish(), 0);
    QCOMPARE(monitor.Errors(), sentence);
}

QTEST_GUILESS_MAIN(TestUpdateProgram)
#include "tst_updateprogram.moc"
