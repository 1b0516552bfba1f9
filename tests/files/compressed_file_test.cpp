#include "files/compressed_file.h"

#include "support/support.h"

namespace vela::test {
namespace {

TEST(FilesCompressedFile, GoesToTheDiskAndBack) {
    const TemporaryFolder folder;
    const std::wstring plain = folder.path(L"a\xE7\xE3o.txt"), block = folder.path(L"block");
    const std::string content(100'000, 'x');
    writeFile(plain, content);
    const WholeFiles files = filesOnDisk();
    EXPECT_FALSE(compressFile(files, plain, block));
    EXPECT_FALSE(decompressFile(files, block, folder.path(L"back")));
    EXPECT_EQ(readFile(folder.path(L"back")), content);

    struct {
        std::wstring input, output;
        int number;
    } const table[] = {
        {folder.path(L"none"), folder.path(L"new"), 53},
        {folder.path(L""), folder.path(L"new"), -1},
        {L"NUL", folder.path(L"new"), -1},
        {plain, block, 58},
        {plain, L"NUL", -1},
        {plain, folder.path(L"none\\new"), -1},
    };
    for (const auto& row : table) {
        EXPECT_EQ(compressFile(files, row.input, row.output).number, row.number) << row.input;
    }
    EXPECT_LT(readFile(block).size(), 1000U);
    EXPECT_EQ(GetFileAttributesW(folder.path(L"new").c_str()), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace vela::test
