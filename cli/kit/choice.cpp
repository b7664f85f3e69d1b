#include "cli/kit/choice.h"

namespace Cli
{

std::string Listed(const std::vector<Choice>& choices, const char* separator)
{
    std::string list;
    for (const Choice& choice : choices) {
        list += (list.empty() ? "" : separator) + choice.word;
    }
    return list;
}

void Refuse(const char* option, const std::string& given, const std::string& allowed)
{
    throw CLI::ValidationError(option, "\"" + given + "\" is not " + allowed);
}

} // namespace Cli
