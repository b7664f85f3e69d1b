#include "client/words/printable.h"

namespace VesmarClient
{

QString Printable(const QString& text)
{
    QString printable;
    for (const QChar character : text) {
        printable += character.isPrint()
                         ? QString(character)
                         : QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
    }
    return printable;
}

} // namespace VesmarClient
