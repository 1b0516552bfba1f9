#include "text/deflate_file.h"

#include <gtest/gtest.h>

#include <map>

namespace vela {
namespace {

// A folder in memory. "?" cannot be read, "*" cannot be written.
class TextDeflateFile : public ::testing::Test {
  protected:
    std::map<std::wstring, std::string> folder_;
    const WholeFiles files_{[this](const std::wstring& name, std::string& content) {
                                if (name == L"?") return FileOutcome::Failed;
                                if (folder_.count(name) == 0) return FileOutcome::NotFound;
                                content = folder_[name];
                                return FileOutcome::Done;
                            },
                            [this](const std::wstring& name, std::string_view content) {
                                if (name == L"*") return FileOutcome::Failed;
                                const bool isNew = folder_.emplace(name, content).second;
                                return isNew ? FileOutcome::Done : FileOutcome::AlreadyExists;
                            }};
};

TEST_F(TextDeflateFile, HoldsACompressedBlock) {
    folder_[L"text"] = std::string(1000, 'x');
    EXPECT_FALSE(compressFile(files_, L"text", L"best"));
    EXPECT_FALSE(compressFile(files_, L"text", L"stored", 0));
    std::string block;
    EXPECT_FALSE(compressBlock(folder_[L"text"], block));
    EXPECT_EQ(folder_[L"best"], block);
    EXPECT_GT(folder_[L"stored"].size(), 1000U);
    for (const wchar_t* name : {L"best", L"stored"}) {
        folder_.erase(L"back");
        EXPECT_FALSE(decompressFile(files_, name, L"back"));
        EXPECT_EQ(folder_[L"back"], folder_[L"text"]);
    }
}

TEST_F(TextDeflateFile, ReportsTheFirstFault) {
    folder_ = {{L"text", "text"}, {L"empty", ""}};
    ASSERT_FALSE(compressFile(files_, L"text", L"block"));
    const std::wstring failed(zlibMessage(-1));
    const struct {
        bool compress;
        const wchar_t *input, *output;
        int number;
        std::wstring source, description;
    } table[] = {
        {true, L"", L"", 99, L"ZCompressFile", L"No file specified to compress"},
        {true, L"a", L"", 99, L"ZCompressFile", L"No output file specified to compress to"},
        {true, L"\xE7", L"\xC7", 99, L"ZCompressFile", L"Input and output files are the same"},
        {false, L"", L"", 99, L"ZDecompressFile", L"No file specified to compress"},
        {true, L"none", L"new", 53, L"ZCompressFile >> LoadFromBinaryFile  [none]",
         L"File Not Found"},
        {false, L"none", L"new", 53, L"ZDecompressFile >> LoadFromBinaryFile  [none]",
         L"File Not Found"},
        {false, L"?", L"new", -1, L"ZDecompressFile >> LoadFromBinaryFile  [?]", failed},
        {true, L"empty", L"text", 99, L"ZCompressFile >> LoadFromBinaryFile  [empty]",
         L"File Contains No Data"},
        {false, L"text", L"block", 99, L"ZDecompressByteArray",
         L"Compressed file appears to be invalid or corrupted"},
        {true, L"text", L"block", 58, L"ZCompressFile >> SaveToBinaryFile  [block]",
         L"File Already Exists"},
        {false, L"block", L"text", 58, L"ZCompressFile >> SaveToBinaryFile  [text]",
         L"File Already Exists"},
        {false, L"block", L"*", -1, L"ZCompressFile >> SaveToBinaryFile  [*]", failed},
    };
    for (const auto& row : table) {
        const DeflateError error = row.compress ? compressFile(files_, row.input, row.output)
                                                : decompressFile(files_, row.input, row.output);
        EXPECT_EQ(error.number, row.number) << row.input;
        EXPECT_EQ(error.source, row.source);
        EXPECT_EQ(error.description, row.description);
    }
    EXPECT_EQ(folder_.size(), 3U);
}

}  // namespace
}  // namespace vela
