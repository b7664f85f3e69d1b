#pragma once

#include <stdexcept>

#include <QString>

namespace Simulator
{

/// What is wrong with a JSON text, and where: one sentence.
class JsonError : public std::runtime_error
{
public:
    /// The line counts from 1.
    JsonError(int line, const QString& sentence)
        : std::runtime_error(QStringLiteral("line %1: %2").arg(line).arg(sentence).toStdString()), _line(line)
    {
    }

    int Line() const { return _line; }

private:
    int _line;
};

} // namespace Simulator
