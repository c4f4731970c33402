#include "import/ImportEngine_Txt.h"

#include "host/Messages.h"
#include "import/ImportBuilders.h"
#include "import/ImportTargets.h"
#include "import/ImportTxtConfiguration.h"
#include "host/WideText.h"
#include "ui/DialogFactory.h"
#include "ui/ModalDialogScope.h"

#include <boost/make_shared.hpp>

using namespace VeltoGis::ImportExport;

namespace {

constexpr unsigned EngineMask = 4915;

WString ChosenConfiguration(const CImportDefinition& definition, int secondary)
{
    return secondary ? definition.GetImporterConfigurationNode() : definition.GetImporterConfiguration();
}

WString TextOrEmpty(const WChar* text)
{
    return text ? WString(text) : WString();
}

bool EqualsIgnoringAsciiCase(const WString& text, const char* ascii)
{
    std::size_t i = 0;
    for (; ascii[i] != '\0'; ++i) {
        if (i == text.size())
            return false;
        WChar unit = text[i];
        if (unit >= 'A' && unit <= 'Z')
            unit = static_cast<WChar>(unit - 'A' + 'a');
        if (unit != static_cast<WChar>(ascii[i]))
            return false;
    }
    return i == text.size();
}

// The text after the last dot anywhere in the path (a dot in a folder name counts too);
// a path without a dot has no extension and is refused.
bool HasAcceptedExtension(const WString& path)
{
    static const char* const accepted[] = {"txt", "toc", "pt",  "uzd", "xyz", "kol", "niv",
                                           "kr",  "okn", "pad", "sys", "ter", "vnv"};
    const std::size_t dot = path.rfind(WChar('.'));
    if (dot == WString::npos)
        return false;
    const WString extension = path.substr(dot + 1);
    for (const char* candidate : accepted) {
        if (EqualsIgnoringAsciiCase(extension, candidate))
            return true;
    }
    return false;
}

int RunConfigurationDialog(CImportDefinition* definition, int secondary, const WChar* path)
{
    ModalDialogScope documentLock;
    return Dialogs().RunImportConfiguration(definition, secondary, path);
}

WString ConfiguredFilePath(const CImportDefinition* definition, int secondary)
{
    if (!definition)
        return WString();
    ImportTxtConfiguration configuration;
    if (!configuration.Parse(ChosenConfiguration(*definition, secondary).c_str()))
        return WString();
    return configuration.GetTxtFile();
}

// A configuration that does not parse is written from the defaults with only the path set.
void StoreFilePath(CImportDefinition& definition, int secondary, const WChar* path)
{
    ImportTxtConfiguration configuration;
    configuration.Parse(ChosenConfiguration(definition, secondary).c_str());
    configuration.SetTxtFile(TextOrEmpty(path));
    const WString xml = configuration.ToXml();
    if (secondary)
        definition.SetImporterConfigurationNode(xml.c_str());
    else
        definition.SetImporterConfiguration(xml.c_str());
}

} // namespace

CImportEngine_Txt::CImportEngine_Txt()
    : IImportEngine(WTEXT("IMPORT_TXT"), LoadMessage(MessageId::ImportEngineName).c_str(), LoadMessage(MessageId::ImportEngineDescription).c_str(), 0, EngineMask,
                    0, WTEXT(""))
{
}

CImportEngine_Txt::~CImportEngine_Txt() = default;

int CImportEngine_Txt::PrepareImport(CImportDefinition* definition)
{
    if (definition)
        CImpexManager::Instance()->CreateUserData(definition);
    return 1;
}

int CImportEngine_Txt::ImportCapability2() { return 1; }

int CImportEngine_Txt::ImportPoints(CImportDefinition* definition, ImpexEntityList& entities, int secondary,
                                    CLq* filter)
{
    return definition ? ImportBuilders::ImportPoints(*definition, entities, secondary, filter) : 0;
}

int CImportEngine_Txt::ImportLines(CImportDefinition* definition, ImpexEntityList& entities)
{
    return definition ? ImportBuilders::ImportLines(*definition, entities) : 0;
}

int CImportEngine_Txt::ImportPolygons(CImportDefinition* definition, ImpexEntityList& entities)
{
    return definition ? ImportBuilders::ImportPolygons(*definition, entities) : 0;
}

int CImportEngine_Txt::UpdateLinkedTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table,
                                             const CDataBox* keyValue)
{
    return table ? ImportBuilders::UpdateLinkedTableRows(TextOrEmpty(configuration), *table, keyValue) : 0;
}

int CImportEngine_Txt::ImportLinkedTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table,
                                             const KeySet& keys)
{
    return table ? ImportBuilders::ImportLinkedTableRows(TextOrEmpty(configuration), *table, keys) : 0;
}

int CImportEngine_Txt::ImportTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table, int maxLines)
{
    return table ? ImportBuilders::ImportTableRows(TextOrEmpty(configuration), *table, maxLines) : 0;
}

int CImportEngine_Txt::ImportCloud(CImportDefinition* definition, boost::shared_ptr<CCloud> cloud)
{
    return definition && cloud ? ImportBuilders::ImportCloud(*definition, *cloud) : 0;
}

boost::shared_ptr<CImportExtension> CImportEngine_Txt::GetImportExtension()
{
    return boost::shared_ptr<CImportExtension>();
}

// One source field per enabled column, in configuration order; a column's id is its name.
void CImportEngine_Txt::GetSourceDataDefinitions(CImportDefinition* definition, DataDefinitionList& definitions,
                                                 int secondary)
{
    if (!definition)
        return;
    ImportTxtConfiguration configuration;
    configuration.Parse(ChosenConfiguration(*definition, secondary).c_str());
    for (const auto& column : configuration.GetColumns()) {
        if (!column || column->GetOnOff() == 0)
            continue;
        auto field = boost::make_shared<CDataDefinition>();
        field->SetName(column->GetName().c_str());
        field->SetDataID(column->GetName().c_str());
        field->SetDataType(column->GetType());
        definitions.push_back(std::move(field));
    }
}

int CImportEngine_Txt::Configure(CImportDefinition* definition, int secondary)
{
    if (!definition)
        return 0;
    return RunConfigurationDialog(definition, secondary, nullptr) == ModalResultOk ? 1 : 0;
}

void CImportEngine_Txt::GetDescription(WString& description, CImportDefinition* definition, int secondary)
{
    description.clear();
    if (!definition)
        return;
    ImportTxtConfiguration configuration;
    if (configuration.Parse(ChosenConfiguration(*definition, secondary).c_str()))
        description = FormatWide(WTEXT("%s:%s"), {LoadMessage(MessageId::ImportDescriptionLabel), configuration.GetTxtFile()});
}

int CImportEngine_Txt::ValidateDefinition(CImportDefinition* definition, WString& message)
{
    return ValidateImportBinds(definition, message);
}

int CImportEngine_Txt::ImportCapability15() { return 0; }

int CImportEngine_Txt::ConfigureForFile(CImportDefinition* definition, const WChar* path, WString& configuration,
                                        int secondary)
{
    if (!definition || !HasAcceptedExtension(TextOrEmpty(path)))
        return 0;
    if (RunConfigurationDialog(definition, secondary, path) != ModalResultOk)
        return 0;
    configuration = ChosenConfiguration(*definition, secondary);
    return 1;
}

int CImportEngine_Txt::ImportCapability17() { return 0; }

void CImportEngine_Txt::GetRequiredTargetIds(CImportDefinition* definition, TargetIdList& ids)
{
    AppendRequiredTargetIds(definition, ids);
}

void CImportEngine_Txt::GetExcludedTargetIds(CImportDefinition* definition, TargetIdList& ids)
{
    AppendExcludedTargetIds(definition, ids);
}

int CImportEngine_Txt::ImportCapability20() { return 1; }

WString CImportEngine_Txt::GetPrimaryFilePath(CImportDefinition* definition)
{
    return ConfiguredFilePath(definition, 0);
}

WString CImportEngine_Txt::GetSecondaryFilePath(CImportDefinition* definition)
{
    return ConfiguredFilePath(definition, 1);
}

int CImportEngine_Txt::SetPrimaryFilePath(CImportDefinition* definition, const WChar* path)
{
    if (!definition || !AllowPrimaryFilePathEdit(definition))
        return 0;
    StoreFilePath(*definition, 0, path);
    return 1;
}

int CImportEngine_Txt::SetSecondaryFilePath(CImportDefinition* definition, const WChar* path)
{
    if (!definition || !AllowSecondaryFilePathEdit(definition))
        return 0;
    StoreFilePath(*definition, 1, path);
    return 1;
}
