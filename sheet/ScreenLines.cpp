#include "sheet/ScreenLines.h"

#include "platform/FormatText.h"

#include <map>

namespace ta::sheet {

std::vector<CString> ScreenLines(const std::vector<ST_TA_ViewGroupInfo>& views) {
    std::map<CString, int> counts;
    for (const ST_TA_ViewGroupInfo& view : views) {
        ++counts[view.name];
    }
    std::vector<CString> lines;
    lines.reserve(counts.size());
    for (const auto& [name, count] : counts) {
        lines.push_back(count == 1 ? name : text::Format("%s [%d]", name, count));
    }
    return lines;
}

}  // namespace ta::sheet
