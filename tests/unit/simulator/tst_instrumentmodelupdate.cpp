#include <QtTest>

#include "simulator/model/instrumentmodel.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::InstrumentModel;
using Simulator::ModelOptions;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::milliseconds;

namespace
{

const QByteArray NoAnswer;
const QByteArray Ones = 'F' + QByteArray(512, '\x11') + Bytes("093e");
const QByteArray Twos = 'F' + QByteArray(512, '\x22') + Bytes("8977");
const QByteArray ConfirmBoth = Bytes("5acc5c4f51");
const QByteArray ConfirmWrongly = Bytes("5aabcd6a50");
const QByteArray NewVersion = Bytes("5041543431303230343831353130363033303232303136bd0e");

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
        return Ask(InitializeUpdate, time) == UpdateInitialized && Ask(Ones, time) == Acknowledge &&
               Ask(Twos, time) == Acknowledge;
    }

    InstrumentModel model;
};

} // namespace

class TestInstrumentModelUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void UpdateFromTheBeginning()
    {
        InstrumentModel model(Options(), Start);
        const auto at = [](int time) { return Start + milliseconds(time); };
        QCOMPARE(model.Answer(ReadVersion, at(0)), Version);
        QCOMPARE(model.Answer(ChangeToUpdateMode, at(0)), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, at(499)), NoAnswer);
        QCOMPARE(model.Answer(ReadStatus, at(500)), UpdateModeStatus);
        QCOMPARE(model.Answer(ReadVersion, at(510)), Version);
        QCOMPARE(model.Answer(InitializeUpdate, at(520)), UpdateInitialized);
        QCOMPARE(model.Answer(Ones, at(530)), Acknowledge);
        QCOMPARE(model.Answer(Twos, at(540)), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, at(550)), UpdateModeStatus);
        QVERIFY(!model.CollectConfirmedFirmware().has_value());
        QCOMPARE(model.Answer(ConfirmBoth, at(1000)), Acknowledge);
        QCOMPARE(model.Answer(ReadStatus, at(2999)), NoAnswer);
        QCOMPARE(model.Answer(ReadStatus, at(3000)), IdleStatus);
        QCOMPARE(model.Answer(ReadVersion, at(3010)), NewVersion);
        QCOMPARE(model.CollectConfirmedFirmware().value_or(QByteArray()),
                 QByteArray(512, '\x11') + QByteArray(512, '\x22'));
        QVERIFY(!model.CollectConfirmedFirmware().has_value());
    }

    void KnowsOnlyTheLoaderInUpdateMode_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("read measurement") << Bytes("65033c");
        QTest::newRow("prepare") << Bytes("5001ff0100ffffffffea32");
        QTest::newRow("start") << Bytes("53966a");
        QTest::newRow("stop") << Bytes("68aeed");
        QTest::newRow("read current date") << ReadCurrentDate;
        QTest::newRow("read calibration date") << ReadCalibrationDate;
        QTest::newRow("set current date") << Bytes("72240307140509ab99");
        QTest::newRow("set calibration date") << Bytes("74240229000000b4f6");
        QTest::newRow("mode 4") << Bytes("780474c1");
    }

    void KnowsOnlyTheLoaderInUpdateMode()
    {
        QFETCH(QByteArray, request);
        LoaderInstrument instrument;
        QCOMPARE(instrument.Ask(request), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
        QCOMPARE(instrument.Ask(ReadVersion), Version);
        QCOMPARE(instrument.model.Date(Start), QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
        QCOMPARE(instrument.Ask(ChangeToNormalMode), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 500), IdleStatus);
    }

    void KnowsTheLoaderInUpdateModeOnly_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("normal") << 0;
        QTest::newRow("calibration") << 1;
        QTest::newRow("mode 2") << 2;
    }

    void KnowsTheLoaderInUpdateModeOnly()
    {
        QFETCH(int, mode);
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        instrument.model.SetMode(mode);
        QCOMPARE(instrument.Ask(InitializeUpdate), Refusal);
        QCOMPARE(instrument.Ask(Ones), Refusal);
        QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
    }

    void HasNoReadingsInUpdateMode()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(ReadStatus, Start + 500ms).left(2).toHex(), QByteArray("80fe"));
        model.SetFunction(9);
        model.SetMode(3);
        QCOMPARE(model.Answer(ReadStatus, Start + 510ms), UpdateModeStatus);
        QCOMPARE(model.Answer(ReadStatus, Start + 5000ms), UpdateModeStatus);
    }

    void SectorsOfTheWrongSize_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::newRow("none") << Bytes("460228");
        QTest::newRow("511") << 'F' + QByteArray(511, '\x11') + Bytes("ab3a");
        QTest::newRow("513") << 'F' + QByteArray(513, '\x11') + Bytes("8ddc");
        QTest::newRow("bad checksum") << 'F' + QByteArray(512, '\x11') + Bytes("093f");
    }

    void SectorsOfTheWrongSize()
    {
        QFETCH(QByteArray, request);
        LoaderInstrument instrument;
        QCOMPARE(instrument.Ask(InitializeUpdate), UpdateInitialized);
        QCOMPARE(instrument.Ask(Ones), Acknowledge);
        QCOMPARE(instrument.Ask(request), Refusal);
        QCOMPARE(instrument.Ask(Twos), Acknowledge);
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    }

    void SectorBeforeTheInitialization()
    {
        LoaderInstrument instrument;
        QCOMPARE(instrument.Ask(Ones), Refusal);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    }

    void WrongConfirmation()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmWrongly), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
        QCOMPARE(instrument.Ask(ConfirmBoth), Refusal); // what was received is gone
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());

        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
    }

    void RestartForgetsWhatWasReceived()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ChangeToUpdateMode), Acknowledge);
        QCOMPARE(instrument.Ask(ConfirmBoth, 500), Refusal);
        QCOMPARE(instrument.Ask(Ones, 500), Refusal);
    }

    void TimesOfTheInstallation()
    {
        ModelOptions options = Options();
        options.restartTime = 20ms;
        options.update.installTime = 300ms;
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 319), NoAnswer);
        QCOMPARE(instrument.Ask(ReadStatus, 320), IdleStatus);
    }

    void NewVersionAsTold()
    {
        ModelOptions options = Options();
        options.update.newVersion = "217";
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
        QCOMPARE(instrument.Ask(ReadVersion, 2000).toHex(),
                 QByteArray("504154343130323034383135323137303330323230313621f2"));
    }

    void ConfirmationAsTold()
    {
        ModelOptions options = Options();
        options.update.confirmation = Bytes("abcd");
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmWrongly), Acknowledge);
    }

    void RefusesUpdateMode()
    {
        InstrumentModel model(Options(), Start);
        model.SetScenario(Scenario::RefusesUpdateMode, 1);
        QCOMPARE(model.Answer(ChangeToUpdateMode, Start), Refusal);
        QCOMPARE(model.Answer(ReadStatus, Start), IdleStatus);
        QCOMPARE(model.Answer(ChangeToCalibrationMode, Start), Acknowledge);
    }

    void RefusesInitialize()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::RefusesInitialize, 1);
        QCOMPARE(instrument.Ask(InitializeUpdate), Refusal);
        QCOMPARE(instrument.Ask(Ones), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
    }

    void RefusesSector()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::RefusesSector, 2);
        QCOMPARE(instrument.Ask(InitializeUpdate), UpdateInitialized);
        QCOMPARE(instrument.Ask(Ones), Acknowledge);
        QCOMPARE(instrument.Ask(Twos), Refusal);
        QCOMPARE(instrument.Ask(Twos), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
    }

    void LosesSector()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::LosesSector, 2);
        QCOMPARE(instrument.Ask(InitializeUpdate), UpdateInitialized);
        QCOMPARE(instrument.Ask(Ones), Acknowledge);
        QCOMPARE(instrument.Ask(Twos), NoAnswer);
        QCOMPARE(instrument.Ask(Twos), NoAnswer);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
        instrument.model.SetScenario(Scenario::None, 1);
        QCOMPARE(instrument.Ask(Twos), Acknowledge);
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge); // the lost ones were not stored
    }

    void RefusesConfirmation()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::RefusesConfirmation, 1);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Refusal);
        QCOMPARE(instrument.Ask(ReadStatus), UpdateModeStatus);
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
    }

    void StaysInUpdateMode()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::StaysInUpdateMode, 1);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1999), NoAnswer);
        QCOMPARE(instrument.Ask(ReadStatus, 2000), UpdateModeStatus);
        QCOMPARE(instrument.Ask(ReadVersion, 2000), Version);

        instrument.model.SetScenario(Scenario::None, 1);
        QVERIFY(instrument.ReceiveBoth(2000));
        QCOMPARE(instrument.Ask(ConfirmBoth, 2000), Acknowledge);
        QCOMPARE(instrument.Ask(ReadVersion, 4000), NewVersion);
    }

    void ComesBackInMode2()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::ComesBackInMode2, 1);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 1999), NoAnswer);
        QCOMPARE(instrument.Ask(ReadStatus, 2000), Mode2Status);
        QCOMPARE(instrument.Ask(ChangeToNormalMode, 2100), Acknowledge);
        QCOMPARE(instrument.Ask(ReadStatus, 2600), IdleStatus);
        QCOMPARE(instrument.Ask(ReadVersion, 2600), NewVersion);
    }

    void TellsItsChanges()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmWrongly), Refusal);
        QCOMPARE(instrument.model.CollectChanges(),
                 (QStringList{QStringLiteral("update initialized"),
                              QStringLiteral("firmware of 1024 bytes not confirmed by abcd")}));
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth), Acknowledge);
        instrument.model.Advance(Start + 2000ms);
        QCOMPARE(instrument.model.CollectChanges(),
                 (QStringList{QStringLiteral("update initialized"),
                              QStringLiteral("firmware of 1024 bytes confirmed: version 1.05 -> 1.06"),
                              QStringLiteral("restarted into mode 0")}));
        QCOMPARE(instrument.model.CollectChanges(), QStringList());
    }

    void TellsWhenItIsBack()
    {
        InstrumentModel model(Options(), Start);
        QCOMPARE(model.Answer(ChangeToCalibrationMode, Start), Acknowledge);
        QVERIFY(model.NextChangeAt() == Start + 500ms);
        model.Advance(Start + 499ms);
        QCOMPARE(model.CollectChanges(), QStringList());
        model.Advance(Start + 500ms);
        QCOMPARE(model.CollectChanges(), QStringList{QStringLiteral("restarted into mode 1")});
        QVERIFY(!model.NextChangeAt().has_value());
    }

    /// As a master sets the calibration date: by way of calibration mode and back.
    void DatesSurviveRestarts()
    {
        InstrumentModel model(Options(), Start);
        const auto at = [](int time) { return Start + milliseconds(time); };
        QCOMPARE(model.Answer(Bytes("72240307140509ab99"), at(0)), Acknowledge);
        QCOMPARE(model.Answer(ChangeToCalibrationMode, at(0)), Acknowledge);
        QCOMPARE(model.Answer(Bytes("74240229000000b4f6"), at(500)), Acknowledge);
        QCOMPARE(model.Answer(ReadCurrentDate, at(1000)).left(6).toHex(), QByteArray("240307140510"));
        QCOMPARE(model.Answer(ChangeToNormalMode, at(1000)), Acknowledge);
        QCOMPARE(model.Answer(ReadCurrentDate, at(2000)).left(6).toHex(), QByteArray("240307140511"));
        QCOMPARE(model.Answer(ReadCalibrationDate, at(2000)).left(6).toHex(), QByteArray("240229000000"));

        QCOMPARE(model.Answer(ChangeToUpdateMode, at(2000)), Acknowledge);
        QCOMPARE(model.Answer(ChangeToNormalMode, at(2500)), Acknowledge);
        QCOMPARE(model.Answer(ReadCurrentDate, at(3000)).left(6).toHex(), QByteArray("240307140512"));
        QCOMPARE(model.Answer(ReadCalibrationDate, at(3000)).left(6).toHex(), QByteArray("240229000000"));
    }
};

QTEST_APPLESS_MAIN(TestInstrumentModelUpdate)
#include "tst_instrumentmodelupdate.moc"
