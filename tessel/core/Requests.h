#pragma once
// What the user asked for on the command line, before anything is loaded or opened. The
// command-line parser fills these; the commands turn them into the framework's jobs.

#include "import/ColumnData.h"

#include <optional>
#include <string>
#include <vector>

namespace tessel {

struct ColumnOption {
    std::string name;
    ColumnTypeCode type = kColumnText; // as the import configuration stores it
    bool enabled = true;
};

// One data bind: the source field id and the target field id, both as typed (UTF-8).
struct BindOption {
    std::string source;
    std::string target;
};

// A named transform of the reference host applied to every bind with that target.
struct TransformOption {
    std::string target;
    std::string transform;
};

// The import configuration: a stored configuration string, or the options it is composed
// from. Delimiters and comments hold the characters themselves (escapes already resolved).
struct ImportConfigChoice {
    std::optional<std::string> configFile; // --config
    std::optional<std::string> delimiters; // --delimiters
    std::optional<std::string> comments;   // --comments
    std::vector<unsigned> fixedPositions;  // --fixed: fixed-width mode when not empty
    std::vector<ColumnOption> columns;       // --column, in order
    std::optional<int> headerLines;          // --header-lines: lines of names before the data
    bool strict = false;                     // --strict: likely mistakes are errors, not warnings

    bool IsComposed() const { return !configFile; }
};

struct ExportConfigChoice {
    std::optional<std::string> configFile; // --config
    std::optional<std::string> delimiter;  // --delimiter
    std::optional<std::string> comment;    // --comment
    std::optional<bool> header;            // --header / --no-header
    bool utf16 = false;                    // --utf16
    bool strict = false;                   // --strict: likely mistakes are errors, not warnings

    bool IsComposed() const { return !configFile; }
};

enum class ImportKind { Points, Lines, Polygons, Table, Cloud };
enum class ExportKind { Points, Lines, Polygons };

// JSON Lines, GeoJSON and CSV are written by tessel itself; GeoPackage, FlatGeobuf and ESRI
// Shapefile through GDAL.
enum class OutputFormat { JsonLines, GeoJson, Csv, GeoPackage, FlatGeobuf, Shapefile };

// Which of the three data-table operations runs, and with what.
enum class TableVariant { AllRows, LinkedKeys, KeyValue };

// The key value of UpdateLinkedTableRows; Null passes no value at all.
enum class KeyValueType { Text, Real, Integer, Null };

struct CoordinateFilter {
    double xMin = 0.0, yMin = 0.0, xMax = 0.0, yMax = 0.0;
};

struct ImportRequest {
    ImportKind kind = ImportKind::Points;
    std::string file;
    ImportConfigChoice config;
    std::optional<std::string> nodeConfigFile; // --node-config
    std::vector<BindOption> binds;               // --bind
    std::vector<BindOption> nodeBinds;           // --node-bind
    std::vector<TransformOption> transforms;     // --transform
    std::optional<int> entityType;             // --entity-type
    bool dataOnly = false;
    bool sectionNodes = false;
    bool secondary = false;
    std::optional<CoordinateFilter> filter;

    TableVariant tableVariant = TableVariant::AllRows;
    int maxLines = 0;
    std::vector<std::string> keys;
    std::string keyValue;
    KeyValueType keyValueType = KeyValueType::Text;
    int keyIndex = 0;

    std::optional<std::string> output;  // -o; standard output when absent or "-"
    std::optional<OutputFormat> format; // --format; otherwise by the output's extension
    std::optional<std::string> crs;     // --crs: EPSG code, WKT or PROJ string
    std::optional<std::string> preset;  // --preset: a survey preset's name, or "auto"
    std::optional<std::string> rejects; // --rejects: where the values that did not convert are listed
};

enum class IfExists { Ask, Overwrite, Append, Cancel };

// JSON Lines and GeoJSON as tessel writes them, or any vector dataset through GDAL.
enum class InputFormat { JsonLines, GeoJson, Gdal };

struct ExportRequest {
    ExportKind kind = ExportKind::Points;
    std::string input;
    std::string output;
    ExportConfigChoice config;
    std::optional<std::string> nodeConfigFile;
    std::vector<BindOption> binds;
    std::vector<BindOption> nodeBinds;
    std::vector<TransformOption> transforms;
    std::optional<int> entityType;
    IfExists ifExists = IfExists::Ask;
    std::optional<InputFormat> inputFormat;
    std::optional<std::string> layer; // --layer: the layer of a GIS dataset
    std::optional<std::string> preset; // --preset: write the survey preset's columns in its order
};

struct ConfigRequest {
    bool exportConfig = false;
    std::optional<std::string> file;
    ImportConfigChoice importConfig;
    ExportConfigChoice exportConfigChoice;
};

struct DescribeRequest {
    std::string configFile;
    bool node = false;
    // Which engine describes it; by the configuration's attributes when neither is set.
    bool forceImport = false;
    bool forceExport = false;
};

struct TargetsRequest {
    ImportKind kind = ImportKind::Points;
    std::optional<int> entityType;
    bool dataOnly = false;
};

struct ConfigureRequest {
    bool exportEngine = false;
    std::optional<std::string> file;
    std::optional<std::string> configFile;
    std::optional<std::string> output; // standard output without it
    bool node = false;
};

struct PresetsRequest {};

struct EnginesRequest {
    bool verbose = false;
};

// Options that apply to every command.
struct GlobalOptions {
    bool quiet = false;
    bool noDialogs = false; // answer on the terminal even where a dialog could be shown
    std::optional<unsigned> codePage;
    std::optional<std::string> modulePath;
};

} // namespace tessel
