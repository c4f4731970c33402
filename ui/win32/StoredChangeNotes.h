#pragma once
// The wizard's notes that are not control captions, from the host's message table.

#include "host/Text.h"

// Why a field is tinted: one line per ImportValueChange bit set; "" for none.
WString StoredChangeNote(unsigned changes);
// The line under the preview when the lines have more columns than it lists.
WString ShownColumnsNote(int columnsFound, int columnsShown);
