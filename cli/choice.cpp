#include "cli/choice.h"

namespace Cli
{

std::string Listed(const std::vector<Choice>& choices)
{
    std::string list;
    for (const Choice& choice : choices) {
        list += (list.empty() ? "" : ", ") + choice.word;
    }
    return list;
}

void Refuse(const char* option, const std::string& given, const std::string& allowed)
{
    throw CLI::ValidationError(option, "\"" + given + "\" is not " + allowed);
}

} // namespace Cli
