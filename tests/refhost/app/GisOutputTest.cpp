// tessel import to GIS datasets, read back through GDAL's own API: geometry, coordinates,
// field names and types, and the coordinate system given with --crs.

#include "AppTestSupport.h"
#include "refhost/testing/TempDir.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <gtest/gtest.h>

#include <memory>

namespace tessel {
namespace testing {
namespace {

using refhost::testing::TempDir;

const char kSurvey[] = "# name x y h code n\n"
                       "P1 456712.408 5123402.117 301.562 TREE 7\n"
                       "P2 456798.991 5123455.830 302.114 S\xFC" "d 12\n"; // an ANSI file

const std::vector<std::string> kPointJob = {
    "--column", "name",        "--column", "x:real",      "--column", "y:real",           "--column", "h:real",
    "--column", "code",        "--column", "n:integer",   "--bind",   "name=ENTITY_NAME", "--bind",   "x=NODE_COORDINATE_X",
    "--bind",   "y=NODE_COORDINATE_Y",     "--bind",      "h=HEIGHT", "--bind",           "code=CODE", "--bind", "n=NUMBER"};

struct DatasetCloser {
    void operator()(GDALDataset* dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }
};
using Dataset = std::unique_ptr<GDALDataset, DatasetCloser>;

Dataset OpenVector(const std::string& path)
{
    GDALAllRegister();
    return Dataset(GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
}

struct GisCase {
    const char* name;
    const char* file;
    std::vector<std::string> fieldNames; // as the format keeps them, after any of its own
};

void PrintTo(const GisCase& test, std::ostream* out) { *out << test.name; }

const std::vector<std::string> kFullNames = {"ENTITY_NAME", "NODE_COORDINATE_X", "NODE_COORDINATE_Y",
                                             "HEIGHT",      "CODE",              "NUMBER"};

const GisCase kCases[] = {
    {"GeoPackage", "survey.gpkg", kFullNames},
    {"FlatGeobuf", "survey.fgb", kFullNames},
    // Shapefile's field names hold ten characters at most.
    {"Shapefile", "survey.shp", {"ENTITY_NAM", "NODE_COORD", "NODE_COO_1", "HEIGHT", "CODE", "NUMBER"}},
    // GDAL reads a GeoJSON feature's id as a field of its own.
    {"GeoJson", "survey.geojson", {"id", "ENTITY_NAME", "NODE_COORDINATE_X", "NODE_COORDINATE_Y", "HEIGHT", "CODE", "NUMBER"}},
};

class GisOutput : public ::testing::TestWithParam<GisCase> {};

TEST_P(GisOutput, PointsComeBackWithTheirCoordinatesFieldsAndCoordinateSystem)
{
    const GisCase& test = GetParam();
    TempDir folder;
    folder.WriteFile("survey.txt", kSurvey);
    std::vector<std::string> arguments = {"-q", "import", "points", "survey.txt"};
    arguments.insert(arguments.end(), kPointJob.begin(), kPointJob.end());
    for (const char* more : {"--crs", "EPSG:25833", "-o", test.file})
        arguments.push_back(more);
    const TesselRun run = RunTessel(arguments, folder.Path());
    ASSERT_EQ(run.status, 0) << run.err;

    const Dataset dataset = OpenVector(folder.Path() + "/" + test.file);
    ASSERT_TRUE(dataset);
    ASSERT_EQ(dataset->GetLayerCount(), 1);
    OGRLayer* layer = dataset->GetLayer(0);
    OGRSpatialReference expected;
    expected.importFromEPSG(25833);
    ASSERT_NE(layer->GetSpatialRef(), nullptr);
    EXPECT_TRUE(layer->GetSpatialRef()->IsSame(&expected));

    OGRFeatureDefn* definition = layer->GetLayerDefn();
    std::vector<std::string> names;
    for (int i = 0; i < definition->GetFieldCount(); ++i)
        names.push_back(definition->GetFieldDefn(i)->GetNameRef());
    EXPECT_EQ(names, test.fieldNames);
    const std::size_t first = names.size() - 6; // the bind targets come last
    const OGRFieldType types[] = {OFTString, OFTReal, OFTReal, OFTReal, OFTString, OFTInteger};
    for (std::size_t i = 0; i < 6 && first + i < names.size(); ++i)
        EXPECT_EQ(definition->GetFieldDefn(static_cast<int>(first + i))->GetType(), types[i]) << names[first + i];
    const int code = static_cast<int>(first) + 4;

    // Whatever order a spatial index gives them, every point is there, exactly.
    std::map<std::string, std::pair<double, double>> points;
    for (auto& feature : *layer) {
        const OGRPoint* point = feature->GetGeometryRef()->toPoint();
        const std::string name = feature->GetFieldAsString(code - 4);
        points[name] = {point->getX(), point->getY()};
        if (name == "P2") {
            EXPECT_STREQ(feature->GetFieldAsString(code), "Süd");
            EXPECT_EQ(feature->GetFieldAsInteger(code + 1), 12);
            EXPECT_EQ(feature->GetFieldAsDouble(code - 1), 302.114);
        }
    }
    EXPECT_EQ(points, (std::map<std::string, std::pair<double, double>>{{"P1", {456712.408, 5123402.117}},
                                                                        {"P2", {456798.991, 5123455.830}}}));
}

INSTANTIATE_TEST_SUITE_P(Formats, GisOutput, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Rows have no geometry (a Shapefile of rows is its table alone, the .dbf); without --crs no
// coordinate system is claimed, and a new Shapefile takes its old side files with it.
TEST(GisOutputWithout, RowsAndNoCoordinateSystem)
{
    TempDir folder;
    folder.WriteFile("survey.txt", kSurvey);
    folder.WriteFile("survey.prj", "an earlier run's coordinate system");
    for (const char* file : {"rows.gpkg", "survey.shp"}) {
        const TesselRun run = RunTessel({"-q", "import", "table", "survey.txt", "--column", "name", "--column",
                                         "x:real", "-o", file},
                                        folder.Path());
        ASSERT_EQ(run.status, 0) << run.err;
        const std::string written = std::string(file) == "survey.shp" ? "survey.dbf" : file;
        const Dataset dataset = OpenVector(folder.Path() + "/" + written);
        ASSERT_TRUE(dataset);
        OGRLayer* layer = dataset->GetLayer(0);
        EXPECT_EQ(layer->GetSpatialRef(), nullptr) << file;
        EXPECT_EQ(layer->GetFeatureCount(), 2) << file;
    }
    EXPECT_EQ(folder.ReadFile("survey.prj"), "");
}

} // namespace
} // namespace testing
} // namespace tessel
