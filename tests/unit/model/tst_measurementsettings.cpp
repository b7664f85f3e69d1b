#include <memory>
#include <type_traits>

#include <QtTest>

#include <Vesmar/measurementsettings.h>

using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

class TestMeasurementSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KeepsItsFunction();
    void IgnoresAParent();
    void CopiesTheFunctionAndNoParent();
    void ClonesToNoFunction();
    void BuildsNoPayload();
    void HasAMetaObjectOfItsOwn();
};

void TestMeasurementSettings::KeepsItsFunction()
{
    QCOMPARE(static_cast<int>(MeasurementSettings(MeasurementType::IEC, nullptr).GetMeasurementType()), 97);
    QCOMPARE(static_cast<int>(MeasurementSettings(MeasurementType(55), nullptr).GetMeasurementType()), 55);
}

void TestMeasurementSettings::IgnoresAParent()
{
    QObject parent;
    const MeasurementSettings settings(MeasurementType::RPE, &parent);
    QVERIFY(settings.parent() == nullptr);
    QVERIFY(parent.children().isEmpty());
}

void TestMeasurementSettings::CopiesTheFunctionAndNoParent()
{
    static_assert(std::is_constructible_v<MeasurementSettings, MeasurementSettings&>);
    static_assert(!std::is_constructible_v<MeasurementSettings, const MeasurementSettings&>);
    QObject parent;
    MeasurementSettings settings(MeasurementType::POWER, nullptr);
    settings.setParent(&parent);
    const MeasurementSettings copy(settings);
    settings.setParent(nullptr);
    QCOMPARE(static_cast<int>(copy.GetMeasurementType()), 8);
    QVERIFY(copy.parent() == nullptr);
}

void TestMeasurementSettings::ClonesToNoFunction()
{
    MeasurementSettings settings(MeasurementType::POWER, nullptr);
    const std::unique_ptr<MeasurementSettings> clone(settings.Clone());
    QVERIFY(clone.get() != &settings);
    QCOMPARE(static_cast<int>(clone->GetMeasurementType()), -1);
    QVERIFY(clone->parent() == nullptr);
}

void TestMeasurementSettings::BuildsNoPayload()
{
    MeasurementSettings settings(MeasurementType::RPE, nullptr);
    QVERIFY(settings.CreateMeasurementFrame() == nullptr);
}

void TestMeasurementSettings::HasAMetaObjectOfItsOwn()
{
    static_assert(std::has_virtual_destructor_v<MeasurementSettings>);
    const MeasurementSettings settings(MeasurementType::RPE, nullptr);
    QCOMPARE(settings.metaObject()->className(), "Vesmar::MeasurementSettings");
}

QTEST_APPLESS_MAIN(TestMeasurementSettings)
#include "tst_measurementsettings.moc"
