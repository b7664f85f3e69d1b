#include "barelink.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

BareLink::BareLink(const QByteArray& devicePath)
    : _port(open(devicePath.constData(), O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    termios settings{};
    settings.c_cflag = B115200 | CS8 | CREAD | CLOCAL;
    tcsetattr(_port, TCSANOW, &settings);
    _gapTimer.start();
}

BareLink::~BareLink()
{
    close(_port);
}

void BareLink::Exchange(const QByteArray& request)
{
    while (_gapTimer.elapsed() < 10) {
        usleep(1000);
    }
    Read();
    [[maybe_unused]] const auto written =
        write(_port, request.constData(), static_cast<size_t>(request.size()));
    tcdrain(_port);
    _responseTimer.start();
    int received = 0;
    do {
        received = Read();
        usleep(1000);
    } while (received == 0 && _responseTimer.elapsed() < 4000);
    _responseTimer.start();
    do {
        received = Read();
        if (received > 0) {
            _responseTimer.start();
        }
        usleep(100);
    } while (received > 0 || _responseTimer.elapsed() < 1);
    _gapTimer.restart();
    Read();
}

int BareLink::Read()
{
    return static_cast<int>(read(_port, _buffer.data(), _buffer.size()));
}
