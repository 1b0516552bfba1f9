#include "files/whole_file.h"

#include <thread>

#include "files/compressed_file.h"
#include "support/support.h"

namespace vela::test {
namespace {

class FilesWholeFile : public ::testing::Test {
  protected:
    static DWORD replace(const std::wstring& path, std::string_view content) {
        return FileReplacement(path).commit(content.data(), content.size(), FILE_ATTRIBUTE_NORMAL);
    }

    TemporaryFolder folder_;
    const std::wstring path_ = folder_.path(L"ação.txt");
};

TEST_F(FilesWholeFile, ReplacementsOfOneFileWaitForEachOther) {
    ASSERT_EQ(replace(path_, ""), DWORD{ERROR_SUCCESS});
    constexpr int kRounds = 20;
    const auto addOnes = [&] {
        for (int i = 0; i < kRounds; ++i) {
            FileReplacement replacement(path_);
            Bytes content;
            EXPECT_EQ(readWholeFile(path_, content), DWORD{ERROR_SUCCESS});
            content.push_back(std::byte{'1'});
            EXPECT_EQ(replacement.commit(content.data(), content.size(), 0), DWORD{ERROR_SUCCESS});
        }
    };
    std::thread other(addOnes);
    addOnes();
    other.join();
    EXPECT_EQ(readFile(path_), std::string(2 * kRounds, '1'));
}

TEST_F(FilesWholeFile, NeitherAbortedNorKilledReplacementsLeaveARest) {
    const std::wstring beside = path_ + L".vela.tmp";
    ASSERT_EQ(replace(path_, "old"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(FileReplacement(path_).error(), DWORD{ERROR_SUCCESS});  // and not committed
    EXPECT_EQ(readFile(path_), "old");
    EXPECT_EQ(GetFileAttributesW(beside.c_str()), INVALID_FILE_ATTRIBUTES);
    writeFile(beside, std::string(100000, 'x'));  // of a process that was killed
    EXPECT_EQ(replace(path_, "new"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(readFile(path_), "new");
    EXPECT_EQ(GetFileAttributesW(beside.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(FilesWholeFile, AreCompressedAndBroughtBack) {
    const std::wstring block = folder_.path(L"block"), back = folder_.path(L"back");
    const std::string content(100'000, 'x');
    writeFile(path_, content);
    const WholeFiles files = filesOnDisk();
    EXPECT_FALSE(compressFile(files, path_, block));
    EXPECT_LT(readFile(block).size(), 1000U);
    EXPECT_FALSE(decompressFile(files, block, back));
    EXPECT_EQ(readFile(back), content);
    EXPECT_EQ(compressFile(files, folder_.path(L"none"), folder_.path(L"new")).number, 53);
    EXPECT_EQ(compressFile(files, path_, block).number, 58);
}

}  // namespace
}  // namespace vela::test
