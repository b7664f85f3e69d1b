#include <QtTest>

#include "simulator/wire/identity.h"

class TestIdentity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FieldsInTheirOrder();
    void VersionAsPeopleWriteIt();
};

void TestIdentity::FieldsInTheirOrder()
{
    Simulator::Identity identity;
    QCOMPARE(identity.Data(), QByteArray("PAT41020481510503022016"));
    identity.buildNumber = QByteArray::fromHex("02000204");
    QCOMPARE(identity.Data().size(), 23);
    QCOMPARE(identity.Data().right(4).toHex(), QByteArray("02000204"));
}

void TestIdentity::VersionAsPeopleWriteIt()
{
    Simulator::Identity identity;
    QCOMPARE(identity.VersionText(), QStringLiteral("1.05"));
    identity.version = "217";
    QCOMPARE(identity.VersionText(), QStringLiteral("2.17"));
}

QTEST_APPLESS_MAIN(TestIdentity)
#include "tst_identity.moc"
