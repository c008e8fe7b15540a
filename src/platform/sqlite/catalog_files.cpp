#include "platform/sqlite/catalog_files.h"

#include "platform/sql_dialect/tokens.h"
#include "util/text_codec.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kCatalogExtension = ".mdf";

std::string inAnyCase(const fs::path& folder, const std::string& name) {
    std::error_code failed;
    if (fs::exists(folder / name, failed)) {
        return name;
    }
    const fs::path listed = folder.empty() ? fs::path(".") : folder;
    for (fs::directory_iterator entry(listed, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::string present = entry->path().filename().string();
        if (sameSqlName(present, name)) {
            return present;
        }
    }
    return name;
}

}  // namespace

std::string nativeFile(std::string_view name) {
    std::string utf8 = util::toUtf8(name.substr(0, name.find_last_not_of(" .") + 1));
    std::replace(utf8.begin(), utf8.end(), '\\', '/');
    fs::path file;
    for (const auto& part : fs::path(utf8)) {
        if (part.empty()) {
            continue;
        }
        file = part.is_absolute() ? part : file / inAnyCase(file, part.string());
    }
    return file.string();
}

std::string catalogFile(const std::string& folder, const std::string& catalog) {
    const std::string name = catalog.substr(0, catalog.find_last_not_of(' ') + 1);
    return nativeFile(folder + "\\" + name + std::string(kCatalogExtension));
}

std::vector<std::string> catalogNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code failed;
    for (fs::directory_iterator entry(nativeFile(folder), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        if (sameSqlName(entry->path().extension().string(), kCatalogExtension) &&
            entry->is_regular_file(failed)) {
            names.push_back(util::fromUtf8(entry->path().stem().string()));
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace platform
