#include <QtTest>

#include "simulator/wire/frames.h"
#include "simulator/wire/identity.h"
#include "simulator/wire/packeddate.h"
#include "simulator/wire/packedvalues.h"
#include "simulator/wire/requestcollector.h"
#include "simulator/wire/statusword.h"
#include "support/wire.h"

using namespace Wire;
using Simulator::RequestCollector;
using Simulator::TimePoint;
using std::chrono::microseconds;

class TestWire : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ChecksumFollowsLowByteFirst()
    {
        QCOMPARE(Simulator::Sealed("123456789").toHex(), QByteArray("313233343536373839c331"));
        QCOMPARE(Simulator::Sealed("s").toHex(), QByteArray("73f44e"));
        QCOMPARE(Simulator::Sealed("W").toHex(), QByteArray("57122a"));
    }

    void ShortFrames()
    {
        QCOMPARE(Simulator::Acknowledge().toHex(), QByteArray("06c660"));
        QCOMPARE(Simulator::Refusal().toHex(), QByteArray("214334"));
    }

    void DamageIsSeen_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<bool>("intact");
        QTest::newRow("intact") << Bytes("73f44e") << true;
        QTest::newRow("bit of the code") << Bytes("72f44e") << false;
        QTest::newRow("bit of the checksum") << Bytes("73f44f") << false;
        QTest::newRow("bytes of the checksum exchanged") << Bytes("734ef4") << false;
        QTest::newRow("checksum of nothing") << Bytes("0000") << false;
        QTest::newRow("one byte") << Bytes("73") << false;
        QTest::newRow("nothing") << QByteArray() << false;
    }

    void DamageIsSeen()
    {
        QFETCH(QByteArray, frame);
        QFETCH(bool, intact);
        QCOMPARE(Simulator::IsIntact(frame), intact);
    }

    void RequestSizes_data()
    {
        QTest::addColumn<QByteArray>("codes");
        QTest::addColumn<int>("size");
        QTest::newRow("no data") << QByteArray("sWSheRTV") << 3;
        QTest::newRow("mode") << QByteArray("x") << 4;
        QTest::newRow("confirmation") << QByteArray("Z") << 5;
        QTest::newRow("date") << QByteArray("rt") << 9;
        QTest::newRow("payload") << QByteArray("P") << 11;
        QTest::newRow("sector") << QByteArray("F") << 515;
        QTest::newRow("unknown") << QByteArray("\0wpX\xFF", 5) << 0;
    }

    void RequestSizes()
    {
        QFETCH(QByteArray, codes);
        QFETCH(int, size);
        for (const char code : codes) {
            QCOMPARE(Simulator::RequestSize(code), size);
        }
    }

    void PacksOneByteAField()
    {
        const QDateTime date(QDate(2024, 3, 7), QTime(14, 5, 9), Qt::UTC);
        QCOMPARE(Simulator::PackDate(date).toHex(), QByteArray("240307140509"));
    }

    void UnpacksOneByteAField()
    {
        const auto date = Simulator::UnpackDate(Bytes("241231235958"));
        QVERIFY(date.has_value());
        QCOMPARE(*date, QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58), Qt::UTC));
        const auto firstYear = Simulator::UnpackDate(Bytes("000101000000"));
        QVERIFY(firstYear.has_value());
        QCOMPARE(*firstYear, QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC));
    }

    void RefusesWhatIsNoDate_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("year beyond two digits") << Bytes("a00101000000");
        QTest::newRow("units beyond nine") << Bytes("240a01000000");
        QTest::newRow("month 13") << Bytes("241301000000");
        QTest::newRow("31 February") << Bytes("240231000000");
        QTest::newRow("25:00") << Bytes("240101250000");
        QTest::newRow("too short") << Bytes("2401010000");
        QTest::newRow("too long") << Bytes("24010100000000");
    }

    void RefusesWhatIsNoDate()
    {
        QFETCH(QByteArray, data);
        QVERIFY(!Simulator::UnpackDate(data).has_value());
    }

    void LittleEndianInTheirOrder()
    {
        QCOMPARE(Simulator::PackValues({1.0F, -2.0F, 0.5F, 230.0F, 0.0F, 0.1F}).toHex(),
                 QByteArray("0000803f000000c00000003f0000664300000000cdcccc3d"));
    }

    void FreshInstrument() { QCOMPARE(Simulator::StatusWord().Data().toHex(), QByteArray("00fe")); }

    void FieldsAtTheirPlaces()
    {
        Simulator::StatusWord status;
        status.newMeasurement = true;
        status.mode = 1;
        status.function = 3;
        status.error = 5;
        status.functionState = 2;
        QCOMPARE(status.Data().toHex(), QByteArray("a352"));
    }

    void StartTestResultWhileNoFunctionIsActive()
    {
        Simulator::StatusWord status;
        status.functionState = 7;
        status.startTestResult = 5;
        QCOMPARE(status.Data().toHex(), QByteArray("00f5"));
        status.function = 31;
        QCOMPARE(status.Data().toHex(), QByteArray("1ff7"));
    }

    void FieldsInTheirOrder()
    {
        Simulator::Identity identity;
        QCOMPARE(identity.Data(), QByteArray("PAT41020481510503022016"));
        identity.buildNumber = Bytes("02000204");
        QCOMPARE(identity.Data().size(), 23);
        QCOMPARE(identity.Data().right(4).toHex(), QByteArray("02000204"));
    }

    void VersionAsPeopleWriteIt()
    {
        Simulator::Identity identity;
        QCOMPARE(identity.VersionText(), QStringLiteral("1.05"));
        identity.version = "217";
        QCOMPARE(identity.VersionText(), QStringLiteral("2.17"));
    }

    void KnownRequestIsOverAtOnce()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(Bytes("73f44e"), start);
        const auto request = collector.Extract(start);
        QVERIFY(request.has_value());
        QCOMPARE(request->frame.toHex(), QByteArray("73f44e"));
        QVERIFY(!collector.Extract(start).has_value());
        QVERIFY(!collector.SilenceEndsAt().has_value());
    }

    void RequestInPieces()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(Bytes("7801"), start);
        QVERIFY(!collector.Extract(start).has_value());
        collector.Append(Bytes("d1"), start + microseconds(1500));
        QVERIFY(!collector.Extract(start + microseconds(2500)).has_value());
        collector.Append(Bytes("91"), start + microseconds(3000));
        const auto request = collector.Extract(start + microseconds(3000));
        QVERIFY(request.has_value());
        QCOMPARE(request->frame.toHex(), QByteArray("7801d191"));
        QVERIFY(request->receivedAt == start);
    }

    void TwoRequestsInOnePiece()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(Bytes("73f44e57122a"), start);
        QCOMPARE(collector.Extract(start).value().frame.toHex(), QByteArray("73f44e"));
        QCOMPARE(collector.Extract(start).value().frame.toHex(), QByteArray("57122a"));
    }

    void DamagedRequestIsOverAfterSilence()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(Bytes("73f44f"), start);
        QVERIFY(!collector.Extract(start + microseconds(49999)).has_value());
        QVERIFY(collector.SilenceEndsAt() == start + microseconds(50000));
        QCOMPARE(collector.Extract(start + microseconds(50000)).value().frame.toHex(), QByteArray("73f44f"));
    }

    void UnknownRequestIsOverAfterSilence()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(Bytes("00"), start);
        QVERIFY(!collector.Extract(start).has_value());
        QCOMPARE(collector.Extract(start + microseconds(50000)).value().frame.toHex(), QByteArray("00"));
    }

    void NoiseWithoutAPauseEndsSomewhere()
    {
        const TimePoint start;
        RequestCollector collector;
        collector.Append(QByteArray(1024, '\0'), start);
        QVERIFY(!collector.Extract(start).has_value());
        collector.Append(QByteArray(1, '\0'), start);
        QCOMPARE(collector.Extract(start).value().frame.size(), 1025);
    }

    void NothingIsNoRequest()
    {
        RequestCollector collector;
        QVERIFY(!collector.Extract(TimePoint() + std::chrono::hours(1)).has_value());
        QVERIFY(!collector.SilenceEndsAt().has_value());
    }
};

QTEST_APPLESS_MAIN(TestWire)
#include "tst_wire.moc"
