#include "files/whole_file.h"

#include <thread>

#include "files/compressed_file.h"
#include "files/full_path.h"
#include "support/support.h"

namespace vela::test {
namespace {

class FilesWholeFile : public ::testing::Test {
  protected:
    static DWORD replace(const std::wstring& path, std::string_view content) {
        return FileReplacement(path).commit(content.data(), content.size(), FILE_ATTRIBUTE_NORMAL);
    }

    // Makes "link" beside the folder "to", in which its file is. Wine has links, but lets none be
    // made: there a program of the system below does it.
    bool linkToFile() const {
        CreateDirectoryW(folder_.path(L"to").c_str(), nullptr);
        writeFile(file_, "old");
        constexpr DWORD kUnprivileged = 2;
        CreateSymbolicLinkW(link_.c_str(), L"to\\file", kUnprivileged);
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        std::wstring line = L"Z:\\bin\\ln -s to/file link";
        if (readFile(link_).empty() &&
            CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                           folder_.path(L"").c_str(), &start, &process)) {
            CloseHandle(process.hThread);
            CloseHandle(process.hProcess);
            for (int i = 0; i < 200 && readFile(link_).empty(); ++i) Sleep(10);
        }
        return readFile(link_) == "old";
    }

    TemporaryFolder folder_;
    const std::wstring link_ = folder_.path(L"link"), file_ = folder_.path(L"to\\file");
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

TEST_F(FilesWholeFile, ReadingWaitsForWhoKeepsTheFileForAMoment) {
    writeFile(path_, "old");
    KernelHandle alone(
        CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    Bytes content;
    ULONGLONG start = GetTickCount64();
    EXPECT_EQ(readWholeFile(path_, content, 0), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(readWholeFile(folder_.path(L"none"), content), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_LT(GetTickCount64() - start, kMoment / 2);
    start = GetTickCount64();
    EXPECT_EQ(readWholeFile(path_, content, 100), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_GE(GetTickCount64() - start + 20, 100U);  // the clock ticks in steps
    std::thread other([&] {
        Sleep(300);
        alone.reset();
    });
    EXPECT_EQ(readWholeFile(path_, content), DWORD{ERROR_SUCCESS});
    other.join();
    EXPECT_EQ(content.size(), 3U);
}

TEST_F(FilesWholeFile, OfALinkTheFileBehindItIsReplaced) {
    if (!linkToFile()) GTEST_SKIP() << "links cannot be made";
    {
        FileReplacement replacement(link_);
        EXPECT_NE(GetFileAttributesW((file_ + L".vela.tmp").c_str()), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(replacement.commit("new", 3, 0), DWORD{ERROR_SUCCESS});
    }
    EXPECT_EQ(readFile(file_), "new");
    writeFile(file_, "newer");
    EXPECT_EQ(readFile(link_), "newer");
}

TEST_F(FilesWholeFile, APathThatIsNoLinkStaysAsGiven) {
    writeFile(path_, "");
    for (const std::wstring& path :
         {path_, folder_.path(L"AÇÃO.TXT"), folder_.path(L"none"), folder_.path(L".\\ação.txt"),
          std::wstring(L"C:\\"), std::wstring(L"NUL"), std::wstring()}) {
        EXPECT_EQ(linkedFile(path), path);
    }
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
