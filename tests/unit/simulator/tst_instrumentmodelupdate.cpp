#include <QtTest>

#include "simulator/model/instrumentmodel.h"

using Simulator::InstrumentModel;
using Simulator::ModelOptions;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray Acknowledge = QByteArray::fromHex("06c660");
const QByteArray Refusal = QByteArray::fromHex("214334");
const QByteArray NoAnswer;
const QByteArray ReadStatus = QByteArray::fromHex("73f44e");
const QByteArray ReadVersion = QByteArray::fromHex("57122a");
const QByteArray ReadCurrentDate = QByteArray::fromHex("52b77a");
const QByteArray ReadCalibrationDate = QByteArray::fromHex("54711a");
const QByteArray ModeNormal = QByteArray::fromHex("7800f081");
const QByteArray ModeCalibration = QByteArray::fromHex("7801d191");
const QByteArray ModeUpdate = QByteArray::fromHex("780393b1");
const QByteArray Initialize = QByteArray::fromHex("56333a");
const QByteArray Initialized = QByteArray::fromHex("00024220");
const QByteArray Ones = 'F' + QByteArray(512, '\x11') + QByteArray::fromHex("093e");
const QByteArray Twos = 'F' + QByteArray(512, '\x22') + QByteArray::fromHex("8977");
const QByteArray ConfirmBoth = QByteArray::fromHex("5acc5c4f51");
const QByteArray ConfirmWrongly = QByteArray::fromHex("5aabcd6a50");
const QByteArray UpdateStatus = QByteArray::fromHex("60fefb05");
const QByteArray NormalStatus = QByteArray::fromHex("00fed10e");
const QByteArray Mode2Status = QByteArray::fromHex("40fe1d03");
const QByteArray OldVersion = QByteArray::fromHex("5041543431303230343831353130353033303232303136f923");
const QByteArray NewVersion = QByteArray::fromHex("5041543431303230343831353130363033303232303136bd0e");

const TimePoint Start;

ModelOptions Options()
{
    ModelOptions options;
    options.date = QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC);
    return options;
}

/// An instrument that was started in update mode, so many milliseconds after the start.
class LoaderInstrument
{
public:
    explicit LoaderInstrument(const ModelOptions& options = Options()) : model(options, Start)
    {
        model.SetMode(3);
    }

    QByteArray Ask(const QByteArray& request, int time = 0)
    {
        return model.Answer(request, Start + milliseconds(time));
    }

    /// Everything up to the confirmation.
    bool ReceiveBoth(int time = 0)
    {
        return Ask(Initialize, time) == Initialized && Ask(Ones, time) == Acknowledge &&
               Ask(Twos, time) == Acknowledge;
    }

    InstrumentModel model;
};

} // namespace

class TestInstrumentModelUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void UpdateFromTheBeginning();
    void KnowsOnlyTheLoaderInUpdateMode_data();
    void KnowsOnlyTheLoaderInUpdateMode();
    void KnowsTheLoaderInUpdateModeOnly_data();
    void KnowsTheLoaderInUpdateModeOnly();
    void HasNoReadingsInUpdateMode();
    void SectorsOfTheWrongSize_data();
    void SectorsOfTheWrongSize();
    void SectorBeforeTheInitialization();
    void WrongConfirmation();
    void RestartForgetsWhatWasReceived();
    void TimesOfTheInstallation();
    void NewVersionAsTold();
    void ConfirmationAsTold();
    void RefusesUpdateMode();
    void RefusesInitialize();
    void RefusesSector();
    void LosesSector();
    void RefusesConfirmation();
    void StaysInUpdateMode();
    void ComesBackInMode2();
    void TellsItsChanges();
    void TellsWhenItIsBack();
    void DatesSurviveRestarts();
};

void TestInstrumentModelUpdate::UpdateFromTheBeginning()
{
    InstrumentModel model(Options(), Start);
    const auto at = [](int time) { return Start + milliseconds(time); };
    QCOMPARE(model.Answer(ReadVersion, at(0)), OldVersion);
    QCOMPARE(model.Answer(ModeUpdate, at(0)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, at(499)), NoAnswer);
    QCOMPARE(model.Answer(ReadStatus, at(500)), UpdateStatus);
    QCOMPARE(model.Answer(ReadVersion, at(510)), OldVersion);
    QCOMPARE(model.Answer(Initialize, at(520)), Initialized);
    QCOMPARE(model.Answer(Ones, at(530)), Acknowledge);
    QCOMPARE(model.Answer(Twos, at(540)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, at(550)), UpdateStatus);
    QVERIFY(!model.TakeConfirmedFirmware().has_value());
    QCOMPARE(model.Answer(ConfirmBoth, at(1000)), Acknowledge);
    QCOMPARE(model.Answer(ReadStatus, at(2999)), NoAnswer);
    QCOMPARE(model.Answer(ReadStatus, at(3000)), NormalStatus);
    QCOMPARE(model.Answer(ReadVersion, at(3010)), NewVersion);
    QCOMPARE(model.TakeConfirmedFirmware().value_or(QByteArray()),
             QByteArray(512, '\x11') + QByteArray(512, '\x22'));
    QVERIFY(!model.TakeConfirmedFirmware().has_value());
}

void TestInstrumentModelUpdate::KnowsOnlyTheLoaderInUpdateMode_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("read measurement") << QByteArray::fromHex("65033c");
    QTest::newRow("prepare") << QByteArray::fromHex("5001ff0100ffffffffea32");
    QTest::newRow("start") << QByteArray::fromHex("53966a");
    QTest::newRow("stop") << QByteArray::fromHex("68aeed");
    QTest::newRow("read current date") << ReadCurrentDate;
    QTest::newRow("read calibration date") << ReadCalibrationDate;
    QTest::newRow("set current date") << QByteArray::fromHex("72240307140509ab99");
    QTest::newRow("set calibration date") << QByteArray::fromHex("74240229000000b4f6");
    QTest::newRow("mode 4") << QByteArray::fromHex("780474c1");
}

void TestInstrumentModelUpdate::KnowsOnlyTheLoaderInUpdateMode()
{
    QFETCH(QByteArray, request);
    LoaderInstrument instrument;
    QCOMPARE(instrument.Ask(request), Refusal);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
    QCOMPARE(instrument.Ask(ReadVersion), OldVersion);
    QCOMPARE(instrument.model.Date(Start), QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
    QCOMPARE(instrument.Ask(ModeNormal), Acknowledge);
    QCOMPARE(instrument.Ask(ReadStatus, 500), NormalStatus);
}

void TestInstrumentModelUpdate::KnowsTheLoaderInUpdateModeOnly_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("normal") << 0;
    QTest::newRow("calibration") << 1;
    QTest::newRow("mode 2") << 2;
}

void TestInstrumentModelUpdate::KnowsTheLoaderInUpdateModeOnly()
{
    QFETCH(int, mode);
    LoaderInstrument instrument;
    QVERIFY(instrument.ReceiveBoth());
    instrument.model.SetMode(mode);
    QCOMPARE(instrument.Ask(Initialize), Refusal);
    QCOMPARE(instrument.Ask(Ones), Refusal);
    QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
    QVERIFY(!instrument.model.TakeConfirmedFirmware().has_value());
}

void TestInstrumentModelUpdate::HasNoReadingsInUpdateMode()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(500)).left(2).toHex(), QByteArray("80fe"));
    model.SetFunction(9);
    model.SetMode(3);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(510)), UpdateStatus);
    QCOMPARE(model.Answer(ReadStatus, Start + milliseconds(5000)), UpdateStatus);
}

void TestInstrumentModelUpdate::SectorsOfTheWrongSize_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("none") << QByteArray::fromHex("460228");
    QTest::newRow("511") << 'F' + QByteArray(511, '\x11') + QByteArray::fromHex("ab3a");
    QTest::newRow("513") << 'F' + QByteArray(513, '\x11') + QByteArray::fromHex("8ddc");
    QTest::newRow("bad checksum") << 'F' + QByteArray(512, '\x11') + QByteArray::fromHex("093f");
}

void TestInstrumentModelUpdate::SectorsOfTheWrongSize()
{
    QFETCH(QByteArray, request);
    LoaderInstrument instrument;
    QCOMPARE(instrument.Ask(Initialize), Initialized);
    QCOMPARE(instrument.Ask(Ones), Acknowledge);
    QCOMPARE(instrument.Ask(request), Refusal);
    QCOMPARE(instrument.Ask(Twos), Acknowledge);
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
}

void TestInstrumentModelUpdate::SectorBeforeTheInitialization()
{
    LoaderInstrument instrument;
    QCOMPARE(instrument.Ask(Ones), Refusal);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
}

void TestInstrumentModelUpdate::WrongConfirmation()
{
    LoaderInstrument instrument;
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmWrongly), Refusal);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
    QCOMPARE(instrument.Ask(ConfirmBoth), Refusal); // what was received is gone
    QVERIFY(!instrument.model.TakeConfirmedFirmware().has_value());

    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
}

void TestInstrumentModelUpdate::RestartForgetsWhatWasReceived()
{
    LoaderInstrument instrument;
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ModeUpdate), Acknowledge);
    QCOMPARE(instrument.Ask(ConfirmBoth, 500), Refusal);
    QCOMPARE(instrument.Ask(Ones, 500), Refusal);
}

void TestInstrumentModelUpdate::TimesOfTheInstallation()
{
    ModelOptions options = Options();
    options.restartTime = milliseconds(20);
    options.update.installTime = milliseconds(300);
    LoaderInstrument instrument(options);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    QCOMPARE(instrument.Ask(ReadStatus, 319), NoAnswer);
    QCOMPARE(instrument.Ask(ReadStatus, 320), NormalStatus);
}

void TestInstrumentModelUpdate::NewVersionAsTold()
{
    ModelOptions options = Options();
    options.update.newVersion = "217";
    LoaderInstrument instrument(options);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    QCOMPARE(instrument.Ask(ReadVersion, 2000).toHex(),
             QByteArray("504154343130323034383135323137303330323230313621f2"));
}

void TestInstrumentModelUpdate::ConfirmationAsTold()
{
    ModelOptions options = Options();
    options.update.confirmation = QByteArray::fromHex("abcd");
    LoaderInstrument instrument(options);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmWrongly), Acknowledge);
}

void TestInstrumentModelUpdate::RefusesUpdateMode()
{
    InstrumentModel model(Options(), Start);
    model.SetScenario(Scenario::RefusesUpdateMode, 1);
    QCOMPARE(model.Answer(ModeUpdate, Start), Refusal);
    QCOMPARE(model.Answer(ReadStatus, Start), NormalStatus);
    QCOMPARE(model.Answer(ModeCalibration, Start), Acknowledge);
}

void TestInstrumentModelUpdate::RefusesInitialize()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::RefusesInitialize, 1);
    QCOMPARE(instrument.Ask(Initialize), Refusal);
    QCOMPARE(instrument.Ask(Ones), Refusal);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
}

void TestInstrumentModelUpdate::RefusesSector()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::RefusesSector, 2);
    QCOMPARE(instrument.Ask(Initialize), Initialized);
    QCOMPARE(instrument.Ask(Ones), Acknowledge);
    QCOMPARE(instrument.Ask(Twos), Refusal);
    QCOMPARE(instrument.Ask(Twos), Refusal);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
}

void TestInstrumentModelUpdate::LosesSector()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::LosesSector, 2);
    QCOMPARE(instrument.Ask(Initialize), Initialized);
    QCOMPARE(instrument.Ask(Ones), Acknowledge);
    QCOMPARE(instrument.Ask(Twos), NoAnswer);
    QCOMPARE(instrument.Ask(Twos), NoAnswer);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
    instrument.model.SetScenario(Scenario::None, 1);
    QCOMPARE(instrument.Ask(Twos), Acknowledge);
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge); // the lost ones were not stored
}

void TestInstrumentModelUpdate::RefusesConfirmation()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::RefusesConfirmation, 1);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
    QCOMPARE(instrument.Ask(ReadStatus), UpdateStatus);
    QVERIFY(!instrument.model.TakeConfirmedFirmware().has_value());
}

void TestInstrumentModelUpdate::StaysInUpdateMode()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::StaysInUpdateMode, 1);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    QCOMPARE(instrument.Ask(ReadStatus, 1999), NoAnswer);
    QCOMPARE(instrument.Ask(ReadStatus, 2000), UpdateStatus);
    QCOMPARE(instrument.Ask(ReadVersion, 2000), OldVersion);

    instrument.model.SetScenario(Scenario::None, 1);
    QVERIFY(instrument.ReceiveBoth(2000));
    QCOMPARE(instrument.Ask(ConfirmBoth, 2000), Acknowledge);
    QCOMPARE(instrument.Ask(ReadVersion, 4000), NewVersion);
}

void TestInstrumentModelUpdate::ComesBackInMode2()
{
    LoaderInstrument instrument;
    instrument.model.SetScenario(Scenario::ComesBackInMode2, 1);
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    QCOMPARE(instrument.Ask(ReadStatus, 1999), NoAnswer);
    QCOMPARE(instrument.Ask(ReadStatus, 2000), Mode2Status);
    QCOMPARE(instrument.Ask(ModeNormal, 2100), Acknowledge);
    QCOMPARE(instrument.Ask(ReadStatus, 2600), NormalStatus);
    QCOMPARE(instrument.Ask(ReadVersion, 2600), NewVersion);
}

void TestInstrumentModelUpdate::TellsItsChanges()
{
    LoaderInstrument instrument;
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmWrongly), Refusal);
    QCOMPARE(instrument.model.TakeChanges(),
             (QStringList{QStringLiteral("update initialized"),
                          QStringLiteral("firmware of 1024 bytes not confirmed by abcd")}));
    QVERIFY(instrument.ReceiveBoth());
    QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    instrument.model.Advance(Start + milliseconds(2000));
    QCOMPARE(instrument.model.TakeChanges(),
             (QStringList{QStringLiteral("update initialized"),
                          QStringLiteral("firmware of 1024 bytes confirmed: version 1.05 -> 1.06"),
                          QStringLiteral("restarted into mode 0")}));
    QCOMPARE(instrument.model.TakeChanges(), QStringList());
}

void TestInstrumentModelUpdate::TellsWhenItIsBack()
{
    InstrumentModel model(Options(), Start);
    QCOMPARE(model.Answer(ModeCalibration, Start), Acknowledge);
    QVERIFY(model.NextChangeAt() == Start + milliseconds(500));
    model.Advance(Start + milliseconds(499));
    QCOMPARE(model.TakeChanges(), QStringList());
    model.Advance(Start + milliseconds(500));
    QCOMPARE(model.TakeChanges(), QStringList{QStringLiteral("restarted into mode 1")});
    QVERIFY(!model.NextChangeAt().has_value());
}

/// As a master sets the calibration date: by way of calibration mode and back.
void TestInstrumentModelUpdate::DatesSurviveRestarts()
{
    InstrumentModel model(Options(), Start);
    const auto at = [](int time) { return Start + milliseconds(time); };
    QCOMPARE(model.Answer(QByteArray::fromHex("72240307140509ab99"), at(0)), Acknowledge);
    QCOMPARE(model.Answer(ModeCalibration, at(0)), Acknowledge);
    QCOMPARE(model.Answer(QByteArray::fromHex("74240229000000b4f6"), at(500)), Acknowledge);
    QCOMPARE(model.Answer(ReadCurrentDate, at(1000)).left(6).toHex(), QByteArray("240307140510"));
    QCOMPARE(model.Answer(ModeNormal, at(1000)), Acknowledge);
    QCOMPARE(model.Answer(ReadCurrentDate, at(2000)).left(6).toHex(), QByteArray("240307140511"));
    QCOMPARE(model.Answer(ReadCalibrationDate, at(2000)).left(6).toHex(), QByteArray("240229000000"));

    QCOMPARE(model.Answer(ModeUpdate, at(2000)), Acknowledge);
    QCOMPARE(model.Answer(ModeNormal, at(2500)), Acknowledge);
    QCOMPARE(model.Answer(ReadCurrentDate, at(3000)).left(6).toHex(), QByteArray("240307140512"));
    QCOMPARE(model.Answer(ReadCalibrationDate, at(3000)).left(6).toHex(), QByteArray("240229000000"));
}

QTEST_APPLESS_MAIN(TestInstrumentModelUpdate)
#include "tst_instrumentmodelupdate.moc"
