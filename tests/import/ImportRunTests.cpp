#include "ImportTestSupport.h"

#include "host/GisUtility.h"
#include "platform/Platform.h"
#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>

using namespace importtest;
using namespace VeltoGis::ImportExport;

namespace {

const Layout kLayout{{" "}, "#", 0, {}, {{0, "name", Text}, {1, "x", Real}, {2, "y", Real}}};
const std::vector<BindPair> kBinds{{"name", "ENTITY_NAME"}, {"x", "NODE_COORDINATE_X"}, {"y", "NODE_COORDINATE_Y"}};

class ImportRun : public ImportTest {
protected:
    Texts Points(CImportDefinition& job, int expectedResult = 1)
    {
        ImpexEntityList points;
        EXPECT_EQ(engine.ImportPoints(&job, points, 0, nullptr), expectedResult);
        return Describe(points);
    }
};

} // namespace

TEST_F(ImportRun, ProgressCountsEveryLineAndAdvancesBeforeEachRead)
{
    auto job = Job(VeltoGis::EntityTypePoint, "#head\nP1 1 2\nP3 5 6\nP2 3 4", kLayout, kBinds);
    Points(job);
    const std::string entities = "show:" + U8(Msg(7875)) + ":0:4";
    EXPECT_EQ(ProgressCalls(), (Texts{entities, "pos:1", "pos:2", "pos:3", "pos:4", "pos:5", "hide", "restore"}));

    // Table rows show message 60043 as it stands; maxLines stops before the next read.
    const std::string rows = "show:" + U8(Msg(60043)) + ":0:4";
    refhost::StartProgressRecording();
    engine.ImportTableRows(job.GetImporterConfiguration().c_str(), boost::make_shared<CDBTable>(), 2);
    EXPECT_EQ(ProgressCalls(), (Texts{rows, "pos:1", "pos:2", "hide", "restore"}));
    const VeltoGis::Data::CDataBox zero(WTEXT("0"));
    for (int keyed = 0; keyed < 2; ++keyed) {
        refhost::StartProgressRecording();
        const WString configuration = job.GetImporterConfiguration();
        if (keyed)
            engine.UpdateLinkedTableRows(configuration.c_str(), boost::make_shared<CDBTable>(), &zero);
        else
            engine.ImportLinkedTableRows(configuration.c_str(), boost::make_shared<CDBTable>(), KeySet{});
        EXPECT_EQ(ProgressCalls(), (Texts{rows, "pos:1", "pos:2", "pos:3", "pos:4", "pos:5", "hide", "restore"}));
    }
}

TEST_F(ImportRun, NoPathOrUnparsableConfigurationReturnsZeroSilently)
{
    for (const WString& configuration : {ConfigurationXml(WString(), kLayout), W("no configuration")}) {
        auto job = refhost::testing::MakeImportDefinition(VeltoGis::EntityTypePoint, configuration, kBinds);
        ImpexEntityList entities;
        EXPECT_EQ(engine.ImportPoints(&job, entities, 0, nullptr), 0);
        EXPECT_EQ(engine.ImportLines(&job, entities), 0);
        EXPECT_EQ(engine.ImportPolygons(&job, entities), 0);
        EXPECT_EQ(engine.ImportCloud(&job, boost::make_shared<CCloud>()), 0);
        EXPECT_EQ(engine.ImportTableRows(configuration.c_str(), boost::make_shared<CDBTable>(), 0), 0);
        EXPECT_EQ(engine.ImportLinkedTableRows(configuration.c_str(), boost::make_shared<CDBTable>(), KeySet{}), 0);
        EXPECT_EQ(engine.UpdateLinkedTableRows(configuration.c_str(), boost::make_shared<CDBTable>(), nullptr), 0);
    }
    EXPECT_EQ(engine.ImportTableRows(nullptr, boost::make_shared<CDBTable>(), 0), 0);
    EXPECT_EQ(ProgressCalls(), Texts{});
    EXPECT_TRUE(CadShim::RecordedAlerts().empty());
}

TEST_F(ImportRun, FileThatDoesNotOpenIsNamedInAnAlert)
{
    const WString missing = dir.FilePath("missing.txt");
    auto job = refhost::testing::MakeImportDefinition(VeltoGis::EntityTypeLine, ConfigurationXml(missing, kLayout),
                                                      kBinds);
    ImpexEntityList lines;
    EXPECT_EQ(engine.ImportLines(&job, lines), 0);
    EXPECT_EQ(engine.UpdateLinkedTableRows(job.GetImporterConfiguration().c_str(), boost::make_shared<CDBTable>(),
                                           nullptr),
              0);
    const std::string alert = "Cannot open the file " + U8(missing) + ".";
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 2u);
    EXPECT_EQ(U8(CadShim::RecordedAlerts()[0]), alert);
    EXPECT_EQ(U8(CadShim::RecordedAlerts()[1]), alert);
    EXPECT_EQ(ProgressCalls(), Texts{});
}

TEST_F(ImportRun, EmptyCommentOnlyAndVanishingFilesGiveNothing)
{
    for (const char* bytes : {"", "\xEF\xBB\xBF", "#a\n#b\n"}) {
        auto job = Job(VeltoGis::EntityTypePoint, bytes, kLayout, kBinds);
        EXPECT_EQ(Points(job), Texts{});
    }
    auto job = Job(VeltoGis::EntityTypePoint, "P1 1 2\nP2 3 4\n", kLayout, kBinds);
    refhost::StartProgressRecording();
    Platform::Faults::FailOpens(1, 1); // the counting pass opens the file, the reopening fails
    EXPECT_EQ(Points(job), Texts{});
    EXPECT_EQ(ProgressCalls(), (Texts{"show:" + U8(Msg(7875)) + ":0:2", "pos:1", "hide", "restore"}));
}

TEST_F(ImportRun, EncodingIsFoundFromTheByteOrderMark)
{
    const std::string utf16le("\xFF\xFE" "A\0 \0" "1\0 \0" "2\0\n\0" "\xE4\0 \0" "3\0 \0" "4\0", 24);
    for (const std::string& bytes : {std::string("\xEF\xBB\xBF" "A 1 2\n\xC3\xA4 3 4"), utf16le}) {
        auto job = Job(VeltoGis::EntityTypePoint, bytes, kLayout, kBinds);
        EXPECT_EQ(Points(job), (Texts{"A @1,2 [t:A r:1 r:2]", "ä @3,4 [t:ä r:3 r:4]"}));
    }
}
