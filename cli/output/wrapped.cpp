#include "cli/output/wrapped.h"

namespace Cli
{

namespace
{

/// Puts the word behind the last line, or below it where it has no room there. A blank too many, which is a
/// word without a character, is not worth a line.
void Append(QStringList& lines, const QString& word, int width)
{
    if (!lines.isEmpty() && lines.last().size() + 1 + word.size() <= width) {
        lines.last() += QLatin1Char(' ') + word;
        return;
    }
    if (lines.isEmpty() || !word.isEmpty()) {
        lines.append(word.left(width));
    }
    for (int i = width; i < word.size(); i += width) {
        lines.append(word.mid(i, width));
    }
}

} // namespace

QStringList Wrapped(const QString& text, int width)
{
    QStringList lines;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        const bool isTooLong = word.size() > width;
        for (const QString& part : isTooLong ? word.split(QChar::Nbsp) : QStringList(word)) {
            Append(lines, part, width);
        }
    }
    return lines.replaceInStrings(QString(QChar::Nbsp), QStringLiteral(" "));
}

QString Bar(double share)
{
    constexpr int Width = 20;
    const QString filled(static_cast<int>(Width * share), QLatin1Char('='));
    return QStringLiteral("[%1]").arg(filled.leftJustified(Width, QChar::Nbsp));
}

} // namespace Cli
