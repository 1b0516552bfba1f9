#include "files/core/dialog_filter.h"

#include <gtest/gtest.h>

namespace vela {
namespace {

TEST(FilesDialogFilter, EndsEachPartAndTheWholeByAZero) {
    const struct {
        std::wstring filter, list, extension;
    } table[] = {{L"Texts|*.txt;*.log|All|*.*", {L"Texts\0*.txt;*.log\0All\0*.*\0\0", 27}, L"txt"},
                 {L"All|*.*|Texts|*.txt", {L"All\0*.*\0Texts\0*.txt\0\0", 21}, L""},
                 {L"Texts|*.txt||", {L"Texts\0*.txt\0\0", 13}, L"txt"},
                 {L"*.csv", {L"*.csv\0*.csv\0\0", 13}, L"csv"},
                 {L"Any|readme", {L"Any\0readme\0\0", 12}, L""},
                 {L"||", {}, L""},
                 {L"", {}, L""}};
    for (const auto& row : table) {
        EXPECT_EQ(dialogFilter(row.filter), row.list) << row.filter;
        EXPECT_EQ(defaultExtension(row.filter), row.extension) << row.filter;
    }
}

}  // namespace
}  // namespace vela
