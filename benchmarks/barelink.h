#pragma once

#include <array>

#include <QByteArray>
#include <QElapsedTimer>

/// An exchange with the waits that the line needs and nothing else: no checksum, no trace, no answer kept.
class BareLink
{
public:
    explicit BareLink(const QByteArray& devicePath);
    ~BareLink();
    BareLink(const BareLink&) = delete;
    BareLink& operator=(const BareLink&) = delete;

    void Exchange(const QByteArray& request);

private:
    int Read();

    int _port;
    std::array<char, 128> _buffer{};
    QElapsedTimer _responseTimer;
    QElapsedTimer _gapTimer;
};
