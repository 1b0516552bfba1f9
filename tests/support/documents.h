// Reading the tables of the documentation.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace vela::test {

// The cells of a line of a table, without blanks around them; none for any other line.
inline std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    for (std::size_t at = line.find('|'), end; at != std::string::npos; at = end) {
        end = line.find('|', at + 1);
        if (end == std::string::npos) break;
        const std::string cell = line.substr(at + 1, end - at - 1);
        const std::size_t first = std::min(cell.find_first_not_of(' '), cell.size());
        cells.push_back(cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
    }
    return cells;
}

}  // namespace vela::test
