#pragma once
// The host's texts that the module shows, named once by the numbers the host keeps them
// under, and the one way to fetch one.

#include "host/Text.h"

enum class MessageId : unsigned {
    FileExistsTitle = 49,            // the title of the existing-file question
    OkCaption = 60,
    CancelCaption = 67,
    ImportDescriptionLabel = 250,    // before the file path in an import job's description
    FormatLabel = 264,
    ColumnNameHeading = 425,         // the import wizard's column list
    ColumnHeading = 464,
    ColumnImportHeading = 910,
    ColumnTypeHeading = 2620,
    ExportPathMissing = 276,         // OK of the export dialog without a file path
    DelimiterOther = 3204,
    DelimiterTab = 3205,
    DelimiterSpace = 3206,
    ExportDelimiterLabel = 3207,     // the delimiter's label in an export job's description
    ColumnLabelHeading = 3208,
    RemoveAllBreaksTip = 3229,       // the import wizard's button that clears the ruler
    ExportProgress = 4048,           // the progress bar while an export writes
    ExportFileLabel = 4563,          // the file's label in an export job's description
    ExportEngineText = 7866,         // the export engine's name and description alike
    ExportDialogTitle = 7867,
    ExportDialogFileLabel = 7868,
    ExportDialogCommentLabel = 7869,
    ExportDialogDelimiterLabel = 7870,
    ExportDialogHeaderCaption = 7871,
    ExportDelimiterMissing = 7872,   // OK of the export dialog with "other" and no delimiter
    ImportEngineName = 7873,
    ImportEngineDescription = 7874,
    ImportProgress = 7875,           // the progress bar while entity builders read
    FileExistsQuestion = 7876,       // "%s" exists: overwrite, append or cancel
    OverwriteCaption = 7877,
    AppendCaption = 7878,
    CoordinatesNotBound = 8481,
    EntityNameNotBound = 8482,
    NodeNamesNotBound = 9001,
    FileDoesNotOpen = 60043,         // "%s" cannot be opened
    // Deliberately the same text: the data-table builders show it on their progress bar.
    TableRowProgress = 60043,
    EncodingLabel = 61050,
    FileNotWritten = 61051,          // "%s" cannot be written, for the system's reason %s; nothing changed
    ShownColumnsNote = 61052,        // the import wizard's note: the lines have %d columns, only %d are listed
    OutsideCodePageNote = 61053,     // a field's tooltip: a character is stored as the code page's default
    SignReadAsQuoteNote = 61054,     // a field's tooltip: a "×" comes back as a double quote
    QuoteReadAsSignNote = 61055,     // a field's tooltip: a double quote comes back as "×"
    EncodingAnsi = 61056,            // the encoding the import wizard found: ANSI in code page %d
    EncodingUtf8 = 61057,
    EncodingUtf16LE = 61058,
    EncodingUtf16BE = 61059,
    // Why a survey preset does not fit a file's first lines, and what told northing from easting.
    PresetColumnCount = 61100,       // line %d has %d columns, %s (the preset) needs %d
    PresetNotANumber = 61101,        // column %d %s (the field, quoted) on line %d is not a number
    PresetNoLines = 61102,
    PresetNamesCount = 61103,        // the names line has %d names, %s needs %d
    PresetAxesOpenInArea = 61104,
    PresetAxesOpen = 61105,
    PresetAxesByNames = 61106,
    PresetAxesByArea = 61107,        // only in the order of %s (the preset)
    // The import wizard's presets.
    PresetWithDelimiter = 61110,     // %s (the preset) (%s, the delimiter)
    PresetWithNamesLine = 61111,     // the same, the first line holding the column names
    PresetsFitting = 61112,          // Detect: %s (the fitting ones, best first) fit every line
    PresetNotFitting = 61113,        // Detect: %s (a preset with its delimiter) does not fit: %s
    PresetsNoneFit = 61114,
    PresetSaved = 61115,             // saved as %s (the file)
    PresetNotSaved = 61116,          // %s (the name) cannot be saved
    PresetColumnsDiffer = 61117,     // the lines have %d columns, %s has %d
    TypeDisagrees = 61118,           // %s (column): line %d holds %s, which is not %s (the type)
    PresetDelimitersUnused = 61119,  // not tried further with %s (delimiters): line %d has none of them
    // A file of the user's presets that is left out.
    PresetFileUnreadable = 61120,    // %s (the file)
    PresetFileNotConfiguration = 61121,
    PresetFileFixedWidth = 61122,
};

// The host's text for the message; "" when the host does not know the number.
WString LoadMessage(MessageId id);
