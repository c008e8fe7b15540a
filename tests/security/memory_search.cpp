#include "security/memory_search.h"

#include "security/secret.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <span>
#include <sstream>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace testing_support {

namespace {

struct Area {
    std::size_t first = 0;
    std::size_t last = 0;
};

/// The sanitizers' books of the memory, of many gigabytes and without any text.
constexpr std::size_t kLargestArea = std::size_t{1} << 28;
constexpr std::size_t kChunk = std::size_t{1} << 16;
constexpr std::size_t kLongestText = 64;

std::vector<Area> writableAreas() {
    std::vector<Area> areas;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::istringstream fields(line);
        Area area;
        char dash = 0;
        std::string rights;
        fields >> std::hex >> area.first >> dash >> area.last >> rights;
        if (rights.starts_with("rw") && area.last - area.first <= kLargestArea) {
            areas.push_back(area);
        }
    }
    return areas;
}

bool holds(std::span<const std::uint8_t> bytes, Backwards text) {
    const auto* at = bytes.data();
    const auto* const end = at + bytes.size();
    while (static_cast<std::size_t>(end - at) >= text.size()) {
        const auto places = static_cast<std::size_t>(end - at) - text.size() + 1;
        const void* const begin = std::memchr(at, text.back(), places);
        if (begin == nullptr) {
            return false;
        }
        at = static_cast<const std::uint8_t*>(begin);
        if (std::equal(text.rbegin(), text.rend(), at)) {
            return true;
        }
        ++at;
    }
    return false;
}

}  // namespace

std::set<Backwards> inMemory(std::initializer_list<Backwards> texts) {
    const std::vector<Area> areas = writableAreas();
    const int memory = ::open("/proc/self/mem", O_RDONLY);  // NOLINT(*-vararg)
    security::Bytes chunk(kChunk + kLongestText);
    std::set<Backwards> found;
    for (const Area& area : areas) {
        for (std::size_t at = area.first; at < area.last; at += kChunk) {
            const std::size_t size = std::min(chunk.size(), area.last - at);
            const ssize_t got = ::pread(memory, chunk.data(), size, static_cast<off_t>(at));
            const auto read = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
            for (const Backwards text : texts) {
                if (holds(std::span(chunk).first(read), text)) {
                    found.insert(text);
                }
            }
            // Or the next search would find what this one read.
            std::fill(chunk.begin(), chunk.end(), std::uint8_t{0});
        }
    }
    ::close(memory);
    return found;
}

void typeInto(std::string& field, Backwards text) {
    security::wipe(field);
    field.reserve(text.size());
    for (auto at = text.rbegin(); at != text.rend(); ++at) {
        field.push_back(*at);  // appending them all would go by way of another text
    }
}

}  // namespace testing_support
