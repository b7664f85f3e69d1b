#include "simulator/text/quoted.h"

namespace Simulator
{

namespace
{

constexpr int LongestQuote = 40;

}

QString OneLine(const QString& text)
{
    QString shown = text;
    for (QChar& character : shown) {
        if (!character.isPrint()) {
            character = QLatin1Char('?');
        }
    }
    return shown;
}

QString Quoted(const QString& text)
{
    const QString shown = OneLine(text.left(LongestQuote));
    const QString rest = QLatin1String(text.size() > LongestQuote ? "..." : "");
    return QLatin1Char('"') + shown + rest + QLatin1Char('"');
}

} // namespace Simulator
