#include <QTest>

#include "protocol/functionstatesets.h"

using Vesmar::Error;
using Vesmar::FunctionState;

namespace Sets = Vesmar::FunctionStateSets;

/// The numbers of a set's states, a bit each.
template <typename Set>
static int MaskOf(const Set& set)
{
    int mask = 0;
    for (int number = -1; number <= 15; ++number) {
        if (Sets::Contains(set, static_cast<FunctionState>(number))) {
            mask |= number < 0 ? 1 << 16 : 1 << number;
        }
    }
    return mask;
}

class TestFunctionStateSets : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void HaveTheirStatesAndNoOthers()
    {
        QCOMPARE(MaskOf(Sets::EndedWithoutResult), 0x259);
        QCOMPARE(MaskOf(Sets::OverWhenStopping), 0x215);
        QCOMPARE(MaskOf(Sets::OverWhenAborting), 0x25F);
        QCOMPARE(MaskOf(Sets::StillRunning), 0xA0);
    }

    void AStartFailsByItsStateAndByHavingBegun()
    {
        for (int number = -1; number <= 15; ++number) {
            const auto state = static_cast<FunctionState>(number);
            const Error error = number == 3 || number == 6 ? Error::StartFailed : Error::NoErrors;
            QCOMPARE(Sets::ErrorWhenStarting(state, false), error);
            QCOMPARE(Sets::ErrorWhenStarting(state, true), number == 4 ? Error::MeasurementFailed : error);
        }
    }
};

QTEST_APPLESS_MAIN(TestFunctionStateSets)
#include "tst_functionstatesets.moc"
