#include <QtTest>

#include "simulator/model/firmwareupdate.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::FirmwareUpdate;
using Simulator::Scenario;

namespace
{

const QByteArray Ones(512, '\x11');
const QByteArray Twos(512, '\x22');
const QByteArray OnesConfirmation = Bytes("8038");
const QByteArray BothConfirmation = Bytes("cc5c");

/// An update that has received these sectors.
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

class TestFirmwareUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ConfirmationIsTheChecksum()
    {
        QCOMPARE(Simulator::ConfirmationOf("123456789").toHex(), QByteArray("c331"));
        QCOMPARE(Simulator::ConfirmationOf(Ones), OnesConfirmation);
        QCOMPARE(Simulator::ConfirmationOf(Ones + Twos), BothConfirmation);
    }

    void StoresSectorsInTheirOrder()
    {
        FirmwareUpdate update({});
        QVERIFY(update.Initialize());
        QVERIFY(update.StoreSector(Ones));
        QCOMPARE(update.Size(), 512);
        QVERIFY(update.StoreSector(Twos));
        QCOMPARE(update.Size(), 1024);
        QCOMPARE(update.Finish(BothConfirmation).value_or(QByteArray()), Ones + Twos);
    }

    void TakesNothingBeforeTheInitialization()
    {
        FirmwareUpdate update({});
        QVERIFY(!update.StoreSector(Ones));
        QCOMPARE(update.Size(), 0);
        QVERIFY(!update.Finish(OnesConfirmation).has_value());
    }

    void InitializationEmptiesTheStore()
    {
        FirmwareUpdate update = Received({Twos, Twos});
        QVERIFY(update.Initialize());
        QCOMPARE(update.Size(), 0);
        QVERIFY(update.StoreSector(Ones));
        QCOMPARE(update.Finish(OnesConfirmation).value_or(QByteArray()), Ones);
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
        FirmwareUpdate update = Received({Ones, Twos});
        QVERIFY(!update.Finish(confirmation).has_value());
        QCOMPARE(update.Size(), 0);
        QVERIFY(!update.StoreSector(Ones));
        QVERIFY(!update.Finish(BothConfirmation).has_value());
    }

    void OtherConfirmation()
    {
        FirmwareUpdate update(Bytes("abcd"));
        QVERIFY(update.Initialize());
        QVERIFY(update.StoreSector(Ones));
        QVERIFY(!update.Finish(OnesConfirmation).has_value());
        QVERIFY(update.Initialize());
        QVERIFY(update.StoreSector(Ones));
        QVERIFY(update.Finish(Bytes("abcd")).has_value());
    }

    void NothingIsNoFirmware()
    {
        FirmwareUpdate update = Received({});
        QVERIFY(!update.Finish(Bytes("0000")).has_value()); // the checksum of nothing
        FirmwareUpdate other(Bytes("abcd"));
        QVERIFY(other.Initialize());
        QVERIFY(!other.Finish(Bytes("abcd")).has_value());
    }

    void ClosedByItsEnd()
    {
        FirmwareUpdate update = Received({Ones});
        QVERIFY(update.Finish(OnesConfirmation).has_value());
        QVERIFY(!update.StoreSector(Ones));
        QVERIFY(!update.Finish(OnesConfirmation).has_value());
    }

    void RefusedUpdateMode()
    {
        FirmwareUpdate update({});
        QVERIFY(!update.RefusesUpdateMode());
        update.SetScenario(Scenario::RefusesUpdateMode, 1);
        QVERIFY(update.RefusesUpdateMode());
    }

    void RefusedInitialization()
    {
        FirmwareUpdate update = Received({Ones});
        update.SetScenario(Scenario::RefusesInitialize, 1);
        QVERIFY(!update.Initialize());
        QVERIFY(!update.StoreSector(Ones));
    }

    void RefusedSector()
    {
        FirmwareUpdate update = Received({});
        update.SetScenario(Scenario::RefusesSector, 2);
        QVERIFY(update.StoreSector(Ones));
        QVERIFY(!update.StoreSector(Twos));
        QVERIFY(!update.StoreSector(Twos));
        QVERIFY(!update.LosesNextSector());
        update.SetScenario(Scenario::None, 2);
        QVERIFY(update.StoreSector(Twos));
        QCOMPARE(update.Finish(BothConfirmation).value_or(QByteArray()), Ones + Twos);
    }

    void LostSector()
    {
        FirmwareUpdate update({});
        update.SetScenario(Scenario::LosesSector, 1);
        QVERIFY(!update.LosesNextSector()); // it is refused
        QVERIFY(update.Initialize());
        QVERIFY(update.LosesNextSector());
        update.SetScenario(Scenario::LosesSector, 2);
        QVERIFY(!update.LosesNextSector());
        QVERIFY(update.StoreSector(Ones));
        QVERIFY(update.LosesNextSector());
        update.SetScenario(Scenario::LosesSector, 1);
        QVERIFY(!update.LosesNextSector());
    }

    void RefusedConfirmation()
    {
        FirmwareUpdate update = Received({Ones});
        update.SetScenario(Scenario::RefusesConfirmation, 1);
        QVERIFY(!update.Finish(OnesConfirmation).has_value());
    }

    void HowItComesBack_data()
    {
        QTest::addColumn<int>("scenario");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("installs");
        QTest::newRow("as it should") << static_cast<int>(Scenario::None) << 0 << true;
        QTest::newRow("measurement") << static_cast<int>(Scenario::FallsBack) << 0 << true;
        QTest::newRow("stays") << static_cast<int>(Scenario::StaysInUpdateMode) << 3 << false;
        QTest::newRow("mode 2") << static_cast<int>(Scenario::ComesBackInMode2) << 2 << true;
    }

    void HowItComesBack()
    {
        QFETCH(int, scenario);
        QFETCH(int, mode);
        QFETCH(bool, installs);
        FirmwareUpdate update = Received({Ones});
        update.SetScenario(static_cast<Scenario>(scenario), 1);
        QVERIFY(update.Finish(OnesConfirmation).has_value());
        QCOMPARE(update.ModeAfterwards(), mode);
        QCOMPARE(update.InstallsFirmware(), installs);
    }
};

QTEST_APPLESS_MAIN(TestFirmwareUpdate)
#include "tst_firmwareupdate.moc"
