#pragma once
// The host's texts that the module shows, named once by the numbers the host keeps them
// under, and the one way to fetch one.

#include "host/Text.h"

enum class MessageId : unsigned {
    ImportDescriptionLabel = 250,    // before the file path in an import job's description
    ExportDelimiterLabel = 3207,     // the delimiter's label in an export job's description
    ExportProgress = 4048,           // the progress bar while an export writes
    ExportFileLabel = 4563,          // the file's label in an export job's description
    ExportEngineText = 7866,         // the export engine's name and description alike
    ImportEngineName = 7873,
    ImportEngineDescription = 7874,
    ImportProgress = 7875,           // the progress bar while entity builders read
    FileExistsQuestion = 7876,       // "%s" exists: overwrite, append or cancel
    CoordinatesNotBound = 8481,
    EntityNameNotBound = 8482,
    NodeNamesNotBound = 9001,
    FileDoesNotOpen = 60043,         // "%s" cannot be opened
    // Deliberately the same text: the data-table builders show it on their progress bar.
    TableRowProgress = 60043,
};

// The host's text for the message; "" when the host does not know the number.
WString LoadMessage(MessageId id);
