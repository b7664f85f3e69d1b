#include "client/line/deviceholders.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "client/words/printable.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

constexpr unsigned int FirstPseudoTerminalMajor = 136;
constexpr unsigned int LastPseudoTerminalMajor = 143;
constexpr unsigned int MinorsPerMajor = 256;
constexpr unsigned int MultiplexerMajor = 5;
constexpr unsigned int MultiplexerMinor = 2;

bool IsPseudoTerminal(const struct stat& device)
{
    return ::major(device.st_rdev) >= FirstPseudoTerminalMajor &&
           ::major(device.st_rdev) <= LastPseudoTerminalMajor;
}

unsigned int PseudoTerminalNumber(const struct stat& device)
{
    return (::major(device.st_rdev) - FirstPseudoTerminalMajor) * MinorsPerMajor + ::minor(device.st_rdev);
}

/// Each file system of pseudo-terminals numbers its own from 0.
bool IsSameDevice(const struct stat& device, const struct stat& other)
{
    return S_ISCHR(other.st_mode) && other.st_rdev == device.st_rdev &&
           (!IsPseudoTerminal(device) || other.st_dev == device.st_dev);
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Links that lead to no file, as of a socket, are only listed as something of the system.
QStringList DescriptorsIn(const QString& folder)
{
    return QDir(folder + QStringLiteral("/fd"))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

/// Examines what one program has open.
class ProcessExamination
{
public:
    ProcessExamination(const QString& folder, const struct stat& device) : _folder(folder), _device(device)
    {
        for (const QString& descriptor : DescriptorsIn(folder)) {
            Examine(descriptor);
        }
    }

    bool IsHolder() const { return _hasDevice && !_hasOtherEnd; }

private:
    void Examine(const QString& descriptor)
    {
        struct stat file = {};
        const QByteArray path = QFile::encodeName(_folder + QStringLiteral("/fd/") + descriptor);
        if (::stat(path.constData(), &file) == 0) {
            _hasDevice = _hasDevice || IsSameDevice(_device, file);
            _hasOtherEnd = _hasOtherEnd || IsOtherEnd(file, descriptor);
        }
    }

    bool IsOtherEnd(const struct stat& file, const QString& descriptor) const
    {
        if (!IsPseudoTerminal(_device) || file.st_rdev != ::makedev(MultiplexerMajor, MultiplexerMinor)) {
            return false;
        }
        const QByteArray number = "tty-index:\t" + QByteArray::number(PseudoTerminalNumber(_device));
        return ContentOf(_folder + QStringLiteral("/fdinfo/") + descriptor).split('\n').contains(number);
    }

    QString _folder;
    const struct stat& _device;
    bool _hasDevice = false;
    bool _hasOtherEnd = false;
};

bool IsUnreadable(const QString& folder)
{
    const QFileInfo descriptors(folder + QStringLiteral("/fd"));
    return descriptors.exists() && !descriptors.isReadable();
}

} // namespace

QString ProgramName(pid_t process)
{
    const QString path = QStringLiteral("/proc/%1/comm").arg(process);
    return QString::fromLocal8Bit(ContentOf(path).trimmed());
}

DeviceHolders FindHolders(const struct stat& device)
{
    DeviceHolders holders;
    holders.isComplete = ::geteuid() == 0;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isProcess = false;
        const pid_t process = name.toInt(&isProcess);
        if (!isProcess || process == ::getpid()) {
            continue;
        }
        const QString folder = QStringLiteral("/proc/") + name;
        holders.isComplete = holders.isComplete && !IsUnreadable(folder);
        if (ProcessExamination(folder, device).IsHolder()) {
            holders.programs.append({process, ProgramName(process)});
        }
    }
    return holders;
}

void KeepFromPrograms(const struct stat& device)
{
    for (const QString& name : DescriptorsIn(QStringLiteral("/proc/self"))) {
        const int descriptor = name.toInt();
        struct stat file = {};
        if (::fstat(descriptor, &file) == 0 && IsSameDevice(device, file)) {
            ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
}

QVector<DeviceHolder> FindLockHolders(const struct stat& device)
{
    // "1: FLOCK  ADVISORY  WRITE 4711 00:05:93 0 EOF": the process, the file system's device and the file
    const QByteArray file = QByteArray::number(::major(device.st_dev), 16).rightJustified(2, '0') + ':' +
                            QByteArray::number(::minor(device.st_dev), 16).rightJustified(2, '0') + ':' +
                            QByteArray::number(static_cast<quint64>(device.st_ino));
    for (const QByteArray& line : ContentOf(QStringLiteral("/proc/locks")).split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.value(1) == "FLOCK" && words.value(5) == file) {
            const pid_t process = words.at(4).toInt();
            const QString program = ProgramName(process);
            return program.isEmpty() ? QVector<DeviceHolder>() : QVector<DeviceHolder>{{process, program}};
        }
    }
    return {};
}

QString ShowHolder(const DeviceHolder& holder)
{
    return Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1 (process %2)"))
        .arg(Printable(holder.program), QString::number(holder.process));
}

QString ShowHolders(const QVector<DeviceHolder>& holders)
{
    constexpr int MostNamed = 3;
    QStringList programs;
    for (const DeviceHolder& holder : holders.mid(0, MostNamed)) {
        programs.append(ShowHolder(holder));
    }
    const int others = holders.size() - programs.size();
    const QString last = others > 0 ? Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1 more")).arg(others)
                                    : programs.takeLast();
    return programs.isEmpty() ? last
                              : Translated(QT_TRANSLATE_NOOP("VesmarClient", "%1 and %2"))
                                    .arg(programs.join(QStringLiteral(", ")), last);
}

} // namespace VesmarClient
