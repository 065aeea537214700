// Rows of cells for a terminal, every column as wide as its widest cell.
#pragma once

#include <string>
#include <vector>

namespace tvhost {

class TextTable {
public:
    // One entry a column: whether its cells stand at its right edge.
    explicit TextTable(std::vector<bool> rightAligned);

    // At most as many cells as there are columns, in valid UTF-8 without control characters.
    void add(std::vector<std::string> cells);

    // All rows, each indented by two blanks and ended by a line break; nothing trails.
    std::string text() const;

private:
    std::vector<bool> rightAligned_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace tvhost
