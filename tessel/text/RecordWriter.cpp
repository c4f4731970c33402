#include "tessel/text/RecordWriter.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace tessel {

OutputFormat FormatForPath(const std::string& path)
{
    const auto dot = path.rfind('.');
    const auto slash = path.rfind('/');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return OutputFormat::JsonLines;
    std::string extension = path.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == "geojson" || extension == "json")
        return OutputFormat::GeoJson;
    if (extension == "csv")
        return OutputFormat::Csv;
    if (extension == "gpkg")
        return OutputFormat::GeoPackage;
    if (extension == "fgb")
        return OutputFormat::FlatGeobuf;
    if (extension == "shp")
        return OutputFormat::Shapefile;
    return OutputFormat::JsonLines;
}

std::vector<std::string> UniqueFieldNames(const std::vector<std::string>& names)
{
    std::set<std::string> taken(names.begin(), names.end());
    std::set<std::string> used;
    std::vector<std::string> unique;
    for (const std::string& name : names) {
        // A numbered name skips names that stand in the list themselves.
        std::string candidate = name;
        for (int number = 2; used.count(candidate) != 0 || (candidate != name && taken.count(candidate) != 0); ++number)
            candidate = name + "#" + std::to_string(number);
        used.insert(candidate);
        unique.push_back(candidate);
    }
    return unique;
}

} // namespace tessel
