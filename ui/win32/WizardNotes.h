#pragma once
// The import wizard's texts that are not control captions, from the host's message table.

#include "host/Text.h"
#include "ui/ImportPreview.h"

// Why a field is tinted: one line per ImportValueChange bit set; "" for none.
WString StoredChangeNote(unsigned changes);
// The line under the preview when the lines have more columns than it lists.
WString ShownColumnsText(int columnsFound, int columnsShown);
// The encoding the reader found ("" for none: an empty file).
WString EncodingText(const PreviewEncoding& found);
