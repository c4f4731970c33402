#include "export/ExportTargetFile.h"

#include "platform/FileReplacement.h"
#include "platform/Platform.h"
#include "textfile/TextFile.h"
#include "ui/DialogFactory.h"

#include <utility>

ExportTargetFile::ExportTargetFile(WString target, int choice) : target_(std::move(target)), choice_(choice) {}

ExportTargetFile::~ExportTargetFile() { Undo(); }

bool ExportTargetFile::Open(TextFile& file, int encoding)
{
    const Platform::PathKind kind = Platform::KindOfPath(target_.c_str());
    // A folder under the target's name can be neither written nor replaced by a file.
    if (kind == Platform::PathKind::Directory)
        return false;
    appending_ = choice_ == FileChoiceAppend && kind == Platform::PathKind::Regular;
    if (appending_ && !Platform::SizeOfFile(target_.c_str(), &oldLength_))
        return false;
    // What becomes a new file (an overwrite, or an append to a file that has gone meanwhile)
    // is written beside the target.
    const bool writesBeside = !appending_ && kind != Platform::PathKind::Other;
    if (writesBeside && !Platform::CreateFileBeside(target_.c_str(), &beside_)) {
        error_ = Platform::LastError();
        return false;
    }
    const bool appendsInPlace = appending_ || (kind == Platform::PathKind::Other && choice_ == FileChoiceAppend);
    const int mode = appendsInPlace ? TextFileMode::Append : TextFileMode::Write;
    pending_ = true;
    if (file.Open(writesBeside ? beside_ : target_, mode, static_cast<std::uint32_t>(encoding), 0) != TextFileResult::Ok) {
        Undo();
        return false;
    }
    return true;
}

bool ExportTargetFile::Commit(int closeResult)
{
    if (!pending_)
        return false;
    if (closeResult != TextFileResult::Ok) {
        error_ = Platform::LastError();
        Undo();
        return false;
    }
    if (!beside_.empty() && !Platform::ReplaceFileWith(target_.c_str(), beside_.c_str())) {
        error_ = Platform::LastError();
        Undo();
        return false;
    }
    beside_.clear();
    pending_ = false;
    return true;
}

void ExportTargetFile::Undo()
{
    if (!pending_)
        return;
    pending_ = false;
    if (!beside_.empty())
        Platform::RemoveFile(beside_.c_str());
    beside_.clear();
    if (appending_)
        Platform::TruncateFile(target_.c_str(), oldLength_);
}
