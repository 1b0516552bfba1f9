#include "files/core/deflate_file.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FilesDeflateFile, ReportsTheFirstFault) {
    // "?" cannot be read.
    const auto load = [](const std::wstring& name, std::string& content) {
        if (name == L"?") return FileOutcome::Failed;
        if (name == L"no") return FileOutcome::NotFound;
        content = name == L"text" ? "content" : "";
        return FileOutcome::Done;
    };
    const auto save = [](const std::wstring&, std::string_view) {
        return FileOutcome::AlreadyExists;
    };
    const WholeFiles files{load, save};

    // Whether to compress; input, output, number, and "source: description".
    const std::wstring failed(zlibMessage(-1));
    const std::tuple<bool, const wchar_t*, const wchar_t*, int, std::wstring> table[] = {
        {true, L"", L"", 99, L"ZCompressFile: No file specified to compress"},
        {true, L"\xE7", L"\xC7", 99, L"ZCompressFile: Input and output files are the same"},
        {true, L"no", L"a", 53, L"ZCompressFile >> LoadFromBinaryFile  [no]: File Not Found"},
        {false, L"?", L"a", -1, L"ZDecompressFile >> LoadFromBinaryFile  [?]: " + failed},
        {true, L"empty", L"text", 99,
         L"ZCompressFile >> LoadFromBinaryFile  [empty]: File Contains No Data"},
        {false, L"text", L"new", 99,
         L"ZDecompressByteArray: Compressed file appears to be invalid or corrupted"},
        {true, L"text", L"empty", 58,
         L"ZCompressFile >> SaveToBinaryFile  [empty]: File Already Exists"},
    };
    for (const auto& [compress, input, output, number, wanted] : table) {
        const DeflateError error =
            compress ? compressFile(files, input, output) : decompressFile(files, input, output);
        EXPECT_EQ(error.number, number) << input;
        EXPECT_EQ(error.source + L": " + error.description, wanted);
    }
}

}  // namespace
}  // namespace vela
