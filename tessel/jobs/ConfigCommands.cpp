// "config", "describe" and "configure": configuration strings and what the engines make of
// them, with the engines doing all reading and writing of the configuration form.

#include "host/Utf8.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ConfigDraft.h"
#include "tessel/jobs/EnginePaths.h"
#include "tessel/jobs/OutputFile.h"
#include "tessel/jobs/Warnings.h"

#include <iostream>

namespace tessel {
namespace {

using namespace VeltoGis::ImportExport;

const char* TypeName(int type)
{
    switch (type) {
    case VeltoGis::Data::DataTypeReal: return "real";
    case VeltoGis::Data::DataTypeText: return "text";
    case VeltoGis::Data::DataTypeInteger: return "integer";
    default: return "untyped";
    }
}

// Import or export: by the options, else by the attributes only one of the forms has.
bool IsExportConfiguration(const DescribeRequest& request, const WString& text)
{
    if (request.forceImport || request.forceExport)
        return request.forceExport;
    const bool import = text.find(WTEXT("colPositions=")) != WString::npos ||
                        text.find(WTEXT("comments=")) != WString::npos || text.find(WTEXT("<col ")) != WString::npos;
    const bool exportForm =
        text.find(WTEXT("header=")) != WString::npos || text.find(WTEXT("format=")) != WString::npos;
    if (import == exportForm)
        throw UsageError("cannot tell whether '" + request.configFile +
                         "' holds an import or an export configuration (say --import or --export)");
    return exportForm;
}

int PrintImportConfiguration(IImportEngine& engine, const ConfigRequest& request, std::ostream& out)
{
    const ImportConfigChoice& choice = request.importConfig;
    const WString text = choice.IsComposed() ? ImportConfigDraft(choice, ModuleCodePage())
                                           : ReadConfigurationFile("--config", *choice.configFile);
    CImportDefinition definition;
    definition.SetImporterConfiguration(text.c_str());
    WString description;
    CallEngine([&] { return engine.GetDescription(description, &definition, 0), 0; });
    if (description.empty())
        WarnOrRefuse(choice.strict, "--config: '" + choice.configFile.value_or("") +
                                        "' holds no import configuration (no cfg element); the engine reads it as the "
                                        "default one");
    SetPathThroughEngine(engine, definition, false, request.file.value_or(""));
    out << ToUtf8(definition.GetImporterConfiguration()) << "\n";
    return ExitSuccess;
}

int PrintExportConfiguration(IExportEngine& engine, const ConfigRequest& request, std::ostream& out)
{
    const ExportConfigChoice& choice = request.exportConfigChoice;
    const WString text = choice.IsComposed() ? ExportConfigDraft(choice, ModuleCodePage())
                                           : ReadConfigurationFile("--config", *choice.configFile);
    CExportDefinition definition;
    definition.SetExporterConfiguration(text.c_str());
    SetPathThroughEngine(engine, definition, false, request.file.value_or(""));
    out << ToUtf8(definition.GetExporterConfiguration()) << "\n";
    return ExitSuccess;
}

void PrintDescription(std::ostream& out, const WString& engine, const WString& description, const WString& path)
{
    out << "engine: " << ToUtf8(engine) << "\n";
    out << "description: " << ToUtf8(description) << "\n";
    out << "file: " << ToUtf8(path) << "\n";
}

void DescribeImport(IImportEngine& engine, const WString& text, const DescribeRequest& request, std::ostream& out)
{
    const int node = request.node ? 1 : 0;
    CImportDefinition definition;
    if (node)
        definition.SetImporterConfigurationNode(text.c_str());
    else
        definition.SetImporterConfiguration(text.c_str());
    WString description;
    CallEngine([&] { return engine.GetDescription(description, &definition, node), 0; });
    if (description.empty())
        throw UsageError("'" + request.configFile + "' holds no import configuration");
    const WString path = CallEngine(
        [&] { return node ? engine.GetSecondaryFilePath(&definition) : engine.GetPrimaryFilePath(&definition); });
    DataDefinitionList fields;
    CallEngine([&] { return engine.GetSourceDataDefinitions(&definition, fields, node), 0; });

    PrintDescription(out, refhost::EngineIdOf(engine), description, path);
    out << "source fields:";
    for (const auto& field : fields)
        out << " " << ToUtf8(field->GetDataID()) << " (" << TypeName(field->GetDataType()) << ")";
    out << (fields.empty() ? " none\n" : "\n");
}

void DescribeExport(IExportEngine& engine, const WString& text, const DescribeRequest& request, std::ostream& out)
{
    const int node = request.node ? 1 : 0;
    CExportDefinition definition;
    if (node)
        definition.SetExporterConfigurationNode(text.c_str());
    else
        definition.SetExporterConfiguration(text.c_str());
    WString description;
    CallEngine([&] { return engine.GetDescription(description, &definition, node), 0; });
    const WString path = CallEngine(
        [&] { return node ? engine.GetSecondaryFilePath(&definition) : engine.GetPrimaryFilePath(&definition); });
    PrintDescription(out, refhost::EngineIdOf(engine), description, path);
}

} // namespace

int RunConfigCommand(ModuleHost& module, const ConfigRequest& request, std::ostream& out)
{
    return request.exportConfig ? PrintExportConfiguration(module.Exporter(), request, out)
                                : PrintImportConfiguration(module.Importer(), request, out);
}

int RunDescribeCommand(ModuleHost& module, const DescribeRequest& request, std::ostream& out)
{
    const WString text = ReadConfigurationFile("CFG", request.configFile);
    if (IsExportConfiguration(request, text))
        DescribeExport(module.Exporter(), text, request, out);
    else
        DescribeImport(module.Importer(), text, request, out);
    return ExitSuccess;
}

// The engines' configuration dialogs, reached as the framework reaches them: the module's
// own dialogs where a display is there, else the engine's fallback, which cancels.
int RunConfigureCommand(ModuleHost& module, const ConfigureRequest& request, std::ostream& out)
{
    const int node = request.node ? 1 : 0;
    const WString text = request.configFile ? ReadConfigurationFile("--config", *request.configFile) : WString();
    int result = 0;
    WString configuration;
    if (request.exportEngine) {
        CExportDefinition definition;
        node ? definition.SetExporterConfigurationNode(text.c_str())
             : definition.SetExporterConfiguration(text.c_str());
        result = CallEngine([&] { return module.Exporter().Configure(&definition, node); });
        configuration = node ? definition.GetExporterConfigurationNode() : definition.GetExporterConfiguration();
    } else {
        CImportDefinition definition;
        node ? definition.SetImporterConfigurationNode(text.c_str())
             : definition.SetImporterConfiguration(text.c_str());
        if (request.file) {
            const WString path = FromUtf8(*request.file);
            result = CallEngine(
                [&] { return module.Importer().ConfigureForFile(&definition, path.c_str(), configuration, node); });
        } else {
            result = CallEngine([&] { return module.Importer().Configure(&definition, node); });
            configuration = node ? definition.GetImporterConfigurationNode() : definition.GetImporterConfiguration();
        }
    }
    if (result != 1) {
        if (CadShim::RecordedDialogs().empty() && request.file && CadShim::StartDialogs())
            throw JobError("the import engine does not take " + *request.file +
                           " (not a file extension it reads); nothing was written");
        if (CadShim::RecordedDialogs().empty())
            throw JobError("no dialog can be shown here (no display, or --no-dialogs); "
                           "compose the configuration with 'tessel config'");
        std::cerr << "tessel configure: cancelled; nothing was written" << std::endl;
        return ExitJobFailed;
    }
    const std::string made = ToUtf8(configuration) + "\n";
    if (!request.output) {
        out << made;
        return ExitSuccess;
    }
    OutputFile file(*request.output);
    file.Open();
    file.Text() += made;
    file.Commit();
    return ExitSuccess;
}

} // namespace tessel
