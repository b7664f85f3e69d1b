#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "cli/kit/verb.h"

namespace CLI
{
class ParseError;
}

namespace Cli
{

/// The program's command line with all its verbs.
class Program
{
public:
    Program();
    ~Program();

    /// The verb that is to be run, or null where there is none; `exitStatus` then says what the program ends
    /// with. Help and version go to `output`, an error with the usage to `errors`.
    Verb* Parse(int argumentCount, const char* const* arguments, std::ostream& output, std::ostream& errors,
                int* exitStatus);

    /// The command line as it is declared, for a program that describes it.
    const CLI::App& CommandLine() const { return *_app; }

private:
    template <typename ConcreteVerb>
    void AddVerb();
    std::string Complaint(const CLI::ParseError& error) const;
    Verb* ChosenVerb() const;

    std::unique_ptr<CLI::App> _app;
    bool _isJson = false; ///< Given before the verb.
    std::vector<std::unique_ptr<Verb>> _verbs;
};

} // namespace Cli
