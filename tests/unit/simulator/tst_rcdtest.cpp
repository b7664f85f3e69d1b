#include <QtTest>

#include "simulator/model/rcdtest.h"
#include "simulator/wire/frames.h"
#include "support/wire.h"

using namespace Wire;
using namespace std::chrono_literals;
using Simulator::FramePiece;
using Simulator::RcdKind;
using Simulator::RcdPreparation;
using Simulator::RcdTest;
using Simulator::RcdTimings;
using Simulator::Scenario;
using Simulator::TimePoint;
using std::chrono::microseconds;
using std::chrono::milliseconds;

namespace
{

// Preparing takes 150 ms; a run has a status frame every 200 ms and is over after 900 ms, a clean-up after
// 700.
constexpr milliseconds PreparedAt = 150ms;
constexpr milliseconds StartedAt = 200ms;
constexpr milliseconds TrippedAt = 1100ms;
constexpr milliseconds CleanedAt = 900ms;

constexpr RcdPreparation UbRe{10, RcdKind::UbRe};
constexpr RcdPreparation IaTa{10, RcdKind::IaTa};
constexpr RcdPreparation Iec{11, RcdKind::IaTa};
constexpr RcdPreparation CleanUp{11, RcdKind::CleanUp};

const QByteArray IecRunning = Bytes("0bf70243");

TimePoint At(milliseconds time)
{
    return TimePoint() + time;
}

/// A test at the instrument, and what it has sent.
class WatchedTest
{
public:
    explicit WatchedTest(Scenario scenario = Scenario::None, int number = 0)
    {
        _test.SetScenario(scenario, number);
    }

    RcdTest* operator->() { return &_test; }

    /// Returns the two bytes of the status, in hexadecimal.
    QByteArray StatusAt(milliseconds time)
    {
        _test.Advance(At(time));
        return _test.Status().Data().toHex();
    }

    QByteArrayList StatusesAt(std::initializer_list<milliseconds> times)
    {
        QByteArrayList statuses;
        for (const milliseconds time : times) {
            statuses.append(StatusAt(time));
        }
        return statuses;
    }

    /// Returns the frames that have been sent since the last call, or their pieces.
    QByteArrayList FramesUntil(milliseconds time)
    {
        _test.Advance(At(time));
        QByteArrayList frames;
        for (const FramePiece& piece : _test.CollectFrames()) {
            frames.append(piece.bytes);
        }
        return frames;
    }

    /// Prepares at 0 ms and starts at 200 ms.
    bool BringToRun(const RcdPreparation& preparation)
    {
        if (!_test.Prepare(preparation, At(0ms))) {
            return false;
        }
        _test.Advance(At(StartedAt));
        return _test.Start(At(StartedAt));
    }

    /// Returns the result of the check, in hexadecimal, or nothing when the answer gets lost.
    QByteArray ReadCheckObject()
    {
        const std::optional<QByteArray> data = _test.ReadCheckObject();
        return data ? data->toHex() : QByteArray();
    }

private:
    RcdTest _test{RcdTimings(), 1};
};

QByteArray CheckObject(const char* code)
{
    return QByteArray(code) + QByteArray(46, '0');
}

bool IsResult(const QByteArray& frame)
{
    return frame.size() == 26 && Simulator::IsIntact(frame) && frame.mid(8, 16) == QByteArray(16, '\0');
}

} // namespace

class TestRcdTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void NothingIsSelectedAtFirst()
    {
        WatchedTest test;
        QVERIFY(!test->IsSelected());
        QVERIFY(!test->IsUnderWay());
        QVERIFY(!test->NextChangeAt().has_value());
        QCOMPARE(test.FramesUntil(5000ms), QByteArrayList());
        test->Stop();
        QCOMPARE(test->CollectChanges(), QStringList());
    }

    void Prepares()
    {
        WatchedTest test;
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QVERIFY(test->IsSelected());
        QCOMPARE(test.StatusesAt({149ms, PreparedAt, 60000ms}), (QByteArrayList{"0af1", "0af4", "0af4"}));
        QCOMPARE(test.ReadCheckObject(),
                 CheckObject("00")); // There is no result, and reading changes nothing.
        QCOMPARE(test.FramesUntil(60000ms), QByteArrayList());
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0af4"));
    }

    void PreparesAgain()
    {
        WatchedTest test;
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QVERIFY(test->Prepare(Iec, At(100ms))); // This replaces one that is preparing.
        QCOMPARE(test.StatusesAt({249ms, 250ms}), (QByteArrayList{"0bf1", "0bf4"}));
        QVERIFY(test->Prepare(Iec, At(300ms))); // This replaces one that is prepared.
        QCOMPARE(test.StatusesAt({300ms, 450ms}), (QByteArrayList{"0bf1", "0bf4"}));
        QVERIFY(test->Start(At(500ms)));
        QCOMPARE(test.StatusAt(1400ms), QByteArray("0bf2"));
        QVERIFY(test->Prepare(UbRe, At(1500ms))); // This replaces one that is completed.
        QCOMPARE(test.StatusAt(1650ms), QByteArray("0af4"));
    }

    void UbReSendsProgressAndResult()
    {
        WatchedTest test;
        QVERIFY(test.BringToRun(UbRe));
        QVERIFY(test->IsUnderWay());
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af7"));
        QCOMPARE(test.FramesUntil(399ms), QByteArrayList());
        QCOMPARE(test.FramesUntil(400ms), QByteArrayList{RcdRunningStatus});
        QCOMPARE(test.FramesUntil(1099ms),
                 (QByteArrayList{RcdRunningStatus, RcdRunningStatus, RcdRunningStatus}));
        QCOMPARE(test.StatusAt(1099ms), QByteArray("0af7"));
        const QByteArrayList last = test.FramesUntil(TrippedAt);
        QCOMPARE(last.size(), 1);
        QVERIFY(IsResult(last.first()));
        QVERIFY(last.first().left(4) != QByteArray(4, '\0'));
        QCOMPARE(last.first().mid(4, 4), QByteArray(4, '\0'));
        QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
        QCOMPARE(test.FramesUntil(60000ms), QByteArrayList());
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0af2"));
    }

    void IaTaSendsProgressAndResult()
    {
        WatchedTest test;
        QVERIFY(test.BringToRun(IaTa));
        const QByteArrayList frames = test.FramesUntil(60000ms); // All frames come at once, in their order.
        QCOMPARE(frames.size(), 5);
        QCOMPARE(frames.mid(0, 4),
                 (QByteArrayList{RcdRunningStatus, RcdRunningStatus, RcdRunningStatus, RcdRunningStatus}));
        QVERIFY(IsResult(frames.last()));
        QVERIFY(frames.last().mid(4, 2) != QByteArray(2, '\0'));
        QVERIFY(frames.last().mid(6, 2) != QByteArray(2, '\0'));
        QVERIFY(frames.last().mid(6, 2) != Bytes("eeee"));
    }

    void StartWhenNothingIsPrepared()
    {
        WatchedTest test;
        QVERIFY(!test->Start(At(0ms)));
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QVERIFY(!test->Start(At(0ms)));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af4"));
        QVERIFY(test->Start(At(StartedAt)));
        QVERIFY(!test->Start(At(StartedAt)));
        QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
        QVERIFY(!test->Start(At(TrippedAt)));
        test->Stop();
        QVERIFY(!test->Start(At(TrippedAt)));
    }

    void StopEndsItAnyTime_data()
    {
        QTest::addColumn<int>("time");
        QTest::addColumn<QString>("change");
        QTest::newRow("preparing") << 100 << "function 10 deselected";
        QTest::newRow("prepared") << 199 << "function 10 deselected";
        QTest::newRow("running") << 700 << "function 10 stopped by request";
        QTest::newRow("completed") << 1100 << "function 10 deselected";
    }

    void StopEndsItAnyTime()
    {
        QFETCH(int, time);
        QFETCH(QString, change);
        WatchedTest test;
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        test->Advance(At(std::min(milliseconds(time), StartedAt)));
        if (milliseconds(time) > StartedAt) {
            QVERIFY(test->Start(At(StartedAt)));
        }
        test->Advance(At(milliseconds(time)));
        test->Stop();
        QVERIFY(!test->IsSelected());
        QVERIFY(!test->IsUnderWay());
        QVERIFY(!test->NextChangeAt().has_value());
        QCOMPARE(test->CollectChanges().last(), change);
        QCOMPARE(test.FramesUntil(60000ms), QByteArrayList());
        QCOMPARE(test->CollectChanges(), QStringList());
        test->Stop();
        QCOMPARE(test->CollectChanges(), QStringList());
    }

    void EndsForAReason()
    {
        WatchedTest test;
        test->Deselect("ended");
        QCOMPARE(test->CollectChanges(), QStringList());
        QVERIFY(test.BringToRun(UbRe));
        test->Deselect("ended by a restart");
        QVERIFY(!test->IsSelected());
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 10 ended by a restart"));
        QCOMPARE(test.FramesUntil(60000ms), QByteArrayList());
    }

    void LineIsQuietBeforeAFrame()
    {
        WatchedTest test;
        QVERIFY(test.BringToRun(UbRe));
        test->Advance(At(TrippedAt));
        const std::vector<FramePiece> frames = test->CollectFrames();
        QCOMPARE(frames.size(), std::size_t(5));
        for (const FramePiece& frame : frames) {
            QVERIFY(frame.pauseBefore == 20ms);
        }
    }

    void KnowsWhenItGoesOn()
    {
        WatchedTest test;
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QVERIFY(test->NextChangeAt() == At(PreparedAt));
        test->Advance(At(PreparedAt));
        QVERIFY(!test->NextChangeAt().has_value());
        QVERIFY(test->Start(At(StartedAt)));
        for (const int time : {400, 600, 800, 1000, 1100}) {
            QVERIFY(test->NextChangeAt() == At(milliseconds(time)));
            test->Advance(At(milliseconds(time)));
        }
        QVERIFY(!test->NextChangeAt().has_value());
    }

    void RefusesPrepare()
    {
        WatchedTest test(Scenario::RefusesPrepare);
        QVERIFY(!test->Prepare(UbRe, At(0ms)));
        QVERIFY(!test->IsSelected());
        QCOMPARE(test->CollectChanges(), QStringList());
    }

    /// There is no check object, so that nothing can become clean.
    void PrepareError()
    {
        WatchedTest test(Scenario::PrepareError);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("0af3"));
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 10 failed to prepare"));
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
        QVERIFY(!test->Start(At(StartedAt)));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af3"));
    }

    void NeverPrepared()
    {
        WatchedTest test(Scenario::NeverPrepared);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QCOMPARE(test.StatusAt(3600000ms), QByteArray("0af1"));
        QVERIFY(!test->NextChangeAt().has_value());
    }

    void StartError()
    {
        WatchedTest test(Scenario::StartError);
        QVERIFY(!test.BringToRun(UbRe));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af4"));
    }

    void EndsWithoutResult()
    {
        WatchedTest test(Scenario::EndsWithoutResult);
        QVERIFY(test.BringToRun(UbRe));
        QCOMPARE(test.FramesUntil(60000ms),
                 (QByteArrayList{RcdRunningStatus, RcdRunningStatus, RcdRunningStatus, RcdRunningStatus,
                                 Bytes("0af9fd91")}));
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0af9"));
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 10 terminated without a result"));
        QVERIFY(test->Prepare(UbRe, At(60000ms)));
    }

    void OtherFunction()
    {
        WatchedTest test(Scenario::RcdOtherFunction);
        QVERIFY(test->Prepare(Iec, At(0ms)));
        QCOMPARE(test.StatusesAt({149ms, PreparedAt}), (QByteArrayList{"0bf1", "01f4"}));
        QVERIFY(test->IsSelected());
        QVERIFY(test->Start(At(StartedAt)));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0bf7"));
    }

    void CleanCheck()
    {
        WatchedTest test(Scenario::RcdCheck, 0);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
        QVERIFY(!test->Start(At(StartedAt))); // Nobody has read the check object.
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 10 checked: 0"));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af3"));
        QVERIFY(test->Start(At(StartedAt)));
        QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0af2"));
        QVERIFY(!test->Start(At(TrippedAt)));
    }

    void BadCheck()
    {
        WatchedTest test(Scenario::RcdCheck, 10);
        QVERIFY(test->Prepare(Iec, At(0ms)));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8bf3"));
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(test.ReadCheckObject(), CheckObject("0a"));
            QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8bf3"));
            QVERIFY(!test->Start(At(StartedAt)));
        }
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 11 checked: 10"));
        test->Stop();
        QVERIFY(!test->IsSelected());
    }

    void CheckOnce()
    {
        WatchedTest test(Scenario::RcdCheckOnce, 3);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
        QCOMPARE(test.ReadCheckObject(), CheckObject("03"));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("8af3"));
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
        QVERIFY(test->Start(At(StartedAt)));

        test->SetScenario(Scenario::RcdCheckOnce, 4); // The code appears once again.
        test->Advance(At(TrippedAt));
        QVERIFY(test->Prepare(UbRe, At(TrippedAt)));
        test->Advance(At(2000ms));
        QCOMPARE(test.ReadCheckObject(), CheckObject("04"));
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
    }

    void CheckIsForgottenByAPreparation()
    {
        WatchedTest test(Scenario::RcdCheck, 0);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        test->Advance(At(PreparedAt));
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
        QVERIFY(test->Prepare(UbRe, At(StartedAt)));
        QCOMPARE(test.StatusAt(StartedAt), QByteArray("0af1"));
        QVERIFY(!test->Start(At(StartedAt)));
        QCOMPARE(test.StatusAt(350ms), QByteArray("8af3"));
        QVERIFY(!test->Start(At(350ms)));
    }

    void ErrorAllTheTime()
    {
        WatchedTest test(Scenario::RcdError, 3);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        QCOMPARE(test.StatusAt(PreparedAt), QByteArray("0a34"));
        QVERIFY(test->Start(At(StartedAt)));
        const QByteArray running = Bytes("0a377fa9");
        QCOMPARE(test.FramesUntil(60000ms),
                 (QByteArrayList{running, running, running, running, Bytes("0a39b148")}));
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0a39"));
        test->SetScenario(Scenario::None, 1);
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0af9"));
    }

    void ErrorOnce()
    {
        WatchedTest test(Scenario::RcdErrorOnce, 5);
        QVERIFY(test.BringToRun(Iec));
        QCOMPARE(test.FramesUntil(TrippedAt),
                 (QByteArrayList{IecRunning, IecRunning, IecRunning, IecRunning, Bytes("0b592617")}));
        QCOMPARE(test.StatusAt(TrippedAt), QByteArray("0b59"));

        QVERIFY(test->Prepare(Iec, At(2000ms)));
        QCOMPARE(test.StatusAt(2150ms), QByteArray("0bf4"));
        QVERIFY(test->Start(At(2200ms)));
        QCOMPARE(test.StatusAt(3100ms), QByteArray("0bf2"));
        QVERIFY(IsResult(test.FramesUntil(3100ms).last()));
    }

    void Silent()
    {
        WatchedTest test(Scenario::RcdSilent);
        QVERIFY(test.BringToRun(UbRe));
        QCOMPARE(test->CollectChanges().last(), QStringLiteral("function 10 does not start"));
        QVERIFY(test->Start(At(1300ms)));
        QCOMPARE(test.FramesUntil(60000ms), QByteArrayList());
        QCOMPARE(test.StatusAt(60000ms), QByteArray("0af4"));
    }

    void SilentOnce()
    {
        WatchedTest test(Scenario::RcdSilentOnce);
        QVERIFY(test.BringToRun(IaTa));
        QCOMPARE(test.FramesUntil(1300ms), QByteArrayList());
        QVERIFY(test->Start(At(1300ms)));
        QCOMPARE(test.FramesUntil(2200ms).size(), 5);
        QCOMPARE(test.StatusAt(2200ms), QByteArray("0af2"));
    }

    void SilentStartAfterACheck()
    {
        WatchedTest test(Scenario::RcdCheck, 0);
        QVERIFY(test->Prepare(UbRe, At(0ms)));
        test->Advance(At(PreparedAt));
        QCOMPARE(test.ReadCheckObject(), CheckObject("00"));
        test->SetScenario(Scenario::RcdSilentOnce, 1);
        QVERIFY(test->Start(At(StartedAt)));
        QVERIFY(!test->IsUnderWay());
        QVERIFY(test->Start(At(StartedAt)));
        QVERIFY(test->IsUnderWay());
    }

    void NoTa()
    {
        WatchedTest test(Scenario::RcdNoTa);
        QVERIFY(test.BringToRun(IaTa));
        const QByteArray result = test.FramesUntil(TrippedAt).last();
        QVERIFY(IsResult(result));
        QVERIFY(result.mid(4, 2) != Bytes("eeee"));
        QCOMPARE(result.mid(6, 2), Bytes("eeee"));
    }

    void Glued()
    {
        WatchedTest test(Scenario::RcdGlued);
        QVERIFY(test.BringToRun(UbRe));
        const QByteArrayList frames = test.FramesUntil(TrippedAt);
        QCOMPARE(frames.size(), 5);
        QCOMPARE(frames.at(3), RcdRunningStatus);
        QCOMPARE(frames.last().left(8), RcdRunningStatus + RcdRunningStatus);
        QVERIFY(IsResult(frames.last().mid(8)));
    }

    void Pieces()
    {
        WatchedTest test(Scenario::RcdPieces, 700);
        QVERIFY(test.BringToRun(UbRe));
        test->Advance(At(TrippedAt));
        const std::vector<FramePiece> pieces = test->CollectFrames();
        QCOMPARE(pieces.size(), std::size_t(15));
        QCOMPARE(pieces.at(0).bytes + '|' + pieces.at(1).bytes + '|' + pieces.at(2).bytes,
                 Bytes("0a7cf77c3370"));
        QCOMPARE(pieces.at(12).bytes.size(), 8);
        QCOMPARE(pieces.at(13).bytes.size(), 8);
        QVERIFY(IsResult(pieces.at(12).bytes + pieces.at(13).bytes + pieces.at(14).bytes));
        for (std::size_t index = 0; index < pieces.size(); ++index) {
            QVERIFY(pieces.at(index).pauseBefore ==
                    (index % 3 == 0 ? microseconds(20000) : microseconds(700)));
        }
    }

    void Garbage()
    {
        WatchedTest test(Scenario::RcdGarbage);
        QVERIFY(test.BringToRun(UbRe));
        const QByteArrayList frames = test.FramesUntil(TrippedAt);
        QCOMPARE(frames.at(3), RcdRunningStatus);
        QCOMPARE(frames.last().left(2).toHex(), QByteArray("55aa"));
        QVERIFY(IsResult(frames.last().mid(2)));
    }
};

QTEST_APPLESS_MAIN(TestRcdTest)
#include "tst_rcdtest.moc"
