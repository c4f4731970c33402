#pragma once
// Where an export writes, so that the user's file is never left damaged: an overwrite writes
// a new file beside the target and puts it in the target's place only once the last line is
// written and the file closed without error; an append writes to the target itself and, when
// anything fails, cuts it back to its old length. A target that is no ordinary file (a pipe,
// a device) is written in place, as nothing can be put in its place.
//
//     ExportTargetFile target(path, choice);
//     TextFile file;
//     if (!target.Open(file, encoding)) return 0;
//     ... write ...
//     return target.Commit(file.Close()) ? 1 : 0;
//
// Whatever has not been committed when the object goes is undone: the file beside is removed,
// an append cut back. The TextFile must be closed by then (declare it after this object).

#include "host/Text.h"

#include <cstdint>

class TextFile;

class ExportTargetFile {
public:
    // choice: FileChoiceOverwrite or FileChoiceAppend. Touches nothing yet.
    ExportTargetFile(WString target, int choice);
    ~ExportTargetFile();
    ExportTargetFile(const ExportTargetFile&) = delete;
    ExportTargetFile& operator=(const ExportTargetFile&) = delete;

    // Opens file for writing in the encoding (a TextEncoding). False when it cannot be opened:
    // nothing of the target has changed. WhyFailed is then 0 when the file itself did not
    // open, and the system's error when the folder took no new file beside the target.
    bool Open(TextFile& file, int encoding);

    // Takes the written file's Close result: when it is 0, the new content becomes the
    // target's. True when done; false when the writing or the final step failed, after which
    // the target is as it was (WhyFailed tells the system's error).
    bool Commit(int closeResult);

    // The system's error number of the step that failed; 0 when none did or the file itself
    // did not open.
    int WhyFailed() const { return error_; }

private:
    void Undo();

    const WString target_;
    const int choice_;
    WString beside_;            // the new file of an overwrite; empty when writing in place
    bool appending_ = false;
    std::uint64_t oldLength_ = 0;
    bool pending_ = false;      // opened and neither committed nor undone
    int error_ = 0;
};
