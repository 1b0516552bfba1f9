#include "files/whole_file.h"

#include <thread>

#include "support/support.h"

namespace vela::test {
namespace {

class FilesWholeFile : public ::testing::Test {
  protected:
    static DWORD replace(const std::wstring& path, std::string_view content) {
        return FileReplacement(path).commit(content.data(), content.size(), FILE_ATTRIBUTE_NORMAL);
    }
    bool siblingExists() const {
        return GetFileAttributesW((path_ + L".tmp").c_str()) != INVALID_FILE_ATTRIBUTES;
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
    ASSERT_EQ(replace(path_, "old"), DWORD{ERROR_SUCCESS});
    {
        const FileReplacement aborted(path_);
        EXPECT_EQ(aborted.error(), DWORD{ERROR_SUCCESS});
        EXPECT_TRUE(siblingExists());
    }
    EXPECT_EQ(readFile(path_), "old");
    EXPECT_FALSE(siblingExists());
    writeFile(path_ + L".tmp", std::string(100000, 'x'));  // of a process that was killed
    EXPECT_EQ(replace(path_, "new"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(readFile(path_), "new");
    EXPECT_FALSE(siblingExists());
}

}  // namespace
}  // namespace vela::test
