#include "decode/lines/colours.h"

#include "decode/lines/scanner.h"

namespace Decode
{

namespace
{

using std::string_view;

/// The length of the colour at the front of the text; 0 if there is none.
std::size_t ColourSize(string_view text)
{
    Scanner scan(text);
    if ((!scan.Skip("\x1b") && !scan.Skip("#033")) || !scan.Skip("[")) {
        return 0;
    }
    do {
        scan.Digits();
    } while (scan.Skip(";"));
    return scan.Skip("m") ? text.size() - scan.Rest().size() : 0;
}

} // namespace

QByteArray WithoutColours(const QByteArray& line)
{
    constexpr string_view Beginnings = "\x1b#";
    string_view rest = View(line);
    std::size_t plain = rest.find_first_of(Beginnings);
    if (plain == string_view::npos) {
        return line;
    }
    QByteArray text;
    text.reserve(line.size());
    while (plain != string_view::npos) {
        const std::size_t colour = ColourSize(rest.substr(plain));
        plain += colour > 0 ? 0 : 1;
        text.append(rest.data(), static_cast<int>(plain));
        rest.remove_prefix(plain + colour);
        plain = rest.find_first_of(Beginnings);
    }
    return text.append(rest.data(), static_cast<int>(rest.size()));
}

} // namespace Decode
