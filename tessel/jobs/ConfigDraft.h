#pragma once
// Configuration strings composed from command-line options, written by the module's own
// configuration records (so every encoding rule is the module's), and then rewritten by the
// engine through its file path setter. What the user sees is always the engine's own text.

#include "host/Text.h"
#include "tessel/core/Requests.h"

namespace tessel {

// The draft of an import configuration: delimiters (a blank by default), comment characters
// ("#" by default), fixed-width positions and columns, with an empty file path. What the
// configuration cannot carry as given (ImportValueChanges) is a warning, or with strict an
// error, as are two columns of the same name and no column at all; a character outside the
// code page is always a usage AppError.
WString ImportConfigDraft(const ImportConfigChoice& choice, unsigned codePage);

// The draft of an export configuration: comment ("#"), delimiter (tab), header (on) and
// encoding (ANSI unless utf16), with an empty file path. Throws a usage AppError for a
// character outside the code page.
WString ExportConfigDraft(const ExportConfigChoice& choice, unsigned codePage);

// A configuration string stored in a file, read through the module's TextFile: UTF-16 or
// UTF-8 by its byte-order mark, UTF-8 without one; lines are joined by line feeds, and line
// ends after the text are not part of it. Throws a usage AppError naming the option and the
// file when the file cannot be read or holds no text.
WString ReadConfigurationFile(const std::string& option, const std::string& path);

} // namespace tessel
