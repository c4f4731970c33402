// tessel import to GIS datasets, read back through GDAL's own API: geometry, coordinates,
// field names and types, and the coordinate system given with --crs.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <set>

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

// 6000 survey points, every tenth a repeat of an earlier one (as re-measured points are), in
// thousandths so that the text holds each coordinate exactly as the returned names keep it;
// imported by tessel to output in folder.
std::map<std::string, std::pair<double, double>> ImportGrid(TempDir& folder, const std::string& output)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<long> east(-1000000, 1000000), north(5000000000, 5001000000);
    std::vector<std::pair<double, double>> points;
    std::map<std::string, std::pair<double, double>> named;
    std::string survey;
    for (int i = 0; i < 6000; ++i) {
        points.push_back(i % 10 == 9 ? points[static_cast<std::size_t>(i / 2)]
                                     : std::make_pair(east(random) / 1000.0, north(random) / 1000.0));
        char line[96];
        std::snprintf(line, sizeof line, "P%d %.3f %.3f\n", i, points.back().first, points.back().second);
        survey += line;
        named["P" + std::to_string(i)] = points.back();
    }
    folder.WriteFile("grid.txt", survey);
    const TesselRun run = RunTessel({"-q", "import", "points", "grid.txt", "--column", "name", "--column", "x:real",
                                     "--column", "y:real", "--bind", "name=ENTITY_NAME", "--bind",
                                     "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "-o", output},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    return named;
}

class SpatialIndex : public ::testing::TestWithParam<const char*> {};

// The index is packed by tessel once every point is in; GDAL must use it and answer area
// queries from it exactly as a scan of the points does.
TEST_P(SpatialIndex, AnswersAreaQueriesAsAScanDoes)
{
    TempDir folder;
    const auto points = ImportGrid(folder, GetParam());
    const Dataset dataset = OpenVector(folder.Path() + "/" + GetParam());
    ASSERT_TRUE(dataset);
    OGRLayer* layer = dataset->GetLayer(0);
    EXPECT_TRUE(layer->TestCapability(OLCFastSpatialFilter));
    const double areas[][4] = {{-1000.5, 4.9e6, 1000.5, 5.1e6}, // everything
                               {-10.0, 5000400.0, 90.0, 5000500.0},
                               {-999.99, 5000000.0, -900.0, 5000050.0},
                               {123.4567, 5000777.7, 123.4568, 5000777.8}, // likely nothing
                               {2000.0, 5.0e6, 3000.0, 5.001e6}};          // outside
    for (const auto& area : areas) {
        std::set<std::string> scanned, found;
        for (const auto& [name, point] : points) {
            if (point.first >= area[0] && point.first <= area[2] && point.second >= area[1] && point.second <= area[3])
                scanned.insert(name);
        }
        layer->SetSpatialFilterRect(area[0], area[1], area[2], area[3]);
        for (auto& feature : *layer)
            found.insert(feature->GetFieldAsString(0));
        EXPECT_EQ(found, scanned) << area[0] << " " << area[1] << " " << area[2] << " " << area[3];
    }
}

// Where nothing is imported there is nothing to index, and the dataset is still a valid,
// empty one.
TEST_P(SpatialIndex, AnEmptyImportIsAnEmptyDataset)
{
    TempDir folder;
    folder.WriteFile("empty.txt", "# no points yet\n");
    const TesselRun run =
        RunTessel({"-q", "import", "points", "empty.txt", "--column", "name", "--column", "x:real", "--column",
                   "y:real", "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "-o", GetParam()},
                  folder.Path());
    ASSERT_EQ(run.status, 0) << run.err;
    const Dataset dataset = OpenVector(folder.Path() + "/" + GetParam());
    ASSERT_TRUE(dataset);
    EXPECT_EQ(dataset->GetLayer(0)->GetFeatureCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Formats, SpatialIndex, ::testing::Values("grid.gpkg", "grid.fgb"),
                         [](const auto& info) { return std::string(info.param).substr(5); });

// SQLite finds the GeoPackage's packed R-tree sound, GDAL sees the extension, and later
// edits keep the index up to date through its triggers.
TEST(GisOutputGeoPackage, PackedIndexIsSoundAndFollowsEdits)
{
    TempDir folder;
    ImportGrid(folder, "grid.gpkg");
    GDALAllRegister();
    const Dataset dataset(GDALDataset::Open((folder.Path() + "/grid.gpkg").c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE));
    ASSERT_TRUE(dataset);
    const auto answer = [&dataset](const std::string& sql) {
        OGRLayer* result = dataset->ExecuteSQL(sql.c_str(), nullptr, nullptr);
        EXPECT_NE(result, nullptr) << sql;
        if (!result)
            return std::string();
        std::unique_ptr<OGRFeature> row(result->GetNextFeature());
        const std::string text = row ? row->GetFieldAsString(0) : "";
        dataset->ReleaseResultSet(result);
        return text;
    };
    EXPECT_EQ(answer("SELECT HasSpatialIndex('grid', 'geom')"), "1");
    EXPECT_EQ(answer("SELECT rtreecheck('rtree_grid_geom')"), "ok");
    EXPECT_EQ(answer("SELECT count(*) FROM rtree_grid_geom"), "6000");
    delete dataset->ExecuteSQL("DELETE FROM grid WHERE fid <= 100", nullptr, nullptr);
    EXPECT_EQ(answer("SELECT count(*) FROM rtree_grid_geom"), "5900");
    EXPECT_EQ(answer("SELECT rtreecheck('rtree_grid_geom')"), "ok");
}

// tessel writes FlatGeobuf itself. GDAL reads it with its buffers verified: a value left out
// reads as null, text in any script comes back as written, cloud points carry no fields, a
// coordinate system without an EPSG code travels as WKT, the layer is named as the file, and a
// file written to standard output is whole.
// (GDAL itself writes no property for a null value either.)
TEST(GisOutputFlatGeobuf, NullsTextCloudPointsAndACoordinateSystemWithoutCode)
{
    const char* const kProj = "+proj=tmerc +lat_0=0 +lon_0=10.5 +k=0.9996 +x_0=123456 +y_0=0 +ellps=GRS80 +units=m";
    TempDir folder;
    folder.WriteFile("mixed.txt", "\xEF\xBB\xBF" "A1;10.5;-20.25;\xCE\xB1\xCE\xB2\xCE\xB3 \xE2\x82\xAC;-7\n"
                                  "A2;11;-21;;\n");
    const TesselRun points =
        RunTessel({"-q", "import", "points", "mixed.txt", "--delimiters", ";", "--column", "name", "--column", "x:real",
                   "--column", "y:real", "--column", "note", "--column", "n:integer", "--bind", "name=ENTITY_NAME",
                   "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "--bind", "note=NOTE", "--bind",
                   "n=NUMBER", "--crs", kProj, "-o", "mixed.fgb"},
                  folder.Path());
    ASSERT_EQ(points.status, 0) << points.err;
    const TesselRun cloud = RunTessel({"-q", "import", "cloud", "mixed.txt", "--delimiters", ";", "--column", "name",
                                       "--column", "x:real", "--column", "y:real", "--bind", "x=NODE_COORDINATE_X",
                                       "--bind", "y=NODE_COORDINATE_Y", "-o", "cloud.fgb"},
                                      folder.Path());
    ASSERT_EQ(cloud.status, 0) << cloud.err;

    GDALAllRegister();
    const char* const verified[] = {"VERIFY_BUFFERS=YES", nullptr};
    const Dataset mixed(GDALDataset::Open((folder.Path() + "/mixed.fgb").c_str(), GDAL_OF_VECTOR, nullptr, verified));
    ASSERT_TRUE(mixed);
    OGRLayer* layer = mixed->GetLayer(0);
    EXPECT_STREQ(layer->GetName(), "mixed");
    OGRSpatialReference expected;
    expected.SetFromUserInput(kProj);
    ASSERT_NE(layer->GetSpatialRef(), nullptr);
    EXPECT_TRUE(layer->GetSpatialRef()->IsSame(&expected));
    OGREnvelope extent;
    ASSERT_EQ(layer->GetExtent(&extent, FALSE), OGRERR_NONE);
    EXPECT_EQ(std::vector<double>({extent.MinX, extent.MinY, extent.MaxX, extent.MaxY}),
              std::vector<double>({10.5, -21, 11, -20.25}));
    std::map<std::string, std::string> notes;
    for (auto& feature : *layer) {
        const std::string name = feature->GetFieldAsString("ENTITY_NAME");
        const int note = feature->GetFieldIndex("NOTE"), number = feature->GetFieldIndex("NUMBER");
        if (!feature->IsFieldSetAndNotNull(note) && !feature->IsFieldSetAndNotNull(number))
            notes[name] = "(none)";
        else
            notes[name] = std::string(feature->GetFieldAsString(note)) + " " +
                          std::to_string(feature->GetFieldAsInteger(number));
    }
    EXPECT_EQ(notes, (std::map<std::string, std::string>{{"A1", "\xCE\xB1\xCE\xB2\xCE\xB3 \xE2\x82\xAC -7"},
                                                         {"A2", "(none)"}}));

    // Through a pipe too: the file is complete when the last feature is.
    const TesselRun piped = RunTessel({"-q", "import", "cloud", "mixed.txt", "--delimiters", ";", "--column", "name",
                                       "--column", "x:real", "--column", "y:real", "--bind", "x=NODE_COORDINATE_X",
                                       "--bind", "y=NODE_COORDINATE_Y", "--format", "fgb"},
                                      folder.Path());
    ASSERT_EQ(piped.status, 0) << piped.err;
    folder.WriteFile("piped.fgb", piped.out);
    const Dataset pipedDataset(
        GDALDataset::Open((folder.Path() + "/piped.fgb").c_str(), GDAL_OF_VECTOR, nullptr, verified));
    ASSERT_TRUE(pipedDataset);
    EXPECT_EQ(pipedDataset->GetLayer(0)->GetFeatureCount(), 2);

    const Dataset clouds(GDALDataset::Open((folder.Path() + "/cloud.fgb").c_str(), GDAL_OF_VECTOR, nullptr, verified));
    ASSERT_TRUE(clouds);
    OGRLayer* cloudLayer = clouds->GetLayer(0);
    EXPECT_EQ(cloudLayer->GetSpatialRef(), nullptr);
    EXPECT_EQ(cloudLayer->GetLayerDefn()->GetFieldCount(), 0);
    std::set<std::pair<double, double>> cloudPoints;
    for (auto& feature : *cloudLayer) {
        const OGRPoint* point = feature->GetGeometryRef()->toPoint();
        cloudPoints.insert({point->getX(), point->getY()});
    }
    EXPECT_EQ(cloudPoints, (std::set<std::pair<double, double>>{{10.5, -20.25}, {11, -21}}));
}

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
