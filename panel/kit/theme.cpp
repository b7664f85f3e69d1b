#include "panel/kit/theme.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace Panel
{

namespace
{

Theme present = Theme::Light;

const Colours& coloursOf(Theme theme)
{
    static const Colours light{"#f1f4f7", "#ffffff",
                               "#cfd7df", "#17212b",
                               "#556575", "#0a62b8",
                               "#1b7f3b", "#9a5b00",
                               "#c62828", {"#0a62b8", "#b3540a", "#1b7f3b", "#8a3ab9", "#b0224f", "#00767a"}};
    static const Colours dark{"#10161c", "#1a232c",
                              "#34414e", "#e8edf2",
                              "#9fb0c0", "#5aa9f5",
                              "#4cc27e", "#f0b440",
                              "#ff6b62", {"#5aa9f5", "#f2a154", "#4cc27e", "#c08af0", "#f07aa0", "#3fc4c8"}};
    return theme == Theme::Dark ? dark : light;
}

QPalette palette()
{
    const Colours& all = colours();
    QPalette palette(all.window);
    palette.setColor(QPalette::Base, all.surface);
    palette.setColor(QPalette::AlternateBase, all.window);
    palette.setColor(QPalette::Button, all.surface);
    palette.setColor(QPalette::Mid, all.line);
    palette.setColor(QPalette::ToolTipBase, all.surface);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, all.text);
        palette.setColor(QPalette::Disabled, role, all.muted);
    }
    palette.setColor(QPalette::PlaceholderText, all.muted);
    palette.setColor(QPalette::Highlight, all.accent);
    palette.setColor(QPalette::HighlightedText, all.surface);
    palette.setColor(QPalette::Link, all.accent);
    return palette;
}

/// The style sheet, whose colours stand in it by name: "@accent".
QString styleSheet()
{
    QFile file(QStringLiteral(":/panel/style.css"));
    file.open(QIODevice::ReadOnly);
    QString text = QString::fromUtf8(file.readAll());
    const Colours& all = colours();
    const QVector<QPair<const char*, QColor>> names{
        {"@window", all.window}, {"@surface", all.surface}, {"@line", all.line},
        {"@text", all.text},     {"@muted", all.muted},     {"@accent", all.accent},
        {"@good", all.good},     {"@warning", all.warning}, {"@danger", all.danger}};
    for (const auto& name : names) {
        text.replace(QLatin1String(name.first), name.second.name());
    }
    return text;
}

} // namespace

void applyTheme(Theme theme)
{
    present = theme;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font = QApplication::font();
    font.setPixelSize(16);
    QApplication::setFont(font);
    QApplication::setPalette(palette());
    qApp->setStyleSheet(styleSheet());
}

Theme currentTheme()
{
    return present;
}

const Colours& colours()
{
    return coloursOf(present);
}

} // namespace Panel
