// Paths on a drive that stands for a share. The Wine prefixes have one: S: is \\server\share.
#include "files/FileUtil.h"
#include "support/support.h"

namespace vela {
namespace {

TEST(FilesMappedDrive, GivesTheNameOfItsShare) {
    if (GetDriveTypeW(L"S:\\") != DRIVE_REMOTE) GTEST_SKIP() << "S: stands for no share";
    const auto util = make<FileUtil>();
    for (const auto& [path, name, server] :
         {std::tuple(L"S:\\list.txt", L"\\\\server\\share\\list.txt", L"server"),
          std::tuple(L"s:\\", L"\\\\server\\share\\", L"server"),
          std::tuple(L"\\\\server\\share\\list.txt", L"\\\\server\\share\\list.txt", L"server"),
          std::tuple(L"C:\\list.txt", L"C:\\list.txt", L"")}) {
        const Bstr given(path);
        Variant found;
        const test::Called called = test::call(util.Get(), L"TransformarEmUNC",
                                               {test::arg(given), test::byReference(found)});
        EXPECT_EQ(textOf(called.result), name);
        EXPECT_EQ(textOf(found), server);
    }
}

}  // namespace
}  // namespace vela
