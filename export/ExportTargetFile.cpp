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
    const bool inPlace = kind == Platform::PathKind::Other;
    appending_ = choice_ == FileChoiceAppend && kind == Platform::PathKind::Regular;
    if (appending_ && !Platform::SizeOfFile(target_.c_str(), &oldLength_))
        return false;
    const bool writesBeside = choice_ == FileChoiceOverwrite && !inPlace;
    if (writesBeside) {
        // A folder under the target's name cannot be replaced by a file.
        if (kind == Platform::PathKind::Directory)
            return false;
        if (!Platform::CreateFileBeside(target_.c_str(), &beside_)) {
            error_ = Platform::LastError();
            return false;
        }
    }
    const int mode = choice_ == FileChoiceAppend ? TextFileMode::Append : TextFileMode::Write;
    if (file.Open(writesBeside ? beside_ : target_, mode, static_cast<std::uint32_t>(encoding), 0) != TextFileResult::Ok) {
        pending_ = true;
        Undo();
        return false;
    }
    pending_ = true;
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
