#include "client/catalogue/unitstext.h"

#include <algorithm>

#include <QJsonDocument>
#include <QJsonObject>

#include "client/catalogue/catalogue.h"
#include "client/catalogue/conversions.h"
#include "client/catalogue/jsonlines.h"
#include "client/words/readings.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

constexpr int LongestUnit = 16;
constexpr int MostDecimals = 6;
const QLatin1String UnitField("unit");
const QLatin1String DecimalsField("decimals");

bool IsUnit(const QJsonValue& value)
{
    const QString unit = value.toString();
    return !unit.isEmpty() && unit.size() <= LongestUnit &&
           std::all_of(unit.cbegin(), unit.cend(), [](QChar character) { return character.isPrint(); });
}

bool IsDecimals(const QJsonValue& value)
{
    const int decimals = value.toInt(-1); // -1 where it is no whole number.
    return decimals >= 0 && decimals <= MostDecimals;
}

/// Reads up to the first member that is wrong.
class Reader
{
public:
    explicit Reader(const QByteArray& json) : _lines(json) {}

    UnitsText Read(const QJsonObject& functions);

private:
    bool ReadFunction(const QString& name, const QJsonValue& readings);
    bool ReadReading(const QStringList& path, Function function, const QJsonValue& fields);
    bool CheckField(const QStringList& path, const QJsonValue& value);
    bool Refuse(const QStringList& path, const QString& damage);

    JsonLines _lines;
    UnitsText _read;
};

UnitsText Reader::Read(const QJsonObject& functions)
{
    for (auto function = functions.begin(); function != functions.end(); ++function) {
        if (!ReadFunction(function.key(), function.value())) {
            return _read;
        }
    }
    const QStringList& repeated = _lines.Repeated();
    if (!repeated.isEmpty()) {
        Refuse(repeated,
               Translated(QT_TRANSLATE_NOOP("VesmarClient", "\"%1\" is there twice")).arg(repeated.last()));
    }
    return _read;
}

bool Reader::ReadFunction(const QString& name, const QJsonValue& readings)
{
    const auto* const row =
        std::find_if(AllFunctions.cbegin(), AllFunctions.cend(),
                     [&name](const CatalogueRow& each) { return name == QLatin1String(each.identifier); });
    if (row == AllFunctions.cend()) {
        return Refuse({name},
                      Translated(QT_TRANSLATE_NOOP("VesmarClient", "there is no function \"%1\"")).arg(name));
    }
    if (!readings.isObject()) {
        return Refuse({name},
                      Translated(QT_TRANSLATE_NOOP("VesmarClient", "\"%1\" has to be an object of readings"))
                          .arg(name));
    }
    const QJsonObject object = readings.toObject();
    for (auto reading = object.begin(); reading != object.end(); ++reading) {
        if (!ReadReading({name, reading.key()}, row->function, reading.value())) {
            return false;
        }
    }
    return true;
}

bool Reader::ReadReading(const QStringList& path, Function function, const QJsonValue& fields)
{
    const QString& reading = path.last();
    const QVector<const char*> known = ReadingNames(TypeOf(function));
    if (std::none_of(known.cbegin(), known.cend(),
                     [&reading](const char* name) { return reading == QLatin1String(name); })) {
        return Refuse(path, Translated(QT_TRANSLATE_NOOP("VesmarClient", "\"%1\" has no reading \"%2\""))
                                .arg(path.first(), reading));
    }
    if (!fields.isObject()) {
        return Refuse(
            path, Translated(QT_TRANSLATE_NOOP("VesmarClient",
                                               "\"%1\" has to be an object with \"unit\" and \"decimals\""))
                      .arg(reading));
    }
    const QJsonObject object = fields.toObject();
    for (auto field = object.begin(); field != object.end(); ++field) {
        if (!CheckField(path + QStringList(field.key()), field.value())) {
            return false;
        }
    }
    _read.units.insert({static_cast<int>(function), reading},
                       {object.value(UnitField).toString(), object.value(DecimalsField).toInt(-1)});
    return true;
}

bool Reader::CheckField(const QStringList& path, const QJsonValue& value)
{
    const QString& name = path.last();
    if (name == UnitField) {
        return IsUnit(value) ||
               Refuse(path, Translated(QT_TRANSLATE_NOOP("VesmarClient",
                                                         "\"unit\" has to be a text of 1 to %1 characters"))
                                .arg(LongestUnit));
    }
    if (name == DecimalsField) {
        return IsDecimals(value) ||
               Refuse(path,
                      Translated(QT_TRANSLATE_NOOP("VesmarClient",
                                                   "\"decimals\" has to be a whole number from 0 to %1"))
                          .arg(MostDecimals));
    }
    return Refuse(path,
                  Translated(QT_TRANSLATE_NOOP("VesmarClient",
                                               "a reading has \"unit\" and \"decimals\", and no \"%1\""))
                      .arg(name));
}

/// False, so that nothing more is read.
bool Reader::Refuse(const QStringList& path, const QString& damage)
{
    _read = {{}, damage, _lines.LineOf(path)};
    return false;
}

} // namespace

UnitsText ReadUnits(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        return {{}, error.errorString(), static_cast<int>(json.left(error.offset).count('\n')) + 1};
    }
    if (!document.isObject()) {
        return {{}, Translated(QT_TRANSLATE_NOOP("VesmarClient", "it has to be an object of functions"))};
    }
    return Reader(json).Read(document.object());
}

} // namespace VesmarClient
