#pragma once
// A temporary file beside a target path that takes the target's place only when it is
// complete: nothing half-written is ever left under the target's name. Whatever is not
// renamed over the target is removed again.

#include <string>

namespace tessel {

// True when the path names a device, pipe or socket: written in place, never replaced.
bool IsSpecialFile(const std::string& path);

class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Creates an empty file of a fresh name in the target's folder, with the target's
    // permissions when it exists (else the usual ones), open for writing. Throws a job
    // AppError "cannot write 'TARGET': REASON" when the folder does not take it or the
    // target is a folder.
    void CreateBeside(const std::string& target);
    // Closes the file but keeps it, so that another writer may open it (Windows lets nobody
    // open a file for writing that this process still has open). Replace reopens it.
    void CloseKeepFile();
    // Removes the file but keeps its name reserved for someone else to create.
    void RemoveFileKeepName();

    const std::string& Path() const { return path_; }
    int Descriptor() const { return descriptor_; }

    // Writes the file's data to the disk, closes it and renames it over the target.
    void Replace(const std::string& target);
    // Closes and removes the file (if it still exists); nothing happens to the target.
    void Discard();

private:
    std::string path_;
    int descriptor_ = -1;
    bool pending_ = false;
};

// A job AppError: "cannot write 'PATH': REASON" for the errno value.
[[noreturn]] void ThrowCannotWrite(const std::string& path, int error);

} // namespace tessel
