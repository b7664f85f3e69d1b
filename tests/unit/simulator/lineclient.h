#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QString>

/// A program's end of the instrument's line.
class LineClient
{
public:
    explicit LineClient(const QString& path)
        : _descriptor(::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
    }
    LineClient(const LineClient&) = delete;
    LineClient& operator=(const LineClient&) = delete;
    ~LineClient() { ::close(_descriptor); }

    bool IsOpen() const { return _descriptor >= 0; }

    bool Write(const QByteArray& bytes) const
    {
        return ::write(_descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
               bytes.size();
    }

    /// Waits until so many bytes have come or the line has broken. Gives up after ten seconds of silence.
    QByteArray Read(int count) const
    {
        QByteArray bytes;
        while (bytes.size() < count && IsReadable(10000)) {
            QByteArray chunk(count - bytes.size(), '\0');
            const ssize_t size = ::read(_descriptor, chunk.data(), static_cast<std::size_t>(chunk.size()));
            if (size <= 0) {
                break;
            }
            bytes.append(chunk.constData(), static_cast<int>(size));
        }
        return bytes;
    }

    QByteArray Ask(const QByteArray& request, int answerSize) const
    {
        return Write(request) ? Read(answerSize) : QByteArray();
    }

    void DropInput() const { ::tcflush(_descriptor, TCIFLUSH); }

    bool IsReadable(int timeoutMs) const
    {
        pollfd descriptor{_descriptor, POLLIN, 0};
        return ::poll(&descriptor, 1, timeoutMs) > 0;
    }

private:
    int _descriptor;
};
