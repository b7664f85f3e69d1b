#include <QtTest>

#include "askedmodel.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::FirmwareUpdate;
using Simulator::ModelOptions;
using Simulator::Scenario;

namespace
{

const QByteArray NoAnswer;
const QByteArray Ones = 'F' + QByteArray(512, '\x11') + Bytes("093e");
const QByteArray Twos = 'F' + QByteArray(512, '\x22') + Bytes("8977");
const QByteArray ConfirmBoth = Bytes("5acc5c4f51");
const QByteArray ConfirmWrongly = Bytes("5aabcd6a50");
const QByteArray NewVersion = Bytes("5041543431303230343831353130363033303232303136bd0e");

/// An instrument that was started in update mode.
struct LoaderInstrument : AskedModel {
    explicit LoaderInstrument(const ModelOptions& options = Options()) : AskedModel(options)
    {
        model.SetMode(3);
    }

    /// Sends everything up to the confirmation.
    bool ReceiveBoth(int time = 0)
    {
        return Ask(InitializeUpdate, time) == UpdateInitialized && Ask(Ones, time) == Acknowledge &&
               Ask(Twos, time) == Acknowledge;
    }
};

const QByteArray OnesImage(512, '\x11');
const QByteArray TwosImage(512, '\x22');
const QByteArray OnesConfirmation = Bytes("8038");
const QByteArray BothConfirmation = Bytes("cc5c");

/// Returns an update that has received these sectors.
FirmwareUpdate Received(const QByteArrayList& sectors)
{
    FirmwareUpdate update({});
    update.Initialize();
    for (const QByteArray& sector : sectors) {
        update.StoreSector(sector);
    }
    return update;
}

} // namespace

Q_DECLARE_METATYPE(Scenario)

class TestInstrumentModelUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void UpdateFromTheBeginning()
    {
        AskedModel instrument;
        instrument.Converse({{0, ReadVersion, Version},
                             {0, ChangeToUpdateMode, Acknowledge},
                             {499, ReadStatus, NoAnswer},
                             {500, ReadStatus, UpdateModeStatus},
                             {510, ReadVersion, Version},
                             {520, InitializeUpdate, UpdateInitialized},
                             {530, Ones, Acknowledge},
                             {540, Twos, Acknowledge},
                             {550, ReadStatus, UpdateModeStatus}});
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
        instrument.Converse({{1000, ConfirmBoth, Acknowledge},
                             {2999, ReadStatus, NoAnswer},
                             {3000, ReadStatus, IdleStatus},
                             {3010, ReadVersion, NewVersion}});
        QCOMPARE(instrument.model.CollectConfirmedFirmware().value_or(QByteArray()),
                 QByteArray(512, '\x11') + QByteArray(512, '\x22'));
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
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
        instrument.Converse(
            {{0, request, Refusal}, {0, ReadStatus, UpdateModeStatus}, {0, ReadVersion, Version}});
        QCOMPARE(instrument.model.Date(AskedModel::At(0)),
                 QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
        instrument.Converse({{0, ChangeToNormalMode, Acknowledge}, {500, ReadStatus, IdleStatus}});
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
        instrument.Converse({{0, InitializeUpdate, Refusal}, {0, Ones, Refusal}, {0, ConfirmBoth, Refusal}});
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
    }

    void HasNoReadingsInUpdateMode()
    {
        AskedModel instrument;
        QCOMPARE(instrument.Ask(ReadStatus, 500), Sealed("80fe"));
        instrument.model.SetFunction(9);
        instrument.model.SetMode(3);
        instrument.Converse({{510, ReadStatus, UpdateModeStatus}, {5000, ReadStatus, UpdateModeStatus}});
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
        instrument.Converse({{0, InitializeUpdate, UpdateInitialized},
                             {0, Ones, Acknowledge},
                             {0, request, Refusal},
                             {0, Twos, Acknowledge},
                             {0, ConfirmBoth, Acknowledge}});
    }

    void SectorBeforeTheInitialization()
    {
        LoaderInstrument instrument;
        QCOMPARE(instrument.Ask(Ones, 0), Refusal);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth, 0), Acknowledge);
    }

    void WrongConfirmation()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse({
            {0, ConfirmWrongly, Refusal},
            {0, ReadStatus, UpdateModeStatus},
            {0, ConfirmBoth, Refusal} // The received sectors are gone.
        });
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());

        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth, 0), Acknowledge);
    }

    void RestartForgetsWhatWasReceived()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse(
            {{0, ChangeToUpdateMode, Acknowledge}, {500, ConfirmBoth, Refusal}, {500, Ones, Refusal}});
    }

    void TimesOfTheInstallation()
    {
        ModelOptions options = AskedModel::Options();
        options.restartTime = 20ms;
        options.update.installTime = 300ms;
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse(
            {{0, ConfirmBoth, Acknowledge}, {319, ReadStatus, NoAnswer}, {320, ReadStatus, IdleStatus}});
    }

    void NewVersionAsTold()
    {
        ModelOptions options = AskedModel::Options();
        options.update.newVersion = "217";
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse(
            {{0, ConfirmBoth, Acknowledge},
             {2000, ReadVersion, Bytes("504154343130323034383135323137303330323230313621f2")}});
    }

    void ConfirmationAsTold()
    {
        ModelOptions options = AskedModel::Options();
        options.update.confirmation = Bytes("abcd");
        LoaderInstrument instrument(options);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth, 0), Refusal);
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmWrongly, 0), Acknowledge);
    }

    void RefusesUpdateMode()
    {
        AskedModel instrument;
        instrument.model.SetScenario(Scenario::RefusesUpdateMode, 1);
        instrument.Converse({{0, ChangeToUpdateMode, Refusal},
                             {0, ReadStatus, IdleStatus},
                             {0, ChangeToCalibrationMode, Acknowledge}});
    }

    void RefusesInitialize()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::RefusesInitialize, 1);
        instrument.Converse(
            {{0, InitializeUpdate, Refusal}, {0, Ones, Refusal}, {0, ReadStatus, UpdateModeStatus}});
    }

    void SectorFails_data()
    {
        QTest::addColumn<Scenario>("scenario");
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("refused") << Scenario::RefusesSector << Refusal;
        QTest::newRow("lost") << Scenario::LosesSector << NoAnswer;
    }

    /// The sector is not stored, so that the confirmation fits once the sector has been accepted.
    void SectorFails()
    {
        QFETCH(Scenario, scenario);
        QFETCH(QByteArray, answer);
        LoaderInstrument instrument;
        instrument.model.SetScenario(scenario, 2);
        instrument.Converse({{0, InitializeUpdate, UpdateInitialized},
                             {0, Ones, Acknowledge},
                             {0, Twos, answer},
                             {0, Twos, answer},
                             {0, ReadStatus, UpdateModeStatus}});
        instrument.model.SetScenario(Scenario::None, 1);
        instrument.Converse({{0, Twos, Acknowledge}, {0, ConfirmBoth, Acknowledge}});
    }

    void RefusesConfirmation()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::RefusesConfirmation, 1);
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse({{0, ConfirmBoth, Refusal}, {0, ReadStatus, UpdateModeStatus}});
        QVERIFY(!instrument.model.CollectConfirmedFirmware().has_value());
    }

    void StaysInUpdateMode()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::StaysInUpdateMode, 1);
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse({{0, ConfirmBoth, Acknowledge},
                             {1999, ReadStatus, NoAnswer},
                             {2000, ReadStatus, UpdateModeStatus},
                             {2000, ReadVersion, Version}});

        instrument.model.SetScenario(Scenario::None, 1);
        QVERIFY(instrument.ReceiveBoth(2000));
        instrument.Converse({{2000, ConfirmBoth, Acknowledge}, {4000, ReadVersion, NewVersion}});
    }

    void ComesBackInMode2()
    {
        LoaderInstrument instrument;
        instrument.model.SetScenario(Scenario::ComesBackInMode2, 1);
        QVERIFY(instrument.ReceiveBoth());
        instrument.Converse({{0, ConfirmBoth, Acknowledge},
                             {1999, ReadStatus, NoAnswer},
                             {2000, ReadStatus, Mode2Status},
                             {2100, ChangeToNormalMode, Acknowledge},
                             {2600, ReadStatus, IdleStatus},
                             {2600, ReadVersion, NewVersion}});
    }

    void ReportsItsChanges()
    {
        LoaderInstrument instrument;
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmWrongly, 0), Refusal);
        QCOMPARE(instrument.model.CollectChanges(),
                 (QStringList{QStringLiteral("update initialized"),
                              QStringLiteral("firmware of 1024 bytes not confirmed by abcd")}));
        QVERIFY(instrument.ReceiveBoth());
        QCOMPARE(instrument.Ask(ConfirmBoth, 0), Acknowledge);
        instrument.model.Advance(AskedModel::At(2000));
        QCOMPARE(instrument.model.CollectChanges(),
                 (QStringList{QStringLiteral("update initialized"),
                              QStringLiteral("firmware of 1024 bytes confirmed: version 1.05 -> 1.06"),
                              QStringLiteral("restarted into mode 0")}));
        QCOMPARE(instrument.model.CollectChanges(), QStringList());
    }

    void KnowsWhenItIsBack()
    {
        AskedModel instrument;
        QCOMPARE(instrument.Ask(ChangeToCalibrationMode, 0), Acknowledge);
        QVERIFY(instrument.model.NextChangeAt() == AskedModel::At(500));
        instrument.model.Advance(AskedModel::At(499));
        QCOMPARE(instrument.model.CollectChanges(), QStringList());
        instrument.model.Advance(AskedModel::At(500));
        QCOMPARE(instrument.model.CollectChanges(), QStringList{QStringLiteral("restarted into mode 1")});
        QVERIFY(!instrument.model.NextChangeAt().has_value());
    }

    /// An application sets the calibration date like this: it changes to calibration mode and back.
    void DatesSurviveRestarts()
    {
        AskedModel instrument;
        instrument.Converse({{0, Bytes("72240307140509ab99"), Acknowledge},
                             {0, ChangeToCalibrationMode, Acknowledge},
                             {500, Bytes("74240229000000b4f6"), Acknowledge},
                             {1000, ReadCurrentDate, Sealed("240307140510")},
                             {1000, ChangeToNormalMode, Acknowledge},
                             {2000, ReadCurrentDate, Sealed("240307140511")},
                             {2000, ReadCalibrationDate, Sealed("240229000000")}});

        instrument.Converse({{2000, ChangeToUpdateMode, Acknowledge},
                             {2500, ChangeToNormalMode, Acknowledge},
                             {3000, ReadCurrentDate, Sealed("240307140512")},
                             {3000, ReadCalibrationDate, Sealed("240229000000")}});
    }

    void ConfirmationIsTheChecksum()
    {
        QCOMPARE(Simulator::ConfirmationOf("123456789").toHex(), QByteArray("c331"));
        QCOMPARE(Simulator::ConfirmationOf(OnesImage), OnesConfirmation);
        QCOMPARE(Simulator::ConfirmationOf(OnesImage + TwosImage), BothConfirmation);
    }

    void InitializationEmptiesTheStore()
    {
        FirmwareUpdate update = Received({TwosImage, TwosImage});
        QVERIFY(update.Initialize());
        QCOMPARE(update.Size(), 0);
        QVERIFY(update.StoreSector(OnesImage));
        QCOMPARE(update.Finish(OnesConfirmation).value_or(QByteArray()), OnesImage);
    }

    void ConfirmationThatDoesNotFit_data()
    {
        QTest::addColumn<QByteArray>("confirmation");
        QTest::newRow("other bytes") << Bytes("abcd");
        QTest::newRow("high byte first") << Bytes("5ccc");
        QTest::newRow("of one sector") << OnesConfirmation;
        QTest::newRow("one byte") << Bytes("cc");
        QTest::newRow("one byte too many") << Bytes("cc5c00");
        QTest::newRow("no byte") << QByteArray();
    }

    void ConfirmationThatDoesNotFit()
    {
        QFETCH(QByteArray, confirmation);
        FirmwareUpdate update = Received({OnesImage, TwosImage});
        QVERIFY(!update.Finish(confirmation).has_value());
        QCOMPARE(update.Size(), 0);
        QVERIFY(!update.StoreSector(OnesImage));
        QVERIFY(!update.Finish(BothConfirmation).has_value());
    }

    void NothingIsNoFirmware()
    {
        FirmwareUpdate update = Received({});
        QVERIFY(!update.Finish(Bytes("0000")).has_value()); // This is the checksum of no bytes.
        FirmwareUpdate other(Bytes("abcd"));
        QVERIFY(other.Initialize());
        QVERIFY(!other.Finish(Bytes("abcd")).has_value());
    }

    void ClosedByItsEnd()
    {
        FirmwareUpdate update = Received({OnesImage});
        QVERIFY(update.Finish(OnesConfirmation).has_value());
        QVERIFY(!update.StoreSector(OnesImage));
        QVERIFY(!update.Finish(OnesConfirmation).has_value());
    }

    void LostSector()
    {
        FirmwareUpdate update({});
        update.SetScenario(Scenario::LosesSector, 1);
        QVERIFY(!update.LosesNextSector()); // The sector is refused instead.
        QVERIFY(update.Initialize());
        QVERIFY(update.LosesNextSector());
        update.SetScenario(Scenario::LosesSector, 2);
        QVERIFY(!update.LosesNextSector());
        QVERIFY(update.StoreSector(OnesImage));
        QVERIFY(update.LosesNextSector());
        update.SetScenario(Scenario::LosesSector, 1);
        QVERIFY(!update.LosesNextSector());
    }
};

QTEST_APPLESS_MAIN(TestInstrumentModelUpdate)
#include "tst_instrumentmodelupdate.moc"