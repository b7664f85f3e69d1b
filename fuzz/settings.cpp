#include <memory>

#include "fuzz/finding.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "protocol/payload.h"
#include "support/wire.h"
#include "unit/model/settingsclasses.h"

using namespace Vesmar;

namespace
{

constexpr int FunctionOfIec = 97;

QByteArray PayloadOf(MeasurementSettings& settings)
{
    const std::unique_ptr<QByteArray> payload(settings.CreateMeasurementFrame());
    return *payload;
}

void RequireClone(const SettingsClasses::Class& kind, MeasurementSettings& settings)
{
    const std::unique_ptr<MeasurementSettings> clone(settings.Clone());
    Require(clone->GetMeasurementType() == settings.GetMeasurementType(), "a clone is of the same function");
    Require(PayloadOf(*clone) == PayloadOf(settings), "a clone has the same payload");
    for (const auto& field : kind.fields) {
        Require(field.get(*clone) == field.get(settings), "a clone has the same fields");
    }
}

void RequireFrame(MeasurementSettings& settings)
{
    CRC16 crc16(nullptr);
    const CommandBuilder builder(&crc16, nullptr);
    const std::unique_ptr<QByteArray> frame(builder.CreatePrepareMeasurementFrame(settings));
    Require(*frame == WithChecksum('P' + PayloadOf(settings)), "a request is its letter and the payload");
}

} // namespace

/// The first byte chooses the class, four bytes each are its fields.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const auto& classes = SettingsClasses::All();
    const auto& kind = classes.at(static_cast<std::size_t>(input.Byte()) % classes.size());
    const std::unique_ptr<MeasurementSettings> settings = kind.create();
    for (const auto& field : kind.fields) {
        field.set(*settings, input.Number());
    }
    const QByteArray payload = PayloadOf(*settings);
    Require(payload.size() == 8, "a payload has eight bytes");
    Require(payload.at(0) == (kind.function == FunctionOfIec ? 1 : kind.function),
            "its first is the function");
    const auto decoded = DecodePayload(payload);
    Require(decoded && static_cast<int>(decoded->function) == kind.function, "it tells the function");
    RequireClone(kind, *settings);
    RequireFrame(*settings);
    return 0;
}
