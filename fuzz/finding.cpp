#include "fuzz/finding.h"

#include <cstdio>
#include <cstdlib>

#include <QtGlobal>

namespace
{

/// The log of the library goes nowhere, and no time of day is missing for a change to summer time.
[[maybe_unused]] const bool IsPrepared = [] {
    qInstallMessageHandler(
        [](QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {});
    return qputenv("TZ", "UTC");
}();

} // namespace

void Require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "Does not hold: %s\n", what);
        std::abort();
    }
}

std::int32_t Input::Number()
{
    std::uint32_t number = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        number |= static_cast<std::uint32_t>(Byte()) << shift;
    }
    return static_cast<std::int32_t>(number);
}

QByteArray Input::Bytes(int count)
{
    const QByteArray bytes = _bytes.mid(_position, count);
    _position += bytes.size();
    return bytes;
}
