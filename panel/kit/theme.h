#pragma once

#include <QColor>
#include <QVector>

namespace Panel
{

/// The colours of everything that is not a plain widget of Qt's.
struct Colours {
    QColor window;  ///< Behind everything.
    QColor surface; ///< Cards, fields, plots.
    QColor line;    ///< Frames and grids.
    QColor text;
    QColor muted; ///< What stands beside the important things.
    QColor accent;
    QColor good;
    QColor warning;
    QColor danger;
    QVector<QColor> curves; ///< One for each reading.
};

enum class Theme { Light, Dark };

/// Gives the whole application this look.
void applyTheme(Theme theme);
Theme currentTheme();
/// Those of the present theme.
const Colours& colours();

constexpr int TouchTarget = 44; ///< What a finger hits for sure, in pixels.

} // namespace Panel
