#include "simulator/model/instrumentmodel.h"

#include <algorithm>

#include "fuzz/finding.h"
#include "simulator/wire/frames.h"
#include "simulator/wire/requestcollector.h"
#include "support/wire.h"

using namespace Simulator;

namespace
{

/// An instrument on a line that brings what the script says.
///
/// The script is a row of steps. The upper two bits of a step's first byte are its kind, the others a number
/// n:
///
///     0  a pause of n squared milliseconds
///     1  n + 1 bytes follow, which arrive at once
///     2  the data of a request with the n-th letter follow, which arrives with its checksum
///     3  something happens at the instrument itself
class Bench
{
public:
    void Run(Input& script)
    {
        while (!script.IsOver()) {
            const int step = script.Byte();
            PlayStep(step >> 6, step & 0x3F, script);
            AnswerRequests();
            AdvanceModel();
        }
        _now += std::chrono::seconds(1); // Whatever is left has come to its end by then.
        AnswerRequests();
        Require(_answered == _arrived, "every byte that arrives is part of a request");
    }

private:
    static ModelOptions Options()
    {
        ModelOptions options;
        options.date = QDateTime(QDate(2024, 3, 7), QTime(14, 5), Qt::UTC);
        return options;
    }

    void PlayStep(int kind, int number, Input& script)
    {
        switch (kind) {
        case 0:
            _now += std::chrono::milliseconds(number * number);
            break;
        case 1:
            Arrive(script.Bytes(number + 1));
            break;
        case 2:
            ArriveRequest(number, script);
            break;
        default:
            Meddle(number, script.Byte());
            break;
        }
    }

    void Arrive(const QByteArray& bytes)
    {
        if (!bytes.isEmpty()) {
            _collector.Append(bytes, _now);
            _arrived += bytes.size();
        }
    }

    void ArriveRequest(int number, Input& script)
    {
        constexpr int CodeAndChecksum = 3;
        constexpr int MostDataInScript = 8;
        static const QByteArray letters("sWSheRTVFZxPrt");
        const char letter = letters.at(number % letters.size());
        const int size = RequestSize(letter) - CodeAndChecksum;
        const QByteArray data = script.Bytes(std::min(size, MostDataInScript));
        Arrive(WithChecksum(letter + data.leftJustified(size, '\x5A')));
    }

    void Meddle(int number, int value)
    {
        switch (number % 4) {
        case 0:
            _model.SetMode(value % (Mode::Highest + 1));
            break;
        case 1:
            _model.SetFunction(value % (StatusWord::HighestFunction + 1));
            break;
        case 2:
            _model.SetError(value % (StatusWord::HighestError + 1));
            break;
        default:
            SetScenario(value);
            break;
        }
    }

    void SetScenario(int value)
    {
        const NamedScenario& scenario = Scenarios.at(static_cast<std::size_t>(value) % Scenarios.size());
        const int lowest = scenario.number ? scenario.number->lowest : 0;
        _model.SetScenario(scenario.scenario,
                           std::min(lowest + value / 8, scenario.number ? scenario.number->highest : lowest));
    }

    void AnswerRequests()
    {
        while (const auto request = _collector.Extract(_now)) {
            Require(!request->frame.isEmpty() && request->receivedAt <= _now, "a request has come");
            _answered += request->frame.size();
            RequireAnswer(request->frame, _model.Answer(request->frame, _now));
        }
    }

    static void RequireAnswer(const QByteArray& request, const QByteArray& answer)
    {
        const bool isIntact = answer.size() > 2 && WithChecksum(answer.chopped(2)) == answer;
        Require(answer.isEmpty() || isIntact, "an answer has its checksum");
        const bool isRequestIntact = request.size() > 2 && WithChecksum(request.chopped(2)) == request;
        Require(isRequestIntact || answer.isEmpty() || answer == Wire::Refusal,
                "a damaged request is refused");
    }

    void AdvanceModel()
    {
        _model.Advance(_now);
        const auto next = _model.NextChangeAt();
        Require(!next || *next > _now, "what was due has happened");
        for (const FramePiece& piece : _model.CollectFrames()) {
            Require(!piece.bytes.isEmpty() && piece.pauseBefore.count() >= 0, "a piece has bytes");
        }
        _model.CollectChanges();
        Require(_model.Status().Data().size() == 2, "a status has two bytes");
    }

    TimePoint _now{};
    InstrumentModel _model{Options(), _now};
    RequestCollector _collector;
    int _arrived = 0;
    int _answered = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input script(data, size);
    Bench().Run(script);
    return 0;
}
