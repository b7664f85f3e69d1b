#include "simulator/quoted.h"

namespace Simulator
{

namespace
{

constexpr int LongestQuote = 40;

}

QString Quoted(const QString& text)
{
    QString shown = text.left(LongestQuote);
    for (QChar& character : shown) {
        if (!character.isPrint()) {
            character = QLatin1Char('?');
        }
    }
    const QString rest = QLatin1String(text.size() > LongestQuote ? "..." : "");
    return QLatin1Char('"') + shown + rest + QLatin1Char('"');
}

} // namespace Simulator
