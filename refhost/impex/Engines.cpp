#include "host/ImpexEngines.h"
#include "refhost/HostSide.h"

namespace VeltoGis {
namespace ImportExport {
namespace {

const WChar* OrEmpty(const WChar* text) { return text ? text : WTEXT(""); }

// What the framework offers in its file dialogs for an engine without a filter of its own.
const WChar* const kAllFilesFilter = WTEXT("All files (*.*)|*.*||");

} // namespace

IImportEngine::IImportEngine(const WChar* id, const WChar* name, const WChar* description, int value1,
                             unsigned int mask, int value2, const WChar* text)
    : id_(OrEmpty(id)), name_(OrEmpty(name)), description_(OrEmpty(description)), value1_(value1), mask_(mask),
      value2_(value2), text_(OrEmpty(text))
{
}

IImportEngine::~IImportEngine() = default;

// Path editing is the job's decision; without a job there is nothing to edit.
int IImportEngine::AllowPrimaryFilePathEdit(CImportDefinition* definition)
{
    return definition ? refhost::AllowsPrimaryFilePathEdit(*definition) : 0;
}

int IImportEngine::AllowSecondaryFilePathEdit(CImportDefinition* definition)
{
    return definition ? refhost::AllowsSecondaryFilePathEdit(*definition) : 0;
}

WString IImportEngine::GetFileFilter() { return kAllFilesFilter; }

IExportEngine::IExportEngine(const WChar* id, const WChar* name, const WChar* description, unsigned int mask,
                             int value1, int value2, const WChar* text)
    : id_(OrEmpty(id)), name_(OrEmpty(name)), description_(OrEmpty(description)), mask_(mask), value1_(value1),
      value2_(value2), text_(OrEmpty(text))
{
}

IExportEngine::~IExportEngine() = default;

int IExportEngine::AllowPrimaryFilePathEdit(CExportDefinition* definition)
{
    return definition ? refhost::AllowsPrimaryFilePathEdit(*definition) : 0;
}

int IExportEngine::AllowSecondaryFilePathEdit(CExportDefinition* definition)
{
    return definition ? refhost::AllowsSecondaryFilePathEdit(*definition) : 0;
}

WString IExportEngine::GetFileFilter() { return kAllFilesFilter; }

IImpexPluginInfo::~IImpexPluginInfo() = default;

} // namespace ImportExport
} // namespace VeltoGis
