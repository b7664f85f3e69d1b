#pragma once

#include <algorithm>
#include <memory>

#include "integration/programrun.h"

constexpr int SectorSize = 512;
constexpr int Sectors = 5;

/// Every byte that may mean something else on a line is in it.
inline QByteArray Image()
{
    QByteArray image;
    for (int i = 0; i < Sectors * SectorSize; ++i) {
        image.append(static_cast<char>(i * 7 + i / SectorSize));
    }
    return image;
}

/// `vesmar update` with an image of five sectors and its confirmation, and a simulated instrument of its own
/// that keeps a log and what it takes.
class UpdateRun
{
public:
    explicit UpdateRun(const QString& options = QString(), const QString& simulatorOptions = QString())
    {
        WriteFile("image", Image());
        WriteFile("confirmation", QByteArray::fromHex("00FFAB12"));
        const QString simulator =
            QStringLiteral("'%1' run --confirmation AB12 --log log --save-firmware firmware %2")
                .arg(QStringLiteral(SIMULATOR_PROGRAM), simulatorOptions);
        const QString vesmar =
            QStringLiteral("exec \"$0\" update image --confirmation confirmation %1").arg(options);
        const QString script = QStringLiteral("cd '%1' && exec %2 -- sh -c '%3' '%4'")
                                   .arg(_folder.path(), simulator, vesmar, QStringLiteral(VESMAR_PROGRAM));
        _run = std::make_unique<ProgramRun>(QStringLiteral("sh"), QStringList{QStringLiteral("-c"), script});
    }

    ProgramRun* operator->() { return _run.get(); }

    /// What the instrument has taken.
    QByteArray Firmware() const { return ContentOf(Path("firmware")); }

    /// How many requests with this command it was sent.
    int Requests(const QByteArray& command) const
    {
        const QByteArrayList log = LogIn(Path("log"));
        return static_cast<int>(std::count_if(log.cbegin(), log.cend(), [&command](const QByteArray& line) {
            return line.startsWith(command);
        }));
    }

    QJsonObject Result()
    {
        const QJsonObject result = ObjectOf(_run->Lines().value(_run->Lines().size() - 1));
        return result.value(QLatin1String("event")).toString() == QLatin1String("result") ? result
                                                                                          : QJsonObject();
    }

private:
    QString Path(const char* name) const { return _folder.filePath(QLatin1String(name)); }

    void WriteFile(const char* name, const QByteArray& content) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write a file");
        }
    }

    const QTemporaryDir _folder; // First: everything else is in it.
    std::unique_ptr<ProgramRun> _run;
};

// What the requests of an update begin with, in hexadecimal.
constexpr char Initialize[] = "56333a";
constexpr char Sector[] = "46";
constexpr char Finish[] = "5aab12";
