// The folders include only what stands below them in the picture of docs/architecture.md, and
// portable algorithms only one another.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace vela {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = VELA_ROOT;

// Every folder of the picture, which is the page's first indented block, and its height there.
std::map<std::string, int> heights() {
    std::ifstream page(kRoot / "docs/architecture.md");
    std::map<std::string, int> found;
    int height = 0;
    for (std::string line, word; std::getline(page, line);) {
        if (!line.starts_with("    ") && !found.empty()) break;
        if (!line.starts_with("    ")) continue;
        --height;
        std::istringstream words(line);
        while (words >> word && fs::is_directory(kRoot / "src" / word)) found[word] = height;
    }
    return found;
}

TEST(FrameLayers, IncludeWhatStandsBelowThem) {
    const auto height = heights();
    int includes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / "src")) {
        const fs::path file = entry.path().lexically_relative(kRoot / "src");
        if (file.extension() != ".h" && file.extension() != ".cpp") continue;
        const std::string from = file.begin()->string();
        const bool isCore = file.parent_path().filename() == "core";
        ASSERT_TRUE(height.contains(from)) << from << " is not in the picture";
        std::ifstream lines(entry.path());
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("#include \"")) continue;
            const fs::path included = line.substr(10, line.size() - 11);
            const std::string to = included.begin()->string();
            EXPECT_FALSE(isCore && included.parent_path().filename() != "core") << file << line;
            if (to == from || !height.contains(to)) continue;
            EXPECT_LT(height.at(to), height.at(from)) << file << ": " << line;
            ++includes;
        }
    }
    EXPECT_GT(includes, 100);
}

}  // namespace
}  // namespace vela
