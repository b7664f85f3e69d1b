#include "decode/frames/answers.h"
#include "decode/frames/requests.h"
#include "decode/frames/settings.h"
#include "fuzz/finding.h"
#include "support/wire.h"

using namespace Decode;

namespace
{

void RequireWords(const FrameWords& words)
{
    for (const QString& text : {words.text, words.problem}) {
        for (const QChar& letter : text) {
            Require(letter >= QLatin1Char(' '), "words are one line without control characters");
        }
    }
    for (const Field& field : words.fields) {
        Require(*field.name != '\0', "a field has a name");
    }
}

std::optional<bool> Choice(int number)
{
    return number % 3 == 0 ? std::nullopt : std::optional<bool>(number % 3 == 1);
}

/// Frames come sealed or as they are.
QByteArray FrameIn(Input& input)
{
    const int head = input.Byte();
    const QByteArray bytes = input.Bytes(head & 0x7F);
    return head >= 0x80 ? WithChecksum(bytes) : bytes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    FrameContext context;
    context.isOfTest = Choice(input.Byte());
    if (const int function = input.Byte(); function != 0) {
        context.function = static_cast<Vesmar::MeasurementType>(function);
    }
    if (const QByteArray payload = FrameIn(input); !payload.isEmpty()) {
        context.prepared = Vesmar::DecodePayload(payload);
        RequireWords(WordsOfSettings(payload));
    }
    const QByteArray request = FrameIn(input);
    const QByteArray answer = FrameIn(input);
    RequireWords(WordsOfRequest(request));
    RequireWords(WordsOfStatus(answer, context.isOfTest));
    RequireWords(WordsOfTestResult(answer, context));
    const AnswerKind kind = KindOf(answer);
    Require((kind == AnswerKind::None) == answer.isEmpty(), "no answer has no bytes");
    if (kind == AnswerKind::Data || kind == AnswerKind::Acknowledge) {
        RequireWords(WordsOfAnswer(request, answer, context));
    }
    return 0;
}
