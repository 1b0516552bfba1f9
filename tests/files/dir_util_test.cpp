#include "files/DirUtil.h"

#include "support/support.h"

namespace vela::test {
namespace {

TEST(FilesDirUtil, FindsTheFoldersThatTheSystemNames) {
    const struct {
        const wchar_t *member, *variable, *below;
    } table[] = {
        {L"SystemDirectory", L"SystemRoot", L"\\system32"},
        {L"UserDirectory", L"USERPROFILE", L""},
        {L"AllUserAppDataDirectory", L"ALLUSERSPROFILE", L""},
        {L"ProgramFilesCommonDirectory", L"CommonProgramFiles", L""},
        {L"ProgramFilesDirectory", L"ProgramFiles", L""},
        {L"TempDirectory", L"TEMP", L""},
    };
    const ComPtr<_DirUtil> folders = make<DirUtil>();
    for (const auto& row : table) {
        wchar_t wanted[MAX_PATH];
        ASSERT_NE(GetEnvironmentVariableW(row.variable, wanted, MAX_PATH), 0U) << row.variable;
        const std::wstring given = textOf(call(folders.Get(), row.member).result);
        EXPECT_EQ(_wcsicmp(given.c_str(), (std::wstring(wanted) + row.below).c_str()), 0) << given;
        EXPECT_TRUE(GetFileAttributesW(given.c_str()) & FILE_ATTRIBUTE_DIRECTORY) << given;
    }
}

}  // namespace
}  // namespace vela::test
