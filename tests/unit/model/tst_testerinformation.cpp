#include <QMetaObject>
#include <QtTest>

#include <Vesmar/testerinformation.h>

using Vesmar::TesterInformation;

class TestTesterInformation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BeginsWithItsDefaults()
    {
        const TesterInformation information(nullptr);
        QCOMPARE(information.DeviceName, QStringLiteral("PAT"));
        QCOMPARE(information.DeviceCode, QStringLiteral("000"));
        QCOMPARE(information.SerialNumber, QStringLiteral("000000"));
        QCOMPARE(information.Version, QStringLiteral("000"));
        QCOMPARE(information.VersionCode, QStringLiteral("000"));
        QCOMPARE(information.RevisionCode, QStringLiteral("00"));
        QCOMPARE(information.BuildNumber, QStringLiteral("0000"));
        QVERIFY(information.parent() == nullptr);
    }

    void HasMetaDataAndNothingInIt()
    {
        const QMetaObject& metaData = TesterInformation::staticMetaObject;
        QCOMPARE(metaData.className(), "Vesmar::TesterInformation");
        QCOMPARE(metaData.methodCount(), QObject::staticMetaObject.methodCount());
        QCOMPARE(metaData.propertyCount(), QObject::staticMetaObject.propertyCount());
    }
};

QTEST_APPLESS_MAIN(TestTesterInformation)
#include "tst_testerinformation.moc"
