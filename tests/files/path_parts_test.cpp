#include "files/path_parts.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FilesPathParts, SplitAtTheLastSeparatorAndTheLastPoint) {
    const struct {
        const wchar_t *path, *folder, *name, *extension;
    } table[] = {
        {L"C:\\Data\\ana.up1.xml", L"C:\\Data\\", L"ana.up1", L"xml"},
        {L"C:ana", L"C:", L"ana", L""},
        {L"a/b\\c.d/e", L"a/b\\c.d/", L"e", L""},
        {L"\\\\host\\share\\", L"\\\\host\\share\\", L"", L""},
        {L"a\\.profile", L"a\\", L"", L"profile"},
        {L"ends.", L"", L"ends", L""},
        {L"..", L"", L"..", L""},
        {L"a\\.", L"a\\", L".", L""},
        {L"", L"", L"", L""},
    };
    for (const auto& row : table) {
        const PathParts parts = partsOf(row.path);
        EXPECT_EQ(parts.folder, row.folder);
        EXPECT_EQ(parts.name, row.name);
        EXPECT_EQ(parts.extension, row.extension);
        EXPECT_EQ(folderOf(row.path) + fileOf(row.path), row.path);
    }
}

TEST(FilesPathParts, TellTheDriveOrTheShare) {
    const struct {
        const wchar_t *path, *drive, *server;
    } table[] = {
        {L"c:\\Data", L"c:", L""},
        {L"C:x", L"C:", L""},
        {L"C", L"", L""},
        {L"1:\\x", L"", L""},
        {L"\\\\?\\C:\\x", L"C:", L""},
        {L"\\\\host\\share\\x", L"\\\\host\\share", L"host"},
        {L"//host/share", L"\\\\host\\share", L"host"},
        {L"\\\\?\\UNC\\host\\share\\x", L"\\\\host\\share", L"host"},
        {L"\\\\host", L"", L""},
        {L"\\\\host\\", L"", L"host"},
        {L"\\\\", L"", L""},
        {L"\\\\.\\pipe\\x", L"", L""},
        {L"\\\\?", L"", L""},
        {L"", L"", L""},
    };
    for (const auto& row : table) {
        EXPECT_EQ(driveOf(row.path), row.drive) << row.path;
        EXPECT_EQ(serverOf(row.path), row.server) << row.path;
    }
}

}  // namespace
}  // namespace vela
