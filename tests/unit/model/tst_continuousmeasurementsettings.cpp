#include <limits>
#include <memory>
#include <type_traits>
#include <typeinfo>

#include <QtTest>

#include <Vesmar/continuousmeasurementsettings.h>

using Vesmar::ContinuousMeasurementSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;

class TestContinuousMeasurementSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BeginsWithItsFunctionAndFiveSeconds();
    void StoresAnyTimeUnchanged_data();
    void StoresAnyTimeUnchanged();
    void IgnoresAParent();
    void CopiesTheFunctionAndTheTime();
    void ClonesToNoFunctionAndFiveSeconds();
    void BuildsNoPayload();
    void SharesTheMetaObjectOfTheBase();
};

void TestContinuousMeasurementSettings::BeginsWithItsFunctionAndFiveSeconds()
{
    const ContinuousMeasurementSettings settings(MeasurementType::IPE, nullptr);
    QCOMPARE(static_cast<int>(settings.GetMeasurementType()), 5);
    QCOMPARE(settings.GetTime(), 5);
}

void TestContinuousMeasurementSettings::StoresAnyTimeUnchanged_data()
{
    QTest::addColumn<int>("time");
    QTest::newRow("not set") << -1;
    QTest::newRow("zero") << 0;
    QTest::newRow("seven") << 7;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void TestContinuousMeasurementSettings::StoresAnyTimeUnchanged()
{
    QFETCH(const int, time);
    ContinuousMeasurementSettings settings(MeasurementType::IPE, nullptr);
    settings.SetTime(time);
    QCOMPARE(settings.GetTime(), time);
}

void TestContinuousMeasurementSettings::IgnoresAParent()
{
    QObject parent;
    const ContinuousMeasurementSettings settings(MeasurementType::RPE, &parent);
    QVERIFY(settings.parent() == nullptr);
    QVERIFY(parent.children().isEmpty());
}

void TestContinuousMeasurementSettings::CopiesTheFunctionAndTheTime()
{
    static_assert(
        !std::is_constructible_v<ContinuousMeasurementSettings, const ContinuousMeasurementSettings&>);
    ContinuousMeasurementSettings settings(MeasurementType::POWER, nullptr);
    settings.SetTime(42);
    const ContinuousMeasurementSettings copy(settings);
    QCOMPARE(static_cast<int>(copy.GetMeasurementType()), 8);
    QCOMPARE(copy.GetTime(), 42);
}

void TestContinuousMeasurementSettings::ClonesToNoFunctionAndFiveSeconds()
{
    ContinuousMeasurementSettings settings(MeasurementType::POWER, nullptr);
    settings.SetTime(42);
    const std::unique_ptr<MeasurementSettings> clone(settings.Clone());
    const MeasurementSettings& cloned = *clone;
    QVERIFY(typeid(cloned) == typeid(ContinuousMeasurementSettings));
    QCOMPARE(static_cast<int>(cloned.GetMeasurementType()), -1);
    QCOMPARE(static_cast<const ContinuousMeasurementSettings&>(cloned).GetTime(), 5);
}

void TestContinuousMeasurementSettings::BuildsNoPayload()
{
    ContinuousMeasurementSettings settings(MeasurementType::RPE, nullptr);
    QVERIFY(settings.CreateMeasurementFrame() == nullptr);
}

void TestContinuousMeasurementSettings::SharesTheMetaObjectOfTheBase()
{
    static_assert(std::is_base_of_v<MeasurementSettings, ContinuousMeasurementSettings>);
    const ContinuousMeasurementSettings settings(MeasurementType::RPE, nullptr);
    QCOMPARE(settings.metaObject()->className(), "Vesmar::MeasurementSettings");
}

QTEST_APPLESS_MAIN(TestContinuousMeasurementSettings)
#include "tst_continuousmeasurementsettings.moc"
