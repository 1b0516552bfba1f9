#include "files/core/path_parts.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FilesPathParts, SplitAtTheLastSeparatorAndTheLastPoint) {
    const struct {
        const wchar_t *path, *folder, *name, *extension;
    } table[] = {{L"C:\\Data\\ana.up1.xml", L"C:\\Data\\", L"ana.up1", L"xml"},
                 {L"C:ana", L"C:", L"ana", L""},
                 {L"a/b\\c.d/e", L"a/b\\c.d/", L"e", L""},
                 {L"\\\\host\\share\\", L"\\\\host\\share\\", L"", L""},
                 {L"a\\.profile", L"a\\", L"", L"profile"},
                 {L"ends.", L"", L"ends", L""},
                 {L"", L"", L"", L""}};
    for (const auto& row : table) {
        const PathParts parts = partsOf(row.path);
        EXPECT_EQ(std::tuple(parts.folder, parts.name, parts.extension),
                  std::tuple(row.folder, row.name, row.extension));
    }
}

TEST(FilesPathParts, TellTheDriveOrTheShare) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> table[] = {
        {L"c:\\Data", L"c:", L""},
        {L"\\\\?\\C:\\x", L"C:", L""},
        {L"\\\\host\\share\\x", L"\\\\host\\share", L"host"},
        {L"//host/share", L"\\\\host\\share", L"host"},
        {L"\\\\?\\UNC\\host\\share\\x", L"\\\\host\\share", L"host"},
        {L"\\\\host\\", L"", L"host"},
    };
    for (const auto& [path, drive, server] : table) {
        EXPECT_EQ(driveOf(path), drive);
        EXPECT_EQ(serverOf(path), server) << path;
    }
    for (const wchar_t* path : {L"C", L"1:\\x", L"\\\\", L"\\\\?", L"\\\\.\\pipe\\x", L""}) {
        EXPECT_EQ(driveOf(path) + serverOf(path), L"") << path;
    }
}

}  // namespace
}  // namespace vela
