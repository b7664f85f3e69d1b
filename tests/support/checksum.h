#pragma once

#include <QByteArray>

/// The frame with its checksum appended, computed independently of the library.
inline QByteArray WithChecksum(const QByteArray& data)
{
    constexpr unsigned int Polynomial = 0x1021;
    constexpr int BitsOfAByte = 8;
    unsigned int checksum = 0;
    for (const char byte : data) {
        checksum ^= static_cast<unsigned int>(static_cast<unsigned char>(byte)) << 8U;
        for (int bit = 0; bit < BitsOfAByte; ++bit) {
            checksum = (checksum << 1U) ^ ((checksum & 0x8000U) != 0 ? Polynomial : 0U);
        }
    }
    return data + static_cast<char>(checksum & 0xFFU) + static_cast<char>(checksum >> 8U & 0xFFU);
}
