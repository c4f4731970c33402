// tessel export from a GIS dataset that GDAL itself wrote: a GeoPackage of 3D points becomes a
// survey text file with name, easting, northing and height; and what such a source can lack.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

using refhost::testing::TempDir;

// Writes survey.gpkg with a layer of 3D points ("survey") and one of rows ("notes").
void WriteGeoPackage(const std::string& path)
{
    GDALAllRegister();
    GDALDataset* dataset =
        GetGDALDriverManager()->GetDriverByName("GPKG")->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    ASSERT_NE(dataset, nullptr);
    OGRLayer* points = dataset->CreateLayer("survey", nullptr, wkbPoint25D, nullptr);
    OGRFieldDefn name("name", OFTString), number("number", OFTInteger);
    points->CreateField(&name);
    points->CreateField(&number);
    const struct {
        const char* name;
        double x, y, z;
        int number;
    } rows[] = {{"P1", 456712.408, 5123402.117, 301.562, 7}, {"Süd 2", 456798.99, 5123455.83, 302.1, 12}};
    for (const auto& row : rows) {
        OGRFeature feature(points->GetLayerDefn());
        feature.SetField("name", row.name);
        feature.SetField("number", row.number);
        OGRPoint point(row.x, row.y, row.z);
        feature.SetGeometry(&point);
        ASSERT_EQ(points->CreateFeature(&feature), OGRERR_NONE);
    }
    OGRLayer* notes = dataset->CreateLayer("notes", nullptr, wkbNone, nullptr);
    notes->CreateField(&name);
    OGRFeature note(notes->GetLayerDefn());
    note.SetField("name", "only text");
    ASSERT_EQ(notes->CreateFeature(&note), OGRERR_NONE);
    GDALClose(GDALDataset::ToHandle(dataset));
}

TEST(GisInput, PointsOfAGeoPackageBecomeASurveyFile)
{
    TempDir folder;
    WriteGeoPackage(folder.Path() + "/survey.gpkg");
    const TesselRun run =
        RunTessel({"-q",         "export",      "points", "survey.gpkg", "--layer", "survey",    "-o",
                   "survey.txt", "--delimiter", " ",      "--no-header", "--bind",  "name=NAME", "--bind",
                   "@x=E",       "--bind",      "@y=N",   "--bind",      "@z=H",    "--bind",    "number=NO"},
                  folder.Path());
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("survey.txt"), "P1 456712.408 5123402.117 301.562 7\r\n"
                                             "S\xFC"
                                             "d 2 456798.99 5123455.83 302.1 12\r\n");
}

TEST(GisInput, WhatTheSourceLacksIsOneLine)
{
    TempDir folder;
    WriteGeoPackage(folder.Path() + "/survey.gpkg");
    const struct {
        std::vector<std::string> more;
        std::string error;
    } cases[] = {
        {{}, "tessel export: 'survey.gpkg' holds 2 layers (survey, notes): choose one with --layer"},
        {{"--layer", "lines"}, "tessel export: --layer: no layer 'lines' in 'survey.gpkg' (layers: survey, notes)"},
        {{"--layer", "notes", "--bind", "@x=E"},
         "tessel export: 'survey.gpkg' has no point positions, so there is no '@x' to bind"},
    };
    for (const auto& test : cases) {
        std::vector<std::string> arguments = {"-q", "export", "points", "survey.gpkg", "-o", "out.txt"};
        arguments.insert(arguments.end(), test.more.begin(), test.more.end());
        const TesselRun run = RunTessel(arguments, folder.Path());
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.err, test.error + "\n");
        EXPECT_EQ(folder.ReadFile("out.txt"), "");
    }
}

} // namespace
} // namespace testing
} // namespace tessel
