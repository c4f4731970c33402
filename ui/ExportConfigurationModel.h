#pragma once
// What the export configuration dialog decides, apart from the toolkit: how a stored
// configuration opens, which controls are enabled, what the file chooser's answer becomes,
// and what OK stores and checks. The dialog's view only moves these fields to and from its
// controls.

#include "export/CXMLTextFileExportConfiguration.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "host/Text.h"

#include <optional>

class ExportConfigurationModel {
public:
    enum DelimiterKind { DelimiterSpace = 0, DelimiterTab = 1, DelimiterOther = 2 };

    // The definition is edited, not owned; node chooses its node configuration accessors.
    ExportConfigurationModel(VeltoGis::ImportExport::CExportDefinition& definition, bool node);

    // Reads the stored configuration into the fields. A string that does not parse leaves
    // the fields as constructed: empty, space, no header, the first format.
    void Open();

    // The edit of the other delimiter is enabled only for DelimiterOther.
    bool OtherDelimiterEnabled() const { return delimiterKind == DelimiterOther; }

    // Takes the path the save-file chooser returned: ".txt" is appended unless the path is
    // empty or already ends in it (in any case).
    void TakeChosenFile(const WString& chosen);

    // OK: composes the configuration from the fields and stores it in the definition, then
    // checks it. Stored before the checks on purpose: even a rejected configuration is kept.
    // Returns the message to show while the dialog stays open (no path, or "other" without
    // a delimiter), or nothing when the dialog may close.
    std::optional<MessageId> Confirm();

    // The fields of the dialog's controls.
    WString filePath;
    WString comment;
    DelimiterKind delimiterKind = DelimiterSpace;
    WString otherDelimiter;
    bool header = false;
    int formatChoice = 0; // 0: the first format radio (ANSI), 1: the second (UTF-16LE)

    // The save-file chooser's filter.
    static const WChar* const kFileFilter;

private:
    WString Stored() const;
    void Store(const WString& configuration);

    VeltoGis::ImportExport::CExportDefinition& definition_;
    bool node_;
    CXMLTextFileExportConfiguration configuration_;
};
