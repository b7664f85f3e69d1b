#include "panel/program/simulated.h"

#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Panel
{

namespace
{

/// Beside this program in an installation, in the folder of its own in a build.
QByteArray findSimulator(const QString& self)
{
    const QDir here = QFileInfo(self).dir();
    for (const char* const place : {"vesmar-simulator", "../simulator/vesmar-simulator"}) {
        const QString path = here.filePath(QLatin1String(place));
        if (QFileInfo::exists(path)) {
            return QFile::encodeName(path);
        }
    }
    return "vesmar-simulator";
}

} // namespace

QString becomeSimulated(int argumentCount, char** arguments)
{
    const QString self = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    QByteArray simulator = findSimulator(self);
    QByteArray program = QFile::encodeName(self);
    std::vector<std::string> words{simulator.toStdString(), "run", "--", program.toStdString()};
    for (int i = 1; i < argumentCount; ++i) {
        if (std::string(arguments[i]) != "--simulator") {
            words.emplace_back(arguments[i]);
        }
    }
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    ::execvp(pointers.front(), pointers.data());
    return QStringLiteral("%1: %2").arg(QFile::decodeName(simulator), qt_error_string(errno));
}

} // namespace Panel
