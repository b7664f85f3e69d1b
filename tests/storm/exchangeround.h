#pragma once

#include <memory>
#include <string>

#include "link/crc16.h"
#include "link/transciever.h"
#include "storm/counts.h"
#include "storm/kinds.h"

/// Single exchanges on a line that does its worst, without a machine around them. The seed decides about all.
class ExchangeRound
{
public:
    /// How these rounds are named among the states.
    static constexpr const char* State = "single exchange";

    /// Every fault is of this kind; of any where it is null.
    ExchangeRound(std::uint64_t seed, const Kind* kind, Counts& counts);

    /// What did not hold; empty if all did.
    std::string Run();

private:
    bool InjectInto(Exchange& exchange);
    void Reopen();
    void RunQuery();
    void ReadBuffer();
    void Check(int result, const QByteArray& response);
    void CheckTime(Nanoseconds begin, Nanoseconds limit);
    void CheckEnd();
    void Report(const std::string& what);

    Counts& _counts;
    const Kind* _kind;
    Random _random;
    Instrument _instrument{_random};
    Vesmar::CRC16 _crc16{nullptr};
    Vesmar::Transciever _transciever{&_crc16, nullptr};
    bool _isArmed = true;
    int _transmissions = 0;
    std::string _finding;
};
