#pragma once

#include <algorithm>
#include <type_traits>

#include <QtTest>

#include <Vesmar/measurementresults.h>

/// What the tests of all results classes share.
namespace ResultsChecks
{

/// What every fresh results object of a function has in common.
template <typename Results>
void VerifyPattern(const Results& results, int measurementType)
{
    static_assert(std::is_base_of_v<Vesmar::MeasurementResults, Results>);
    static_assert(std::has_virtual_destructor_v<Results>);
    QCOMPARE(static_cast<int>(results.GetMeasurementType()), measurementType);
    QVERIFY(results.parent() == nullptr);
    QCOMPARE(results.metaObject()->className(), "Vesmar::MeasurementResults");
    QCOMPARE(results._values.size(), std::size_t(6));
    QVERIFY(std::all_of(results._values.begin(), results._values.end(),
                        [](float value) { return value == 0.0F; }));
}

} // namespace ResultsChecks
