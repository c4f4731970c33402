#pragma once
// Shared by the export engine's tests: a dialog factory that answers as told, export jobs in
// one call, and the entities of each writer built from one table of values.

#include "export/CXMLTextFileExportConfiguration.h"
#include "export/ExportEngine_Txt.h"
#include "host/GisSystem.h"
#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"
#include "refhost/testing/JobBuilders.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/DialogFactory.h"

#include <boost/make_shared.hpp>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace exporttest {

using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;
using refhost::testing::W;

// Answers the dialogs as the test says and remembers what it was asked; installed for its
// lifetime.
class ScriptedDialogs final : public DialogFactory {
public:
    ScriptedDialogs() : previous_(InstallDialogFactory(this)) {}
    ~ScriptedDialogs() override { InstallDialogFactory(previous_); }

    int RunImportConfiguration(CImportDefinition*, int, const WChar*) override { return ModalResultCancel; }
    int RunExportConfiguration(CExportDefinition* definition, int secondary) override
    {
        configured.push_back({definition, secondary});
        documentCallsBefore.push_back(CadShim::DocumentManagerCalls().size());
        return configureResult;
    }
    int RunFileChoice(const WChar* path) override
    {
        askedPaths.push_back(path);
        documentCallsBefore.push_back(CadShim::DocumentManagerCalls().size());
        return fileChoice;
    }

    int fileChoice = FileChoiceOverwrite;
    int configureResult = ModalResultOk;
    std::vector<WString> askedPaths;
    std::vector<std::pair<CExportDefinition*, int>> configured;
    // How many document-manager calls were recorded when each dialog ran.
    std::vector<std::size_t> documentCallsBefore;

private:
    DialogFactory* previous_;
};

struct Settings {
    std::string comment = "#";
    std::string delimiter = "\t";
    int header = 1;
    int format = 0;
};

inline WString ConfigurationFor(const WString& path, const Settings& settings = {})
{
    CXMLTextFileExportConfiguration configuration;
    configuration.SetTxtFile(path);
    configuration.SetComment(W(settings.comment));
    configuration.SetDelimiter(W(settings.delimiter));
    configuration.SetHeader(settings.header);
    configuration.SetFormat(settings.format);
    return configuration.ToXml();
}

// A cell of the value table: text, integer, or none (a null value).
struct Cell {
    Cell() = default;
    Cell(const char* text) : text(text) {}
    Cell(int number) : integer(number) {}
    std::optional<std::string> text;
    std::optional<int> integer;

    bool IsNull() const { return !text && !integer; }
    CDataBox Box() const
    {
        CDataBox box;
        if (text)
            box.SetValue(W(*text).c_str());
        else if (integer)
            box.SetValue(*integer);
        return box;
    }
};
using Row = std::vector<Cell>;

// The three writers, driven alike: each row becomes one entity of the writer's own kind,
// carrying its cells in the way that writer reads them.
struct Writer {
    const char* name;
    VeltoGis::enmEntityType entityType;
    // Exports the rows; the bind at column i reads the source field "s<i>".
    std::function<int(CExportEngine_Txt&, CExportDefinition*, const std::vector<Row>&)> run;
};
inline void PrintTo(const Writer& writer, std::ostream* os) { *os << writer.name; }

inline ImpexEntityList EntityList(const std::vector<Row>& rows, bool polygons)
{
    ImpexEntityList entities;
    for (const Row& row : rows) {
        boost::shared_ptr<CImpexEntity> entity = polygons ? boost::shared_ptr<CImpexEntity>(new CImpexPolygon())
                                                          : boost::shared_ptr<CImpexEntity>(new CImpexPoint());
        for (const Cell& cell : row)
            entity->AddData(boost::make_shared<CDataBox>(cell.Box()));
        entities.push_back(entity);
    }
    return entities;
}

// Drawing entities whose fields "s<i>" hold the row's non-null cells.
inline boost::shared_ptr<VeltoGis::Topology::CEntityContainer> DrawingEntities(const std::vector<Row>& rows)
{
    auto container = boost::make_shared<VeltoGis::Topology::CEntityContainer>();
    for (const Row& row : rows) {
        auto entity = boost::make_shared<VeltoGis::Topology::CEntity>();
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (!row[column].IsNull())
                refhost::SetEntityField(*entity, W("s" + std::to_string(column)), row[column].Box());
        }
        container->GetEntities().push_back(entity);
    }
    return container;
}

inline std::vector<Writer> AllWriters()
{
    return {
        {"ExportPoints", VeltoGis::EntityTypePoint,
         [](CExportEngine_Txt& engine, CExportDefinition* definition, const std::vector<Row>& rows) {
             ImpexEntityList entities = EntityList(rows, false);
             return engine.ExportPoints(definition, entities);
         }},
        {"ExportLines", VeltoGis::EntityTypeLine,
         [](CExportEngine_Txt& engine, CExportDefinition* definition, const std::vector<Row>& rows) {
             return engine.ExportLines(definition, DrawingEntities(rows));
         }},
        {"ExportPolygons", VeltoGis::EntityTypePolygon,
         [](CExportEngine_Txt& engine, CExportDefinition* definition, const std::vector<Row>& rows) {
             ImpexEntityList entities = EntityList(rows, true);
             return engine.ExportPolygons(definition, entities);
         }},
    };
}

// Binds "s0" -> targets[0], "s1" -> targets[1], ...
inline std::vector<refhost::testing::BindPair> BindsTo(const std::vector<std::string>& targets)
{
    std::vector<refhost::testing::BindPair> pairs;
    for (std::size_t column = 0; column < targets.size(); ++column)
        pairs.emplace_back("s" + std::to_string(column), targets[column]);
    return pairs;
}

} // namespace exporttest
