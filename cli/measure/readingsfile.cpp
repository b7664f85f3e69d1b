#include "cli/measure/readingsfile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "cli/words/text.h"

namespace Cli
{

ReadingsFile::ReadingsFile(const QString& path, const QByteArray& header) : _path(path)
{
    if (const QString problem = Open(); !problem.isEmpty()) {
        FailWith(problem);
    }
    Write(header);
}

ReadingsFile::~ReadingsFile()
{
    if (_descriptor >= 0) {
        ::close(_descriptor);
    }
}

QString ReadingsFile::Open()
{
    constexpr mode_t Permissions = 0666;
    const int flags = O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    _descriptor = ::open(QFile::encodeName(_path).constData(), flags, Permissions);
    struct stat properties = {};
    if (_descriptor < 0 || ::fstat(_descriptor, &properties) != 0) {
        return qt_error_string(errno);
    }
    if (!S_ISREG(properties.st_mode)) {
        return Text::tr("not a regular file");
    }
    return ::ftruncate(_descriptor, 0) != 0 ? qt_error_string(errno) : QString();
}

void ReadingsFile::Write(const QByteArray& row)
{
    int position = 0;
    while (_problem.isEmpty() && position < row.size()) {
        const auto written =
            ::write(_descriptor, row.constData() + position, static_cast<size_t>(row.size() - position));
        if (written < 0 && errno != EINTR) {
            FailWith(qt_error_string(errno));
        }
        position += written > 0 ? static_cast<int>(written) : 0;
    }
}

void ReadingsFile::FailWith(const QString& problem)
{
    _problem = Text::tr("cannot write the file %1: %2").arg(_path, problem);
}

} // namespace Cli
