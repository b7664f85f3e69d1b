#include "cli/output/wrapped.h"

namespace Cli
{

namespace
{

/// Puts the word behind the last line, or below it where it has no room there.
void Append(QStringList& lines, const QString& word, int width)
{
    if (!lines.isEmpty() && lines.last().size() + 1 + word.size() <= width) {
        lines.last() += QLatin1Char(' ') + word;
        return;
    }
    lines.append(word.left(width));
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

} // namespace Cli
