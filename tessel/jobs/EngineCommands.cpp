// "engines" and "targets": what the registered engines say of themselves and of a job.

#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ImportJob.h"

namespace tessel {
namespace {

using namespace VeltoGis::ImportExport;

template <typename Engine>
void PrintEngineHeader(Engine& engine, const char* role, std::ostream& out)
{
    out << ToUtf8(refhost::EngineIdOf(engine)) << " (" << role << ")\n";
    out << "  name: " << ToUtf8(refhost::EngineNameOf(engine)) << "\n";
    out << "  description: " << ToUtf8(refhost::EngineDescriptionOf(engine)) << "\n";
    out << "  file filter: " << ToUtf8(CallEngine([&] { return engine.GetFileFilter(); })) << "\n";
    out << "  mask: 0x" << std::hex << refhost::EngineMaskOf(engine) << std::dec << "\n";
}

void PrintImporter(IImportEngine& engine, bool verbose, std::ostream& out)
{
    PrintEngineHeader(engine, "import", out);
    if (!verbose)
        return;
    out << "  capabilities: 2=" << CallEngine([&] { return engine.ImportCapability2(); })
        << " 15=" << CallEngine([&] { return engine.ImportCapability15(); })
        << " 17=" << CallEngine([&] { return engine.ImportCapability17(); })
        << " 20=" << CallEngine([&] { return engine.ImportCapability20(); }) << "\n";
    out << "  import extension: " << (CallEngine([&] { return engine.GetImportExtension(); }) ? "yes" : "none") << "\n";
}

void PrintExporter(IExportEngine& engine, bool verbose, std::ostream& out)
{
    PrintEngineHeader(engine, "export", out);
    if (!verbose)
        return;
    out << "  capabilities: 3=" << CallEngine([&] { return engine.ExportCapability3(); })
        << " 7=" << CallEngine([&] { return engine.ExportCapability7(); })
        << " 8=" << CallEngine([&] { return engine.ExportCapability8(); })
        << " 10=" << CallEngine([&] { return engine.ExportCapability10(); })
        << " 11=" << CallEngine([&] { return engine.ExportCapability11(); })
        << " 12=" << CallEngine([&] { return engine.ExportCapability12(); })
        << " 16=" << CallEngine([&] { return engine.ExportCapability16(); })
        << " 17=" << CallEngine([&] { return engine.ExportCapability17(); }) << "\n";
}

void PrintIds(const char* label, const TargetIdList& ids, std::ostream& out)
{
    out << label << ":";
    for (const WString& id : ids)
        out << " " << ToUtf8(id);
    out << (ids.empty() ? " none\n" : "\n");
}

} // namespace

int RunEnginesCommand(ModuleHost&, const EnginesRequest& request, std::ostream& out)
{
    for (const auto& engine : refhost::Importers())
        PrintImporter(*engine, request.verbose, out);
    for (const auto& engine : refhost::Exporters())
        PrintExporter(*engine, request.verbose, out);
    return ExitSuccess;
}

int RunTargetsCommand(ModuleHost& module, const TargetsRequest& request, std::ostream& out)
{
    CImportDefinition definition;
    refhost::SetEntityType(
        definition, static_cast<VeltoGis::enmEntityType>(request.entityType.value_or(DefaultEntityType(request.kind))));
    refhost::SetImportDataOnly(definition, request.dataOnly ? 1 : 0);
    TargetIdList required, excluded;
    CallEngine([&] { return module.Importer().GetRequiredTargetIds(&definition, required), 0; });
    CallEngine([&] { return module.Importer().GetExcludedTargetIds(&definition, excluded), 0; });
    PrintIds("required", required, out);
    PrintIds("excluded", excluded, out);
    return ExitSuccess;
}

} // namespace tessel
