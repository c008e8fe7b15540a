#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace testing_support {

/// A value read from JSON. What is missing reads as null, so that a chain of look-ups needs no test
/// in between; asking a value for a kind that it is not throws std::runtime_error.
class Json {
public:
    enum class Kind : std::uint8_t { null, boolean, number, text, array, object };
    using Member = std::pair<std::string, Json>;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] bool isNull() const { return kind_ == Kind::null; }
    [[nodiscard]] bool truth() const;
    [[nodiscard]] double number() const;
    [[nodiscard]] std::int64_t integer() const;
    /// The text as UTF-8; of a number: as it stands in the document.
    [[nodiscard]] const std::string& text() const;
    /// The text with one byte for each character (U+0000 to U+00FF), as the vectors write bytes.
    [[nodiscard]] std::string bytes() const;
    [[nodiscard]] bool has(std::string_view key) const { return !(*this)[key].isNull(); }
    /// Member of an object / item of an array; null when there is none.
    const Json& operator[](std::string_view key) const;
    const Json& operator[](const char* key) const { return (*this)[std::string_view(key)]; }
    const Json& operator[](std::size_t index) const;
    /// Items of an array and members of an object, in document order; empty for all else.
    [[nodiscard]] const std::vector<Json>& items() const { return items_; }
    [[nodiscard]] const std::vector<Member>& members() const { return members_; }

private:
    friend class JsonReader;
    Kind kind_ = Kind::null;
    bool truth_ = false;
    std::string text_;
    std::vector<Json> items_;
    std::vector<Member> members_;
};

/// Reads one JSON document. @throws std::runtime_error with the offset of what it cannot read.
Json parseJson(std::string_view document);
/// Reads the JSON file at `path`. @throws std::runtime_error when it is not there or not JSON.
Json parseJsonFile(const std::string& path);

}  // namespace testing_support
