#include "cli/kit/units.h"

#include <cctype>
#include <map>
#include <string>

namespace Cli
{

CLI::Validator InSeconds()
{
    const std::map<std::string, double> seconds{{"ms", 0.001}, {"s", 1}, {"min", 60}, {"h", 3600}};
    const auto convert = [units = CLI::AsNumberWithUnit(seconds)](std::string& text) {
        const bool beginsWithNumber = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) != 0;
        std::string number = text;
        try {
            if (beginsWithNumber && units(number).empty()) {
                text = number;
            }
        } catch (const CLI::ValidationError&) {
            return std::string(); // The option says what it accepts.
        }
        return std::string();
    };
    return {convert, ""};
}

} // namespace Cli
