#include <iostream>

#include <QApplication>
#include <QScreen>

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

constexpr QSize UsualSize{1024, 640};

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

/// A small screen is filled. Without a window manager nobody else gives the window its size and the keyboard.
void showOn(const QScreen& screen, QWidget& window, bool isFullScreen)
{
    const bool isSmall = screen.size().boundedTo(UsualSize) != UsualSize;
    if (isFullScreen || isSmall) {
        window.setGeometry(screen.geometry());
        window.showFullScreen();
    } else {
        window.resize(UsualSize);
        window.show();
    }
    window.activateWindow();
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
    showOn(*window.screen(), window, commandLine.isFullScreen);
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
