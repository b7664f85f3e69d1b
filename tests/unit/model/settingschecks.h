#pragma once

#include <memory>
#include <type_traits>
#include <typeinfo>

#include <QtTest>

#include <Vesmar/measurementsettings.h>

/// What the tests of all settings classes share.
namespace SettingsChecks
{

/// The prepare payload; null when the settings build none.
inline QByteArray Payload(Vesmar::MeasurementSettings& settings)
{
    const std::unique_ptr<QByteArray> payload(settings.CreateMeasurementFrame());
    return payload ? *payload : QByteArray();
}

/// A clone made through the base class; null when it is of another class than its source.
template <typename Settings>
std::unique_ptr<Settings> Clone(Settings& source)
{
    Vesmar::MeasurementSettings& base = source;
    std::unique_ptr<Vesmar::MeasurementSettings> clone(base.Clone());
    const Vesmar::MeasurementSettings& cloned = *clone;
    if (typeid(cloned) != typeid(Settings)) {
        return nullptr;
    }
    return std::unique_ptr<Settings>(static_cast<Settings*>(clone.release()));
}

/// What every settings class of a function has in common.
template <typename Settings>
void VerifyPattern(int measurementType)
{
    static_assert(std::is_default_constructible_v<Settings>);
    static_assert(std::is_constructible_v<Settings, Settings&>);
    static_assert(!std::is_constructible_v<Settings, const Settings&>);
    static_assert(std::has_virtual_destructor_v<Settings>);

    Settings settings;
    QCOMPARE(static_cast<int>(settings.GetMeasurementType()), measurementType);
    QVERIFY(settings.parent() == nullptr);
    QCOMPARE(settings.metaObject()->className(), "Vesmar::MeasurementSettings");

    QObject parent;
    settings.setParent(&parent);
    const auto clone = Clone(settings);
    QVERIFY(clone != nullptr);
    QVERIFY(clone.get() != &settings);
    QVERIFY(clone->parent() == nullptr);
    QCOMPARE(static_cast<int>(clone->GetMeasurementType()), measurementType);

    Settings copy(settings);
    QVERIFY(copy.parent() == nullptr);
    QCOMPARE(static_cast<int>(copy.GetMeasurementType()), measurementType);
    settings.setParent(nullptr);

    const std::unique_ptr<QByteArray> first(settings.CreateMeasurementFrame());
    const std::unique_ptr<QByteArray> second(settings.CreateMeasurementFrame());
    QVERIFY(first != nullptr);
    QVERIFY(first.get() != second.get());
    QCOMPARE(first->size(), 8);
    QCOMPARE(*first, *second);
}

/// The columns of a test of the measurement time: what is set, and the whole payload that follows from it.
inline void AddTimeColumns()
{
    QTest::addColumn<int>("time");
    QTest::addColumn<QByteArray>("payload");
}

template <typename Settings>
void VerifyTimePayload()
{
    QFETCH(const int, time);
    QFETCH(const QByteArray, payload);
    Settings settings;
    settings.SetTime(time);
    QCOMPARE(Payload(settings), payload);
}

} // namespace SettingsChecks
