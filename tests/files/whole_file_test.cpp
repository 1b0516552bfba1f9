#include "files/whole_file.h"

#include <atomic>
#include <thread>

#include "files/delete_file.h"
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

TEST_F(FilesWholeFile, AnAbortedReplacementLeavesNothing) {
    ASSERT_EQ(replace(path_, "old"), DWORD{ERROR_SUCCESS});
    {
        const FileReplacement replacement(path_);
        EXPECT_EQ(replacement.error(), DWORD{ERROR_SUCCESS});
        EXPECT_TRUE(siblingExists());
    }
    EXPECT_EQ(readFile(path_), "old");
    EXPECT_FALSE(siblingExists());
}

TEST_F(FilesWholeFile, ALongerSiblingOfAKilledProcessLeavesNoRest) {
    writeFile(path_ + L".tmp", std::string(100000, 'x'));
    EXPECT_EQ(replace(path_, "new"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(readFile(path_), "new");
    EXPECT_FALSE(siblingExists());
}

TEST_F(FilesWholeFile, RefusesWhatIsNoOrdinaryFile) {
    for (const DWORD kind : {FILE_ATTRIBUTE_READONLY, FILE_ATTRIBUTE_DIRECTORY}) {
        const bool isFolder = kind == FILE_ATTRIBUTE_DIRECTORY;
        const std::wstring path = folder_.path(isFolder ? L"folder" : L"file");
        if (isFolder) CreateDirectoryW(path.c_str(), nullptr);
        else writeFile(path, "old");
        if (!isFolder) SetFileAttributesW(path.c_str(), kind);
        EXPECT_NE(replace(path, "new"), DWORD{ERROR_SUCCESS});
        EXPECT_FALSE(deleteFile(path));
        EXPECT_EQ(GetFileAttributesW(path.c_str()) & kind, kind);
        EXPECT_EQ(readFile(path), isFolder ? "" : "old");
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    Bytes content(3);
    EXPECT_NE(readWholeFile(folder_.path(L"folder"), content), DWORD{ERROR_SUCCESS});
    EXPECT_TRUE(content.empty());
    EXPECT_EQ(readWholeFile(folder_.path(L"none"), content), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_NE(replace(folder_.path(L"none\\file"), "new"), DWORD{ERROR_SUCCESS});
}

TEST_F(FilesWholeFile, DeletesOneFileHiddenOnesToo) {
    writeFile(path_, "x");
    writeFile(folder_.path(L"b.txt"), "x");
    SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(deleteFile(L""));
    EXPECT_FALSE(deleteFile(folder_.path(L"*.txt")));
    EXPECT_TRUE(deleteFile(path_));
    EXPECT_FALSE(deleteFile(path_));
    EXPECT_EQ(readFile(folder_.path(L"b.txt")), "x");
}

TEST_F(FilesWholeFile, DevicesAndTheEmptyPathAreNoFiles) {
    for (const wchar_t* path : {L"NUL", L"con", L"C:\\COM1", L"\\\\.\\pipe\\vela", L""}) {
        Bytes content(3);
        EXPECT_NE(readWholeFile(path, content), DWORD{ERROR_SUCCESS});
        EXPECT_NE(writeNewFile(path, "x", 1), DWORD{ERROR_SUCCESS});
        EXPECT_NE(replace(path, "x"), DWORD{ERROR_SUCCESS});
    }
    EXPECT_EQ(GetFileAttributesW(L".tmp"), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
}  // namespace vela::test
