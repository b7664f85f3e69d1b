#pragma once

#include <QCoreApplication>
#include <QString>

namespace VesmarClient
{

/// The text in the application's language. It is marked with `QT_TRANSLATE_NOOP("VesmarClient", ...)` where
/// it stands.
inline QString Translated(const char* text)
{
    return QCoreApplication::translate("VesmarClient", text);
}

/// The text with a capital as its first letter.
inline QString Capitalized(const QString& text)
{
    return text.left(1).toUpper() + text.mid(1);
}

} // namespace VesmarClient
