#include "host/base/TextTable.h"

#include "host/base/PlainText.h"

#include <algorithm>
#include <utility>

namespace tvhost {

TextTable::TextTable(std::vector<bool> rightAligned) : rightAligned_(std::move(rightAligned)) {}

void TextTable::add(std::vector<std::string> cells) {
    rows_.push_back(std::move(cells));
}

std::string TextTable::text() const {
    std::vector<std::size_t> widths(rightAligned_.size());
    for (const auto& row : rows_) {
        for (std::size_t c = 0; c < row.size(); ++c) {
            widths[c] = std::max(widths[c], columnsOf(row[c]));
        }
    }
    std::string result;
    for (const auto& row : rows_) {
        std::string line;
        for (std::size_t c = 0; c < row.size(); ++c) {
            const std::string blanks(widths[c] - columnsOf(row[c]), ' ');
            line += "  " + (rightAligned_[c] ? blanks + row[c] : row[c] + blanks);
        }
        result += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return result;
}

} // namespace tvhost
