#pragma once

#include <array>

#include <QByteArray>
#include <QElapsedTimer>

/// A status exchange with the waits that the line needs and nothing else: no checksum, no trace, no answer
/// kept.
class BareLink
{
public:
    explicit BareLink(const QByteArray& devicePath);
    ~BareLink();

    void Exchange();

private:
    int Read();

    int _port;
    std::array<char, 128> _buffer{};
    QElapsedTimer _responseTimer;
    QElapsedTimer _gapTimer;
};
