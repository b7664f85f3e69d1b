#include <QtTest>

#include "protocol/version.h"
#include "support/wire.h"

using Vesmar::TesterInformation;

class TestVersion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FieldsAreTextsInLatin1_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QStringList>("fields");
        const auto row = [](const char* name, const QByteArray& frame, const QStringList& fields) {
            QTest::newRow(name) << WithChecksum(frame) << fields;
        };
        row("every field different", "TTRA12987654105XYQ72016",
            {QStringLiteral("TTR"), QStringLiteral("A12"), QStringLiteral("987654"), QStringLiteral("1.05"),
             QStringLiteral("XY"), QStringLiteral("Q7"), QStringLiteral("2016")});
        row("texts end at a zero byte",
            Wire::Bytes("54 00 52 00 00 00 39 38 37 00 35 34 00 30 00 58 00 00 59 00 00 00 00"),
            {QStringLiteral("T"), QString(), QStringLiteral("987"), QStringLiteral(".0"), QStringLiteral("X"),
             QString(), QStringLiteral("0")});
        row("control characters and letters above ASCII",
            Wire::Bytes("E9 0A FF 30 30 30 30 30 30 30 30 30 31 B0 35 30 30 30 30 31 31 31 31"),
            {QString::fromLatin1("\xE9\n\xFF"), QStringLiteral("000"), QStringLiteral("000000"),
             QString::fromLatin1("1.\xB0") + QLatin1Char('5'), QStringLiteral("00"), QStringLiteral("00"),
             QStringLiteral("1111")});
    }

    void FieldsAreTextsInLatin1()
    {
        QFETCH(const QByteArray, frame);
        TesterInformation information(nullptr);
        Vesmar::DecodeVersion(frame, information);
        const QStringList fields{information.DeviceName, information.DeviceCode,  information.SerialNumber,
                                 information.Version,    information.VersionCode, information.RevisionCode,
                                 information.BuildNumber};
        QTEST(fields, "fields");
    }

    void BuildNumberIsTextOrFourNumbers_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("buildNumber");
        const auto row = [](const char* name, const char* bytes, const char* text) {
            QTest::newRow(name) << Wire::Bytes(bytes) << QString::fromLatin1(text);
        };
        row("digits", "31 32 33 34", "1234");
        row("digits keep leading zeros", "30 30 31 36", "0016");
        row("numbers", "01 02 03 04", "1234");
        row("numbers, the year 2024", "02 00 02 04", "2024");
        row("digits and numbers mixed", "31 32 03 04", "54034");
        row("one byte is no digit", "30 31 0A 33", "53051");
        row("the byte before the digits", "2F 30 30 30", "52328");
        row("the byte after the digits", "30 30 30 3A", "53338");
        row("numbers of zero lose leading zeros", "00 00 01 06", "16");
        row("bytes count as unsigned", "FF FF FF FF", "283305");
    }

    void BuildNumberIsTextOrFourNumbers()
    {
        QFETCH(const QByteArray, bytes);
        TesterInformation information(nullptr);
        Vesmar::DecodeVersion(WithChecksum(QByteArray(19, 'A') + bytes), information);
        QTEST(information.BuildNumber, "buildNumber");
    }
};

QTEST_APPLESS_MAIN(TestVersion)
#include "tst_version.moc"
