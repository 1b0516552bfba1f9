#include "files/compressed_file.h"

#include "files/whole_file.h"

namespace vela {

namespace {

FileOutcome outcomeOf(DWORD error) {
    switch (error) {
        case ERROR_SUCCESS: return FileOutcome::Done;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND: return FileOutcome::NotFound;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS: return FileOutcome::AlreadyExists;
        default: return FileOutcome::Failed;
    }
}

FileOutcome load(const std::wstring& name, std::string& content) {
    Bytes bytes;
    const FileOutcome outcome = outcomeOf(readWholeFile(name, bytes));
    content.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return outcome;
}

// A folder that is not there is a fault of the file system here: there was nothing to find.
FileOutcome save(const std::wstring& name, std::string_view content) {
    const FileOutcome outcome = outcomeOf(writeNewFile(name, content.data(), content.size()));
    return outcome == FileOutcome::NotFound ? FileOutcome::Failed : outcome;
}

}  // namespace

WholeFiles filesOnDisk() { return {load, save}; }

}  // namespace vela
