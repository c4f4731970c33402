#include "export/EntityExport.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "export/DelimitedLineWriter.h"
#include "export/ExportSides.h"
#include "export/ExportTargetFile.h"
#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "host/Messages.h"
#include "platform/FileReplacement.h"
#include "platform/Sse2.h"
#include "textfile/TextFile.h"
#include "ui/DialogFactory.h"
#include "ui/ModalDialogScope.h"

#include <algorithm>
#include <climits>

using VeltoGis::enmEntityType;
using VeltoGis::ImportExport::CDataBindCollection;
using VeltoGis::ImportExport::CExportDefinition;
using VeltoGis::Utility::CCoreProgressBar;
using VeltoGis::Utility::CUtility;

namespace {

// What the definition says for one writer: the main configuration and binds when the job's
// entity type is the writer's own, the node ones otherwise.
struct ExportJob {
    CXMLTextFileExportConfiguration configuration;
    ExportBindList binds;
};

ExportJob ReadJob(const CExportDefinition& definition, enmEntityType mainEntityType)
{
    const bool main = ReadsMainSide(definition.GetEntityType(), mainEntityType);
    ExportJob job;
    job.configuration.FromXml(main ? definition.GetExporterConfiguration()
                                   : definition.GetExporterConfigurationNode());
    const boost::shared_ptr<CDataBindCollection> collection =
        main ? definition.GetDBCollection() : definition.GetDBCollectionNode();
    if (collection)
        job.binds = collection->GetDataBindCollection();
    return job;
}

// Overwrite for a new file; for an existing one, whatever the user chooses.
int ChooseFileUse(const WString& path)
{
    if (!CUtility::FileExists(path.c_str(), 0))
        return FileChoiceOverwrite;
    ModalDialogScope modal;
    return Dialogs().RunFileChoice(path.c_str());
}

// The host's progress bar for the length of a run, its earlier state given back on every
// way out.
class ExportProgress {
public:
    explicit ExportProgress(std::size_t entityCount) : bar_(*CCoreProgressBar::Instance())
    {
        bar_.SaveState();
        const WString caption = LoadMessage(MessageId::ExportProgress);
        bar_.Show(caption.c_str(), 0, ClampToInt(entityCount));
    }
    ~ExportProgress()
    {
        // RestoreState before Hide, the order the host expects of an export (an import's is the reverse).
        bar_.RestoreState();
        bar_.Hide();
    }
    ExportProgress(const ExportProgress&) = delete;
    ExportProgress& operator=(const ExportProgress&) = delete;

    void At(std::size_t entity) { bar_.SetPosition(ClampToInt(entity)); }

private:
    static int ClampToInt(std::size_t value) { return value > INT_MAX ? INT_MAX : static_cast<int>(value); }

    CCoreProgressBar& bar_;
};

// The export could not write the file; the user's file is as it was.
void ReportNotWritten(const WString& path, int error)
{
    acedAlert(FormatWide(LoadMessage(MessageId::FileNotWritten), {path, Platform::ErrorDescription(error)}).c_str());
}

} // namespace

ExportValueSource::~ExportValueSource() = default;

void ImpexEntityValues::FetchAhead(std::size_t entity) const
{
    // Steps ahead per link: far enough for a fetch from memory to arrive, near enough that
    // what was fetched is still in the cache.
    constexpr std::size_t kEntityAhead = 8, kListAhead = 4, kValuesAhead = 2;
    const std::size_t count = entities_.size();
    if (entity + kEntityAhead < count)
        PrefetchForReading(entities_[entity + kEntityAhead].get());
    if (entity + kListAhead < count) {
        if (auto* item = entities_[entity + kListAhead].get())
            PrefetchForReading(item->GetData()->data());
    }
    if (entity + kValuesAhead < count) {
        if (auto* item = entities_[entity + kValuesAhead].get()) {
            for (const auto& value : *item->GetData())
                PrefetchForReading(value.get());
        }
    }
}

bool EveryBindHasSource(const ExportBindList& binds)
{
    return std::all_of(binds.begin(), binds.end(), [](const boost::shared_ptr<VeltoGis::ImportExport::CDataBind>& bind) {
        return bind && bind->GetSourceDataDefinition();
    });
}

int RunEntityExport(CExportDefinition* definition, enmEntityType mainEntityType, ExportValueSource& source)
{
    if (!definition)
        return 0;
    const ExportJob job = ReadJob(*definition, mainEntityType);
    const WString path = job.configuration.GetTxtFile();
    if (path.empty())
        return 0;
    const int choice = ChooseFileUse(path);
    if (choice == FileChoiceCancel)
        return 0;

    const std::size_t entityCount = source.EntityCount();
    ExportProgress progress(entityCount);
    // Checked before opening: a job that cannot be written leaves an existing file as it was.
    if (entityCount > 0 && !source.CanServe(job.binds))
        return 0;
    if (choice != FileChoiceOverwrite && choice != FileChoiceAppend)
        return 0;

    ExportTargetFile target(path, choice);
    TextFile file; // closed before target undoes anything, on every way out
    const int encoding = job.configuration.GetFormat() == 0 ? TextEncoding::Ansi : TextEncoding::Utf16LE;
    if (!target.Open(file, encoding)) {
        if (target.WhyFailed() != 0)
            ReportNotWritten(path, target.WhyFailed());
        return 0;
    }
    DelimitedLineWriter writer(file, job.configuration.GetDelimiter());
    // A write that fails ends the export: the disk takes nothing more, and the file goes back.
    bool written = job.configuration.GetHeader() == 0 ||
                   writer.WriteHeader(job.configuration.GetComment(), job.binds);
    for (std::size_t entity = 0; written && entity < entityCount; ++entity) {
        progress.At(entity);
        written = writer.WriteEntity(source, entity, job.binds);
    }
    const int closed = file.Close();
    if (!target.Commit(written ? closed : TextFileResult::IoError)) {
        ReportNotWritten(path, target.WhyFailed());
        return 0;
    }
    return 1;
}
