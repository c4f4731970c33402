#include "tessel/text/ExportInput.h"

#include "host/Utf8.h"
#include "refhost/FilePath.h"
#include "tessel/core/AppError.h"
#include "tessel/text/RecordWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <climits>
#include <cstring>
#include <fstream>
#include <map>

namespace tessel {
namespace {

using json = nlohmann::ordered_json;
using VeltoGis::Data::CDataBox;

CDataBox ToDataBox(const json& value)
{
    CDataBox box;
    switch (value.type()) {
    case json::value_t::null:
    case json::value_t::discarded: break;
    case json::value_t::number_integer: {
        const auto number = value.get<json::number_integer_t>();
        if (number >= INT_MIN && number <= INT_MAX)
            box.SetValue(static_cast<int>(number));
        else
            box.SetValue(static_cast<double>(number));
        break;
    }
    case json::value_t::number_unsigned: {
        const auto number = value.get<json::number_unsigned_t>();
        if (number <= static_cast<json::number_unsigned_t>(INT_MAX))
            box.SetValue(static_cast<int>(number));
        else
            box.SetValue(static_cast<double>(number));
        break;
    }
    case json::value_t::number_float: box.SetValue(value.get<double>()); break;
    case json::value_t::string: box.SetValue(FromUtf8(value.get_ref<const std::string&>()).c_str()); break;
    case json::value_t::boolean: box.SetValue(value.get<bool>() ? WTEXT("true") : WTEXT("false")); break;
    default: box.SetValue(FromUtf8(value.dump()).c_str()); break;
    }
    return box;
}

// A name or node name: text as it stands, numbers in their JSON form, null as absent.
std::optional<WString> OptionalText(const json& object, const char* key)
{
    const auto found = object.find(key);
    if (found == object.end() || found->is_null())
        return std::nullopt;
    if (found->is_string())
        return FromUtf8(found->get_ref<const std::string&>());
    return FromUtf8(found->dump());
}

std::optional<AcGePoint3d> Coordinates(const json& coordinates)
{
    if (!coordinates.is_array() || coordinates.size() < 2 || !coordinates[0].is_number() || !coordinates[1].is_number())
        return std::nullopt;
    const double z = coordinates.size() > 2 && coordinates[2].is_number() ? coordinates[2].get<double>() : 0.0;
    return AcGePoint3d(coordinates[0].get<double>(), coordinates[1].get<double>(), z);
}

class InputBuilder {
public:
    int Index(const std::string& name)
    {
        const auto found = indexes_.find(name);
        if (found != indexes_.end())
            return found->second;
        const int index = static_cast<int>(input_.fieldNames.size());
        indexes_.emplace(name, index);
        input_.fieldNames.push_back(name);
        return index;
    }

    void SetField(InputRecord& record, const std::string& name, const json& value)
    {
        const auto index = static_cast<std::size_t>(Index(name));
        if (record.values.size() <= index)
            record.values.resize(index + 1);
        record.values[index] = ToDataBox(value);
    }

    void Add(InputRecord record) { input_.records.push_back(std::move(record)); }
    ExportInput Take() { return std::move(input_); }

private:
    ExportInput input_;
    std::map<std::string, int> indexes_;
};

std::ifstream OpenInput(const std::string& path)
{
    std::ifstream file(refhost::PathFromUtf8(path), std::ios::binary);
    if (!file)
        throw UsageError("cannot read '" + path + "': " + std::strerror(errno));
    return file;
}

ExportInput ReadJsonLines(std::istream& file, const std::string& path)
{
    InputBuilder builder;
    std::string line;
    for (long number = 1; std::getline(file, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        json object = json::parse(line, nullptr, false);
        if (!object.is_object())
            throw UsageError("'" + path + "' line " + std::to_string(number) + ": not a JSON object");
        InputRecord record;
        record.name = OptionalText(object, "name");
        record.start = OptionalText(object, "start");
        record.end = OptionalText(object, "end");
        if (const auto position = object.find("position"); position != object.end())
            record.position = Coordinates(*position);
        if (const auto values = object.find("values"); values != object.end()) {
            if (!values->is_array())
                throw UsageError("'" + path + "' line " + std::to_string(number) + ": \"values\" is not an array");
            for (std::size_t i = 0; i < values->size(); ++i)
                builder.SetField(record, "#" + std::to_string(i), (*values)[i]);
        }
        builder.Add(std::move(record));
    }
    if (file.bad())
        throw UsageError("cannot read '" + path + "': " + std::strerror(errno));
    return builder.Take();
}

void AddFeature(InputBuilder& builder, const json& feature)
{
    InputRecord record;
    record.name = OptionalText(feature, "id");
    record.start = OptionalText(feature, "start");
    record.end = OptionalText(feature, "end");
    if (const auto geometry = feature.find("geometry"); geometry != feature.end() && geometry->is_object()) {
        if (geometry->value("type", json()) == "Point")
            record.position = Coordinates(geometry->value("coordinates", json()));
    }
    if (const auto properties = feature.find("properties"); properties != feature.end() && properties->is_object()) {
        for (const auto& property : properties->items())
            builder.SetField(record, property.key(), property.value());
    }
    builder.Add(std::move(record));
}

bool IsFeature(const json& value) { return value.is_object() && value.value("type", json()) == "Feature"; }

// Features are taken out of the document as soon as each is complete, so that a large
// collection never stands in memory twice.
ExportInput ReadGeoJson(std::istream& file, const std::string& path)
{
    InputBuilder builder;
    const json::parser_callback_t takeFeatures = [&builder](int depth, json::parse_event_t event, json& parsed) {
        if (event == json::parse_event_t::object_end && depth == 2 && IsFeature(parsed)) {
            AddFeature(builder, parsed);
            return false;
        }
        return true;
    };
    json document = json::parse(file, takeFeatures, false);
    if (document.is_discarded())
        throw UsageError("'" + path + "' is not a GeoJSON document (it does not parse as JSON)");
    if (IsFeature(document))
        AddFeature(builder, document);
    else if (!document.is_object() || document.value("type", json()) != "FeatureCollection")
        throw UsageError("'" + path + "' is not a GeoJSON FeatureCollection or Feature");
    return builder.Take();
}

} // namespace

int ExportInput::FieldIndex(const std::string& name) const
{
    for (std::size_t i = 0; i < fieldNames.size(); ++i) {
        if (fieldNames[i] == name)
            return static_cast<int>(i);
    }
    return -1;
}

void AddCoordinateFields(ExportInput& input, const std::vector<std::string>& sources, const std::string& path)
{
    const char* const names[] = {"@x", "@y", "@z"};
    for (int axis = 0; axis < 3; ++axis) {
        const std::string name = names[axis];
        if (input.FieldIndex(name) >= 0 || std::find(sources.begin(), sources.end(), name) == sources.end())
            continue;
        const bool anyPosition = std::any_of(input.records.begin(), input.records.end(),
                                             [](const InputRecord& record) { return record.position.has_value(); });
        if (!anyPosition && !input.records.empty())
            throw UsageError("'" + path + "' has no point positions, so there is no '" + name + "' to bind");
        const std::size_t field = input.fieldNames.size();
        input.fieldNames.push_back(name);
        for (InputRecord& record : input.records) {
            record.values.resize(field + 1);
            if (record.position)
                record.values[field].SetValue(axis == 0   ? record.position->x
                                              : axis == 1 ? record.position->y
                                                          : record.position->z);
        }
    }
}

InputFormat InputFormatForPath(const std::string& path)
{
    switch (FormatForPath(path)) {
    case OutputFormat::GeoJson:
        return InputFormat::GeoJson;
    case OutputFormat::Csv:
    case OutputFormat::GeoPackage:
    case OutputFormat::FlatGeobuf:
    case OutputFormat::Shapefile:
        return InputFormat::Gdal;
    case OutputFormat::JsonLines:
        break;
    }
    return InputFormat::JsonLines;
}

ExportInput ParseExportInput(std::istream& input, InputFormat format, const std::string& name)
{
    return format == InputFormat::GeoJson ? ReadGeoJson(input, name) : ReadJsonLines(input, name);
}

ExportInput ReadExportInput(const std::string& path, InputFormat format)
{
    std::ifstream file = OpenInput(path);
    return ParseExportInput(file, format, path);
}

} // namespace tessel
