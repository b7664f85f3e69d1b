#pragma once

#include <stdexcept>

#include <QString>

namespace Simulator
{

/// An error in a JSON text: one sentence that tells what is wrong, and on which line.
class JsonError : public std::runtime_error
{
public:
    /// Lines are counted from 1.
    JsonError(int line, const QString& sentence)
        : std::runtime_error(QStringLiteral("line %1: %2").arg(line).arg(sentence).toStdString()), _line(line)
    {
    }

    int Line() const { return _line; }

private:
    int _line;
};

} // namespace Simulator
