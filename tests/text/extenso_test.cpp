#include "text/extenso.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace vela {
namespace {

std::wstring fromUtf8(std::string_view text) {
    std::wstring result;
    for (const unsigned char c : text) {
        if (c < 0x80) result += static_cast<wchar_t>(c);
        else if (c >= 0xC0) result += static_cast<wchar_t>(c & 0x1F);
        else result.back() = static_cast<wchar_t>(result.back() << 6 | (c & 0x3F));
    }
    return result;
}

// What stands between the marks of a cell; empty where there are none.
std::string marked(std::string_view cell) {
    const std::size_t first = cell.find('`');
    return first == cell.npos ? ""
                              : std::string(cell.substr(first + 1, cell.rfind('`') - first - 1));
}

// The rows of the document's table whose first cell is a number.
std::vector<std::vector<std::string>> documentedRows() {
    std::ifstream file(std::filesystem::path(VELA_DOCS "/extenso.md"));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| `") || line.starts_with("| `numero`")) continue;
        std::vector<std::string> cells;
        for (std::size_t at = 1, end; (end = line.find('|', at)) != line.npos; at = end + 1) {
            cells.push_back(marked(std::string_view(line).substr(at, end - at)));
        }
        rows.push_back(cells);
    }
    return rows;
}

Currency amountOf(const std::string& text) {
    const std::size_t point = text.find('.');
    std::string decimals = point == text.npos ? "" : text.substr(point + 1);
    decimals.resize(4, '0');
    return std::stoll(text.substr(0, point) + decimals);
}

TEST(TextExtenso, WritesWhatTheDocumentSays) {
    const auto rows = documentedRows();
    ASSERT_GE(rows.size(), 50u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 3u);
        EXPECT_EQ(inWords(amountOf(row[0]), fromUtf8(row[1])), fromUtf8(row[2])) << row[0];
    }
}

TEST(TextExtenso, NeverWritesTwoBlanksOrALostJoiningWord) {
    for (std::uint64_t seed = 1; seed != 0 && seed < (1ULL << 63); seed = seed * 3 + 7) {
        for (const wchar_t* name : {L"", L"Euros", L"\"", L"\"\""}) {
            const std::wstring text = inWords(static_cast<Currency>(seed), name);
            EXPECT_EQ(text.find(L"  "), text.npos) << seed;
            EXPECT_EQ(text.find(L" e e "), text.npos) << seed;
            EXPECT_FALSE(text.ends_with(L" e ")) << seed;
        }
    }
    EXPECT_TRUE(
        inWords(std::numeric_limits<Currency>::min(), L"").starts_with(L"Menos novecentos"));
}

}  // namespace
}  // namespace vela
