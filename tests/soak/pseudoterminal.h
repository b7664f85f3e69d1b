#pragma once

#include <string>

#include "storm/serialline.h"

/// A pseudo-terminal, whose slave is the serial device.
class PseudoTerminal : public Terminal
{
public:
    PseudoTerminal();

    int Open() override;
    QByteArray Write(int descriptor, const QByteArray& bytes) override;
    long Read(int descriptor, const QByteArray& arrived, char* buffer, std::size_t size) override;

private:
    int _master;
    std::string _slave;
};
