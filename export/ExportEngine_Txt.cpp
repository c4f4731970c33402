#include "export/ExportEngine_Txt.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "host/Messages.h"
#include "ui/DialogFactory.h"
#include "ui/ModalDialogScope.h"

using VeltoGis::ImportExport::CExportDefinition;

namespace {

constexpr unsigned kEngineMask = 0x1111;


CXMLTextFileExportConfiguration ReadConfiguration(const WString& text)
{
    CXMLTextFileExportConfiguration configuration;
    configuration.FromXml(text);
    return configuration;
}

// The configuration with its file replaced; an empty one becomes the defaults with the file.
WString WithFilePath(const WString& text, const WChar* path)
{
    CXMLTextFileExportConfiguration configuration = ReadConfiguration(text);
    configuration.SetTxtFile(path ? path : WTEXT(""));
    return configuration.ToXml();
}

WString MainConfiguration(const CExportDefinition& definition) { return definition.GetExporterConfiguration(); }
WString NodeConfiguration(const CExportDefinition& definition) { return definition.GetExporterConfigurationNode(); }

} // namespace

// The host shows the same text as the engine's name and as its description.
CExportEngine_Txt::CExportEngine_Txt()
    : IExportEngine(WTEXT("EXPORT_TXT"), LoadMessage(MessageId::ExportEngineText).c_str(), LoadMessage(MessageId::ExportEngineText).c_str(), kEngineMask, 0,
                    0, WTEXT(""))
{
}

CExportEngine_Txt::~CExportEngine_Txt() = default;

void CExportEngine_Txt::GetExportEntityName(WString& exportName, const WChar* name)
{
    exportName = name ? name : WTEXT("");
}

int CExportEngine_Txt::PrepareExport(CExportDefinition* definition)
{
    if (definition) {
        GetPrimaryFilePath(definition);
        GetSecondaryFilePath(definition);
    }
    return 1;
}

int CExportEngine_Txt::ExportCapability3() { return 1; }
int CExportEngine_Txt::ExportCapability7() { return 0; }
int CExportEngine_Txt::ExportCapability8() { return 1; }

void CExportEngine_Txt::GetDescription(WString& description, CExportDefinition* definition, int secondary)
{
    if (!definition) {
        description.clear();
        return;
    }
    const CXMLTextFileExportConfiguration configuration =
        ReadConfiguration(secondary ? NodeConfiguration(*definition) : MainConfiguration(*definition));
    description = DescribeExportConfiguration(configuration, LoadMessage(MessageId::ExportFileLabel), LoadMessage(MessageId::ExportDelimiterLabel));
}

int CExportEngine_Txt::ExportCapability10() { return 0; }
int CExportEngine_Txt::ExportCapability11() { return 0; }
int CExportEngine_Txt::ExportCapability12() { return 0; }
void CExportEngine_Txt::ExportNotify13() {}
void CExportEngine_Txt::ExportNotify14() {}

int CExportEngine_Txt::Configure(CExportDefinition* definition, int secondary)
{
    if (!definition)
        return 0;
    ModalDialogScope modal;
    return Dialogs().RunExportConfiguration(definition, secondary) == ModalResultOk ? 1 : 0;
}

int CExportEngine_Txt::ExportCapability16() { return 0; }
int CExportEngine_Txt::ExportCapability17() { return 1; }

WString CExportEngine_Txt::GetPrimaryFilePath(CExportDefinition* definition)
{
    return definition ? ReadConfiguration(MainConfiguration(*definition)).GetTxtFile() : WString();
}

WString CExportEngine_Txt::GetSecondaryFilePath(CExportDefinition* definition)
{
    return definition ? ReadConfiguration(NodeConfiguration(*definition)).GetTxtFile() : WString();
}

int CExportEngine_Txt::SetPrimaryFilePath(CExportDefinition* definition, const WChar* path)
{
    if (!definition || !AllowPrimaryFilePathEdit(definition))
        return 0;
    definition->SetExporterConfiguration(WithFilePath(MainConfiguration(*definition), path).c_str());
    return 1;
}

int CExportEngine_Txt::SetSecondaryFilePath(CExportDefinition* definition, const WChar* path)
{
    if (!definition || !AllowSecondaryFilePathEdit(definition))
        return 0;
    definition->SetExporterConfigurationNode(WithFilePath(NodeConfiguration(*definition), path).c_str());
    return 1;
}

WString CExportEngine_Txt::GetFileFilter() { return WTEXT("TXT (*.txt)|*.txt||"); }
