#pragma once

#include <QByteArray>
#include <QStringList>

#include <sstream>
#include <string>
#include <vector>

#include "cli/program/program.h"

/// A command line of vesmar that has been parsed.
class ParsedLine
{
public:
    explicit ParsedLine(const QStringList& arguments)
    {
        std::vector<std::string> texts{"vesmar"};
        for (const QString& argument : arguments) {
            texts.push_back(argument.toStdString());
        }
        std::vector<const char*> pointers;
        pointers.reserve(texts.size());
        for (const std::string& text : texts) {
            pointers.push_back(text.c_str());
        }
        verb = _program.Parse(static_cast<int>(pointers.size()), pointers.data(), _output, _errors, &status);
    }
    /// The arguments are parted by blanks.
    explicit ParsedLine(const QString& arguments)
        : ParsedLine(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts))
    {
    }

    QByteArray Output() const { return QByteArray::fromStdString(_output.str()); }
    QByteArray Errors() const { return QByteArray::fromStdString(_errors.str()); }

    Cli::Verb* verb = nullptr;
    int status = -1;

private:
    Cli::Program _program;
    std::ostringstream _output;
    std::ostringstream _errors;
};
