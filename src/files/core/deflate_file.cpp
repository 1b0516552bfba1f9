#include "files/core/deflate_file.h"

#include "text/core/upper_case.h"

namespace vela {

namespace {

constexpr std::wstring_view kCompressing = L"ZCompressFile";
constexpr std::wstring_view kDecompressing = L"ZDecompressFile";

DeflateError checkNames(std::wstring_view routine, const std::wstring& input,
                        const std::wstring& output) {
    const auto error = [&](const wchar_t* text) {
        return DeflateError{kProcessingError, std::wstring(routine), text};
    };
    if (input.empty()) return error(L"No file specified to compress");
    if (output.empty()) return error(L"No output file specified to compress to");
    if (upperCase(input) == upperCase(output)) return error(L"Input and output files are the same");
    return {};
}

DeflateError errorOf(FileOutcome outcome, const std::wstring& source) {
    switch (outcome) {
        case FileOutcome::Done: return {};
        case FileOutcome::NotFound: return {kFileNotFound, source, L"File Not Found"};
        case FileOutcome::AlreadyExists:
            return {kFileAlreadyExists, source, L"File Already Exists"};
        case FileOutcome::Failed: break;
    }
    return {kFileSystemError, source, std::wstring(zlibMessage(kFileSystemError))};
}

DeflateError load(const WholeFiles& files, std::wstring_view routine, const std::wstring& name,
                  std::string& content) {
    const std::wstring source = std::wstring(routine) + L" >> LoadFromBinaryFile  [" + name + L"]";
    const FileOutcome outcome = files.load(name, content);
    if (outcome == FileOutcome::Done && content.empty()) {
        return {kProcessingError, source, L"File Contains No Data"};
    }
    return errorOf(outcome, source);
}

// The compression routine's name, whichever routine saves: that is how the error is known.
DeflateError save(const WholeFiles& files, const std::wstring& name, std::string_view content) {
    return errorOf(files.save(name, content),
                   std::wstring(kCompressing) + L" >> SaveToBinaryFile  [" + name + L"]");
}

// Checks, reads, transforms and writes; `transform(content, result)` returns its error.
template <class Transform>
DeflateError transformFile(const WholeFiles& files, std::wstring_view routine,
                           const std::wstring& input, const std::wstring& output,
                           Transform&& transform) {
    std::string content;
    std::string result;
    DeflateError error = checkNames(routine, input, output);
    if (!error) error = load(files, routine, input, content);
    if (!error) error = transform(content, result);
    if (!error) error = save(files, output, result);
    return error;
}

}  // namespace

DeflateError compressFile(const WholeFiles& files, const std::wstring& input,
                          const std::wstring& output, int level) {
    return transformFile(files, kCompressing, input, output,
                         [level](const std::string& content, std::string& block) {
                             return compressBlock(content, block, level);
                         });
}

DeflateError decompressFile(const WholeFiles& files, const std::wstring& input,
                            const std::wstring& output) {
    return transformFile(files, kDecompressing, input, output,
                         [](std::string_view block, std::string& content) {
                             return decompressBlock(block, content);
                         });
}

}  // namespace vela
