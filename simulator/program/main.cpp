#include <iostream>
#include <stdexcept>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "simulator/faults/faultfile.h"
#include "simulator/line/recordingfile.h"
#include "simulator/model/firmwareupdate.h"
#include "simulator/program/commandinput.h"
#include "simulator/program/commandline.h"
#include "simulator/program/programrunner.h"
#include "simulator/program/session.h"
#include "simulator/program/signalwatcher.h"
#include "simulator/wire/frames.h"

namespace
{

constexpr int NothingDone = 1;
constexpr int ProgramNotStarted = 127;
constexpr qint64 LongestImage = qint64{64} * 1024 * 1024;

void PrintError(const QString& text)
{
    std::cerr << "vesmar-simulator: " << text.toLocal8Bit().constData() << '\n';
}

void Inject(const QString& fault, Simulator::Session* session)
{
    try {
        session->Inject(fault.toUtf8());
    } catch (const std::runtime_error& error) {
        PrintError(QStringLiteral("inject, %1").arg(QString::fromUtf8(error.what())));
    }
}

std::runtime_error Unreadable(const QString& imagePath, const QString& reason)
{
    return std::runtime_error(
        QStringLiteral("cannot read the image %1: %2").arg(imagePath, reason).toStdString());
}

/// Refuses a path that is no file, and a file that is longer than any update.
QByteArray ReadImage(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        throw Unreadable(path, QStringLiteral("it is no file; name a file"));
    }
    if (info.size() > LongestImage) {
        throw Unreadable(path, QStringLiteral("it has more than %1 bytes").arg(LongestImage));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Unreadable(path, file.errorString());
    }
    return file.readAll();
}

/// Prints the two bytes as they are, so that they can go into a file.
int PrintConfirmation(const QString& imagePath)
{
    const QByteArray image = ReadImage(imagePath);
    if (image.isEmpty() || image.size() % Simulator::SectorSize != 0) {
        throw std::runtime_error(
            QStringLiteral("the image %1 has %2 bytes; firmware comes in sectors of %3 bytes")
                .arg(imagePath, QString::number(image.size()), QString::number(Simulator::SectorSize))
                .toStdString());
    }
    const QByteArray confirmation = Simulator::ConfirmationOf(image);
    std::cout.write(confirmation.constData(), confirmation.size()).flush();
    if (!std::cout) {
        throw std::runtime_error("cannot write the confirmation to the standard output");
    }
    return 0;
}

void CarryOut(const QString& line, Simulator::Session* session)
{
    const QString injection = QStringLiteral("inject");
    QString error;
    if (line == QLatin1String("quit")) {
        QCoreApplication::quit();
    } else if (line == QLatin1String("faults clear")) {
        session->ClearFaults();
    } else if (line.section(QLatin1Char(' '), 0, 0) == injection) {
        Inject(line.mid(injection.size()), session);
    } else if (const auto command = Simulator::ParseControlCommand(line, &error)) {
        session->Execute(*command);
    } else {
        PrintError(error);
    }
}

/// Offers the instrument at the link until a signal or "quit".
int RunAtLink(const Simulator::CommandLine& commandLine)
{
    Simulator::SignalWatcher signalWatcher;
    Simulator::Session session(commandLine, commandLine.linkPath);
    Simulator::CommandInput input;
    QObject::connect(&signalWatcher, &Simulator::SignalWatcher::EndRequested, &session,
                     [] { QCoreApplication::quit(); });
    QObject::connect(&input, &Simulator::CommandInput::LineRead, &session,
                     [&session](const QString& line) { CarryOut(line, &session); });
    std::cout << "The instrument is ready: open " << QFile::encodeName(commandLine.linkPath).constData()
              << " as its serial line. Ctrl-C or the line \"quit\" ends it." << std::endl;
    return QCoreApplication::exec();
}

/// Offers the instrument until the program has ended, and returns the exit status of the program.
int RunProgram(const Simulator::CommandLine& commandLine)
{
    Simulator::SignalWatcher signalWatcher;
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        throw std::runtime_error("no temporary folder: " + folder.errorString().toStdString());
    }
    const QString linkPath = folder.filePath(QStringLiteral("line"));
    Simulator::Session session(commandLine, linkPath);
    Simulator::ProgramRunner runner(linkPath);
    const QString failure = runner.Start(commandLine.program, signalWatcher.OriginalMask());
    if (!failure.isEmpty()) {
        PrintError(QStringLiteral("cannot run %1: %2")
                       .arg(QString::fromLocal8Bit(commandLine.program.front().c_str()), failure));
        return ProgramNotStarted;
    }
    QObject::connect(&signalWatcher, &Simulator::SignalWatcher::EndRequested, &session,
                     [&runner](int signalNumber, bool hasReachedChild) {
                         if (!hasReachedChild) {
                             runner.Forward(signalNumber);
                         }
                     });
    QObject::connect(&signalWatcher, &Simulator::SignalWatcher::ChildChanged, &session, [&runner] {
        if (const std::optional<int> status = runner.ExitStatus()) {
            QCoreApplication::exit(*status);
        }
    });
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    int exitStatus = 0;
    auto commandLine = Simulator::ParseCommandLine(argc, argv, &exitStatus);
    if (!commandLine) {
        return exitStatus;
    }
    int ownArgumentCount = 1; // Qt must not see the rest.
    const QCoreApplication application(ownArgumentCount, argv);
    try {
        if (!commandLine->imagePath.isEmpty()) {
            return PrintConfirmation(commandLine->imagePath);
        }
        if (!commandLine->faultsPath.isEmpty()) {
            commandLine->faults = Simulator::LoadFaults(commandLine->faultsPath);
        }
        if (!commandLine->playbackPath.isEmpty()) {
            commandLine->instrument.recording = Simulator::LoadRecording(commandLine->playbackPath);
        }
        return commandLine->program.empty() ? RunAtLink(*commandLine) : RunProgram(*commandLine);
    } catch (const std::exception& error) {
        PrintError(QString::fromLocal8Bit(error.what()));
        return NothingDone;
    }
}
