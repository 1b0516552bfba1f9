#include "text/deflate_file.h"

#include <gtest/gtest.h>

#include <map>

namespace vela {
namespace {

TEST(TextDeflateFile, HoldsABlockOrReportsTheFirstFault) {
    // A folder in memory. "?" cannot be read, "*" cannot be written.
    std::map<std::wstring, std::string> folder{{L"text", std::string(1000, 'x')}, {L"empty", ""}};
    const auto load = [&](const std::wstring& name, std::string& content) {
        if (name == L"?") return FileOutcome::Failed;
        if (folder.count(name) == 0) return FileOutcome::NotFound;
        content = folder[name];
        return FileOutcome::Done;
    };
    const auto save = [&](const std::wstring& name, std::string_view content) {
        if (name == L"*") return FileOutcome::Failed;
        const bool isNew = folder.emplace(name, content).second;
        return isNew ? FileOutcome::Done : FileOutcome::AlreadyExists;
    };
    const WholeFiles files{load, save};
    EXPECT_FALSE(compressFile(files, L"text", L"block"));
    EXPECT_FALSE(compressFile(files, L"text", L"stored", 0));
    EXPECT_FALSE(decompressFile(files, L"stored", L"back"));
    std::string block;
    EXPECT_FALSE(compressBlock(folder[L"text"], block));
    EXPECT_EQ(folder[L"block"], block);
    EXPECT_GT(folder[L"stored"].size(), 1000U);
    EXPECT_EQ(folder[L"back"], folder[L"text"]);

    // Whether to compress; input, output, number, and "source: description".
    const std::wstring failed(zlibMessage(-1));
    const std::tuple<bool, const wchar_t*, const wchar_t*, int, std::wstring> table[] = {
        {true, L"", L"", 99, L"ZCompressFile: No file specified to compress"},
        {true, L"a", L"", 99, L"ZCompressFile: No output file specified to compress to"},
        {true, L"\xE7", L"\xC7", 99, L"ZCompressFile: Input and output files are the same"},
        {false, L"", L"", 99, L"ZDecompressFile: No file specified to compress"},
        {true, L"no", L"a", 53, L"ZCompressFile >> LoadFromBinaryFile  [no]: File Not Found"},
        {false, L"?", L"a", -1, L"ZDecompressFile >> LoadFromBinaryFile  [?]: " + failed},
        {true, L"empty", L"text", 99,
         L"ZCompressFile >> LoadFromBinaryFile  [empty]: File Contains No Data"},
        {false, L"text", L"block", 99,
         L"ZDecompressByteArray: Compressed file appears to be invalid or corrupted"},
        {false, L"block", L"text", 58,
         L"ZCompressFile >> SaveToBinaryFile  [text]: File Already Exists"},
        {true, L"text", L"*", -1, L"ZCompressFile >> SaveToBinaryFile  [*]: " + failed},
    };
    for (const auto& [compress, input, output, number, wanted] : table) {
        const DeflateError error =
            compress ? compressFile(files, input, output) : decompressFile(files, input, output);
        EXPECT_EQ(error.number, number) << input;
        EXPECT_EQ(error.source + L": " + error.description, wanted);
    }
    EXPECT_EQ(folder.size(), 5U);
}

}  // namespace
}  // namespace vela
