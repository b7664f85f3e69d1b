#include "fuzz/parserbench.h"

using Vesmar::Error;
using Vesmar::FunctionState;
using Vesmar::StartTestResult;

namespace
{

constexpr int NoErrors = 15;
constexpr int RcdDeviceErrors = 520;
constexpr int FourBits = 16;
constexpr int FiveBits = 32;

/// The two bytes of a status as one number, its first byte on top. Bytes that are missing are 0.
int WordOf(const QByteArray& frame)
{
    const QByteArray bytes = frame.leftJustified(2, '\0');
    return static_cast<unsigned char>(bytes.at(0)) * 256 + static_cast<unsigned char>(bytes.at(1));
}

int FunctionOf(int word, int functionCount)
{
    return word / 256 % functionCount;
}

bool IsRcdTest(int function)
{
    return function == 10 || function == 11;
}

int ErrorOf(int word)
{
    return word / 16 % 16;
}

int RcdErrorOf(int word)
{
    return ErrorOf(word) == NoErrors ? NoErrors : RcdDeviceErrors + ErrorOf(word);
}

void RequirePublished(ParserBench& bench, int word, int functionCount, int error)
{
    const auto& context = bench.context;
    const int function = FunctionOf(word, functionCount);
    const int process = word % 16;
    Require(context.NewMeasurement.Get() == (word >= 0x8000), "the new measurement is bit 15");
    Require(static_cast<int>(context.TesterMode.Get()) == word / 0x2000 % 4, "the mode is bits 13 and 14");
    Require(static_cast<int>(context.CurrentMeasurementType.Get()) == function,
            "the function is the low bits of the first byte");
    const auto functionState = static_cast<FunctionState>(process);
    Require(context.MeasurementFunctionStatus.Get() ==
                (function != 0 ? functionState : FunctionState::Unknown),
            "the process of a function is its state");
    const auto startTest = static_cast<StartTestResult>(process);
    Require(context.StartTestStatus.Get() == (function == 0 ? startTest : StartTestResult::Unknown),
            "the process of no function is the result of the start test");
    Require(static_cast<int>(context.ErrorCode.Get()) == error, "the error is the one of the status");
}

void CheckStatus(const QByteArray& frame)
{
    ParserBench bench;
    const bool isPublished = bench.Checked(bench.parser.ParseStatusFrame(frame, bench.context));
    Require(isPublished == (frame.size() == 4), "a status has four bytes");
    if (isPublished) {
        RequirePublished(bench, WordOf(frame), FiveBits, ErrorOf(WordOf(frame)));
    }
}

void CheckRcdStatus(const QByteArray& frame)
{
    ParserBench bench;
    const int word = WordOf(frame);
    const bool isOfTest = IsRcdTest(FunctionOf(word, FiveBits));
    const bool isPublished = bench.Checked(bench.parser.ParseRCDStatusResponse(frame, bench.context));
    Require(isPublished == (isOfTest || frame.size() == 4), "a status of an RCD test may have any size");
    if (isPublished) {
        RequirePublished(bench, word, FiveBits, isOfTest ? RcdErrorOf(word) : ErrorOf(word));
    }
}

void CheckRcdStatusWithError(const QByteArray& frame)
{
    constexpr int Untouched = -1;
    ParserBench bench;
    const int word = WordOf(frame);
    const bool isOfTest = IsRcdTest(FunctionOf(word, FourBits));
    auto error = static_cast<Error>(Untouched);
    const bool isPublished = bench.Checked(bench.parser.ParseRCDStatusResponse(frame, bench.context, &error));
    Require(isPublished == (isOfTest || frame.size() == 4), "a status of an RCD test may have any size");
    Require(static_cast<int>(error) == (isOfTest ? RcdErrorOf(word) : Untouched),
            "the error of an RCD test is returned");
    if (isPublished) {
        RequirePublished(bench, word, isOfTest ? FourBits : FiveBits, isOfTest ? NoErrors : ErrorOf(word));
    }
}

void CheckObjectCheck(const QByteArray& answer)
{
    ParserBench bench;
    Require(!bench.parser.ParseRCDCheckObjectResponse(answer, bench.context),
            "the check always returns false");
    const int number = answer.isEmpty() ? 0 : static_cast<unsigned char>(answer.at(0));
    const int error = static_cast<int>(bench.context.ErrorCode.Get());
    Require(number == 0 ? error == NoErrors : error >= 500 && error < RcdDeviceErrors,
            "only a clean check is no error of the object");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray frame = Input(data, size).Rest();
    CheckStatus(frame);
    CheckRcdStatus(frame);
    CheckRcdStatusWithError(frame);
    CheckObjectCheck(frame);
    return 0;
}
