#include <iostream>

#include <QApplication>

#include <VesmarClient/functions.h>

#include "panel/kit/theme.h"
#include "panel/program/commandline.h"
#include "panel/program/endsignals.h"
#include "panel/program/language.h"
#include "panel/program/simulated.h"
#include "panel/window/mainwindow.h"
#include "panel/window/pages.h"

namespace
{

int fail(const QString& reason)
{
    std::cerr << "vesmar-panel: " << reason.toStdString() << '\n';
    return 1;
}

/// Returns why the units cannot be used, empty where they are.
QString readUnits(const std::string& path)
{
    const auto failure = path.empty() ? VesmarClient::Functions::unitsFailure()
                                      : VesmarClient::Functions::readUnits(QString::fromStdString(path));
    return failure.whatHappened;
}

int run(const Panel::CommandLine& commandLine)
{
    Panel::applyTheme(commandLine.theme == "dark" ? Panel::Theme::Dark : Panel::Theme::Light);
    Panel::Session session;
    Panel::MainWindow window(session);
    if (!commandLine.page.empty() && !window.showPage(QString::fromStdString(commandLine.page))) {
        return fail(QStringLiteral("there is no page \"%1\"; it is one of %2")
                        .arg(QString::fromStdString(commandLine.page),
                             Panel::pageNames().join(QStringLiteral(", "))));
    }
    window.resize(1024, 640);
    if (commandLine.isFullScreen) {
        window.showFullScreen();
    } else {
        window.show();
    }
    const Panel::EndSignals endSignals([&window] { window.close(); });
    session.open();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    int status = 0;
    const auto commandLine = Panel::parseCommandLine(argc, argv, &status);
    if (!commandLine) {
        return status;
    }
    if (commandLine->isSimulated) {
        return fail(Panel::becomeSimulated(argc, argv));
    }
    QApplication application(argc, argv);
    Panel::speak(commandLine->language);
    const QString damage = readUnits(commandLine->unitsPath);
    return damage.isEmpty() ? run(*commandLine) : fail(damage);
}
