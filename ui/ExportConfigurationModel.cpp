#include "ui/ExportConfigurationModel.h"

#include "xml/XmlDocument.h"

using VeltoGis::ImportExport::CExportDefinition;

namespace {

const WString kSpace = WTEXT(" ");
const WString kTab = WTEXT("\t");

bool EndsWithTxt(const WString& path)
{
    if (path.size() < 4)
        return false;
    const WChar* const expected = WTEXT(".txt");
    for (std::size_t i = 0; i < 4; ++i) {
        WChar c = path[path.size() - 4 + i];
        if (c >= 'A' && c <= 'Z')
            c = static_cast<WChar>(c - 'A' + 'a');
        if (c != expected[i])
            return false;
    }
    return true;
}

} // namespace

const WChar* const ExportConfigurationModel::kFileFilter = WTEXT("Txt files (*.txt)|*.txt|All Files (*.*)|*.*||");

ExportConfigurationModel::ExportConfigurationModel(CExportDefinition& definition, bool node)
    : definition_(definition), node_(node)
{
}

WString ExportConfigurationModel::Stored() const
{
    return node_ ? definition_.GetExporterConfigurationNode() : definition_.GetExporterConfiguration();
}

void ExportConfigurationModel::Store(const WString& configuration)
{
    if (node_)
        definition_.SetExporterConfigurationNode(configuration.c_str());
    else
        definition_.SetExporterConfiguration(configuration.c_str());
}

void ExportConfigurationModel::Open()
{
    const WString stored = Stored();
    XmlDocument document;
    document.SetText(stored);
    if (!document.FindElement(WTEXT("cfg")))
        return;
    configuration_.FromXml(stored);
    filePath = configuration_.GetTxtFile();
    comment = configuration_.GetComment();
    // Only 1 chooses the second radio; any other stored value opens as the first.
    formatChoice = configuration_.GetFormat() == 1 ? 1 : 0;
    header = configuration_.GetHeader() != 0;
    const WString& delimiter = configuration_.GetDelimiter();
    if (delimiter == kSpace) {
        delimiterKind = DelimiterSpace;
    } else if (delimiter == kTab) {
        delimiterKind = DelimiterTab;
    } else {
        delimiterKind = DelimiterOther;
        otherDelimiter = delimiter;
    }
}

void ExportConfigurationModel::TakeChosenFile(const WString& chosen)
{
    filePath = chosen;
    if (!filePath.empty() && !EndsWithTxt(filePath))
        filePath += WTEXT(".txt");
}

std::optional<MessageId> ExportConfigurationModel::Confirm()
{
    const WString delimiter = delimiterKind == DelimiterSpace ? kSpace
                              : delimiterKind == DelimiterTab ? kTab
                                                              : otherDelimiter;
    configuration_.SetTxtFile(filePath);
    configuration_.SetComment(comment);
    configuration_.SetDelimiter(delimiter);
    configuration_.SetFormat(formatChoice == 1 ? 1 : 0);
    configuration_.SetHeader(header ? 1 : 0);
    Store(configuration_.ToXml());
    if (filePath.empty())
        return MessageId::ExportPathMissing;
    if (delimiter.empty())
        return MessageId::ExportDelimiterMissing;
    return std::nullopt;
}
