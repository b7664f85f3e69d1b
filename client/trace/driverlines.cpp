#include "client/trace/driverlines.h"

#include <string_view>

namespace VesmarClient
{

namespace
{

constexpr std::string_view DefaultCategory = "default";
constexpr std::string_view DriverNamespace = "Vesmar::";

/// The name in a function's signature, without its parameters and what it returns.
std::string_view NameIn(std::string_view signature)
{
    size_t begin = 0;
    int depth = 0; // Of template arguments.
    size_t position = 0;
    for (; position < signature.size() && (signature[position] != '(' || depth > 0); ++position) {
        const char character = signature[position];
        depth += character == '<' ? 1 : 0;
        depth -= character == '>' ? 1 : 0;
        const bool isBetweenWords = character == ' ' || character == '*' || character == '&';
        if (isBetweenWords && depth == 0) {
            begin = position + 1;
        }
    }
    return signature.substr(begin, position - begin);
}

} // namespace

bool IsDriverLine(QtMsgType type, const QMessageLogContext& context)
{
    const bool isMild = type == QtWarningMsg || type == QtDebugMsg;
    return isMild && context.category != nullptr && context.category == DefaultCategory &&
           context.function != nullptr &&
           NameIn(context.function).substr(0, DriverNamespace.size()) == DriverNamespace;
}

} // namespace VesmarClient
