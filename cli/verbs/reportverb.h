#pragma once

#include <QString>

#include "cli/kit/verb.h"

namespace Cli
{

/// `vesmar report`: writes one file for a report of a bug. What it cannot find out stands in the file, too.
class ReportVerb : public Verb
{
public:
    explicit ReportVerb(CLI::App& program);

    int Run() override;

private:
    QString Path() const;
    QString Problem(const QString& path) const;

    std::string _file;
    std::string _log;
    bool _isOverwritten = false;
};

} // namespace Cli
