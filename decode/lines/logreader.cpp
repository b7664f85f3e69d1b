#include "decode/lines/logreader.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "decode/frames/words.h"

namespace Decode
{

namespace
{

/// Appends at most one byte more than a line may have; that byte shows that the line is too long.
void AppendBounded(QByteArray& text, const char* bytes, int size)
{
    text.append(bytes, qMin(size, LogReader::LongestLine + 1 - text.size()));
}

QString DamageOf(const QByteArray& text, bool hasEnd)
{
    if (text.size() > LogReader::LongestLine) {
        return Words::tr("the line has more than %1 bytes; check that this is a log of the library")
            .arg(LogReader::LongestLine);
    }
    if (text.contains('\0')) {
        return Words::tr("there are bytes that are no text; check that this is a log of the library");
    }
    return hasEnd ? QString() : Words::tr("the line has no end; get the rest of the log");
}

} // namespace

std::optional<LogLine> LogReader::Next()
{
    QByteArray text;
    bool hasEnd = false;
    while (!hasEnd && (_position < _piece.size() || Fill())) {
        const int end = _piece.indexOf('\n', _position);
        hasEnd = end >= 0;
        const int stop = hasEnd ? end : _piece.size();
        AppendBounded(text, _piece.constData() + _position, stop - _position);
        _position = hasEnd ? stop + 1 : stop;
    }
    if (_error != 0 || (_isStopped && !hasEnd) || (text.isEmpty() && !hasEnd)) {
        return std::nullopt;
    }
    const QString damage = DamageOf(text, hasEnd);
    if (text.endsWith('\r')) {
        text.chop(1);
    }
    return LogLine{++_lineCount, text, damage};
}

/// False when the log has ended, cannot be read, or is not to be read any more.
bool LogReader::Fill()
{
    constexpr int PieceSize = 65536;
    if (!WaitForBytes()) {
        return false;
    }
    _piece = QByteArray(PieceSize, Qt::Uninitialized);
    ssize_t received = 0;
    do {
        received = ::read(_descriptor, _piece.data(), static_cast<size_t>(_piece.size()));
    } while (received < 0 && errno == EINTR);
    _error = received < 0 ? errno : 0;
    _piece.resize(static_cast<int>(qMax<ssize_t>(received, 0)));
    _position = 0;
    return received > 0;
}

/// False when the reading is to be stopped. An error of the descriptor shows when it is read.
bool LogReader::WaitForBytes()
{
    constexpr int WithoutLimit = -1;
    std::array<pollfd, 2> descriptors{{{_descriptor, POLLIN, 0}, {_stopDescriptor, POLLIN, 0}}};
    while (::poll(descriptors.data(), descriptors.size(), WithoutLimit) < 0 && errno == EINTR) {
    }
    _isStopped = descriptors[1].revents != 0;
    return !_isStopped;
}

} // namespace Decode
