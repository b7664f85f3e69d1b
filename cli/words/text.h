#pragma once

#include <QCoreApplication>

namespace Cli
{

/// Whatever people read is written as `Text::tr("...")`, which is the text in the program's language. Texts
/// that stand in tables are marked with `QT_TRANSLATE_NOOP("Cli::Text", "...")`.
class Text
{
    Q_DECLARE_TR_FUNCTIONS(Cli::Text)
};

} // namespace Cli
