#include "geomKit/tags/LoadedDocument.h"

namespace geomKit::detail {

std::string textOfLoading(const LoadReport& report, const std::filesystem::path& file) {
    const std::string start = file.empty() ? "" : file.u8string() + ": ";
    if (report.isClean()) return start + "loaded without problems";
    std::string result = start + report.text();
    result.pop_back();
    for (std::size_t end = result.find('\n'); end != std::string::npos;
         end = result.find('\n', end + 1)) {
        result.insert(end + 1, start);
    }
    return result;
}

}  // namespace geomKit::detail
